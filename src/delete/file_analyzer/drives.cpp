// Drives: their roots, types, labels and space.
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "delete/file_analyzer/file_analyzer.h"
#include "runtime/text.h"

namespace qb {

namespace {

constexpr std::size_t kDriveStringsBuffer = 255;
constexpr std::size_t kRootLength = 3;

// By the value of GetDriveTypeA.
constexpr std::string_view kDriveTypeNames[] = {"Unknown", "Not Found", "Removable", "Fixed",
                                                "Remote",  "CD-ROM",    "RAM Disk"};

}  // namespace

bool clsFileAnalyzer::DriveExists(const std::string& root) const {
  return GetDriveType(root) != DriveType::NoRoot;
}

std::string clsFileAnalyzer::GetSystemDrive() const {
  return FixPath(platform_.system.GetEnvironmentVariableA("SYSTEMDRIVE").value_or(""));
}

std::string clsFileAnalyzer::GetPathDrive(const std::string& path) {
  return FixPath(path.substr(0, kRootLength));
}

std::vector<std::string> clsFileAnalyzer::GetDrives() const {
  std::string buffer(kDriveStringsBuffer, '\0');
  StepOver(platform_.files.GetLogicalDriveStringsA(buffer));
  // Every root closes with a backslash and a zero; what follows the last of them is empty.
  std::string_view rest = std::string_view(buffer).substr(0, buffer.find_last_of('\\') + 1);
  std::vector<std::string> roots;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\0'), rest.size());
    roots.emplace_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return roots;
}

DriveType clsFileAnalyzer::GetDriveType(const std::string& root) const {
  return platform_.files.GetDriveTypeA(root);
}

std::string clsFileAnalyzer::GetDriveTypeName(const std::string& root) const {
  const DriveType type = GetDriveType(root);
  // Deliberate: only a capital letter makes a floppy drive of a removable one.
  if (type == DriveType::Removable && (root.starts_with('A') || root.starts_with('B'))) return "Floppy";
  const auto index = static_cast<std::size_t>(type);
  return index < std::size(kDriveTypeNames) ? std::string(kDriveTypeNames[index]) : std::string();
}

int clsFileAnalyzer::GetDriveInfo(const std::string& root, DriveInfo& info) const {
  auto volume = platform_.files.GetVolumeInformationA(root);
  if (!volume.ok()) return static_cast<int>(volume.error);
  std::array<char, 8> digits{};
  auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), volume.value.serial, 16);
  info = {volume.value.label, volume.value.file_system, UpperCase({digits.data(), end})};
  return 0;
}

int clsFileAnalyzer::GetDriveSpace(const std::string& root, DriveSpace& space) {
  auto answer = platform_.files.GetDiskFreeSpaceExA(root);
  if (!answer.ok()) return static_cast<int>(answer.error);
  const auto total = Currency::FromInteger(answer.value.total);
  const auto free = Currency::FromInteger(answer.value.free);
  // A quota may leave more free on the disk than the total that it shows to this user.
  const std::uint64_t used_bytes = answer.value.total - std::min(answer.value.free, answer.value.total);
  const auto used = Currency::FromInteger(used_bytes);
  if (!total || !free || !used || answer.value.total == 0) return Trap(RuntimeError::Overflow, "GetDriveSpace");
  space = {*total, *free, *used, std::nearbyint(used->ToDouble() / total->ToDouble() * 10000) / 100};
  return 0;
}

std::int32_t clsFileAnalyzer::GetDriveNumber(const std::string& root) const {
  const std::vector<std::string> roots = GetDrives();
  const std::string wanted = FixPath(root);
  const auto place =
      std::find_if(roots.begin(), roots.end(), [&](const std::string& r) { return SameText(r, wanted); });
  return place == roots.end() ? 0 : static_cast<std::int32_t>(place - roots.begin()) + 1;
}

int clsFileAnalyzer::SetDriveLabel(const std::string& root, const std::string& label) {
  return static_cast<int>(platform_.files.SetVolumeLabelA(root, label));
}

}  // namespace qb
