// Paths as texts, and the questions of them that need no more than a look at the file system.
#include <algorithm>
#include <cmath>

#include "delete/file_analyzer/file_analyzer.h"
#include "runtime/text.h"

namespace qb {

namespace {

constexpr std::size_t kShortestPath = 4;  // what is shorter is a drive or a root
constexpr std::size_t kRootLength = 3;
constexpr std::size_t kPathBuffer = 260;  // MAX_PATH
constexpr std::string_view kStepUp = "..\\";

struct SizeUnit {
  std::int64_t below;
  std::int64_t bytes;
  std::string_view name;
};

constexpr std::int64_t kNoLimit = 0;
constexpr SizeUnit kSizeUnits[] = {
    {std::int64_t{1} << 20, std::int64_t{1} << 10, " KB"},
    {std::int64_t{1} << 30, std::int64_t{1} << 20, " MB"},
    {kNoLimit, std::int64_t{1} << 30, " GB"},
};

bool HasDrive(std::string_view path) {
  return path.size() >= 2 && path[1] == ':';
}

std::vector<std::string_view> Components(std::string_view path) {
  std::vector<std::string_view> components;
  while (!path.empty()) {
    const std::size_t end = path.find('\\');
    if (end != 0) components.push_back(path.substr(0, end));
    if (end == std::string_view::npos) break;
    path.remove_prefix(end + 1);
  }
  return components;
}

}  // namespace

bool clsFileAnalyzer::Exists(const std::string& path) const {
  if (path.empty()) return false;
  // FindFirstFileA refuses a closing backslash. What a folder holds then answers for it: "." in all but a root.
  const bool open_end = path.back() == '\\' || path.back() == ':';
  auto found = platform_.files.FindFirstFileA(open_end ? path + "*.*" : path);
  if (!found.ok()) return false;
  StepOver(platform_.files.FindClose(found.value.handle));
  return true;
}

std::string clsFileAnalyzer::FixPath(const std::string& path) {
  const bool drive_letter = path.size() == 1 && UpperCase(path)[0] >= 'A' && UpperCase(path)[0] <= 'Z';
  return Add_Backslash(drive_letter ? path + ":" : path);
}

std::string clsFileAnalyzer::AsName(const std::string& path) {
  std::string name = path;
  while (name.size() > kRootLength && name.back() == '\\') name.pop_back();
  return name;
}

std::string clsFileAnalyzer::GetPathName(const std::string& path) {
  if (path.size() < kShortestPath) return path;
  const std::string trimmed = WithoutBackslash(path);
  return trimmed.substr(trimmed.find_last_of('\\') + 1);  // npos + 1 is 0
}

std::string clsFileAnalyzer::GetParentFolder(const std::string& path) {
  if (path.size() < kShortestPath) return path;
  const std::string trimmed = WithoutBackslash(path);
  return trimmed.substr(0, trimmed.find_last_of('\\') + 1);
}

std::string clsFileAnalyzer::GetBaseName(const std::string& path) {
  std::string name = GetPathName(path);
  const std::size_t dot = path.find_last_of('.');
  if (dot == std::string::npos) return name;
  // Deliberate: the dot is looked for in the whole path, so that one in a folder's name leaves no base name.
  const std::size_t start = WithoutBackslash(path).size() - name.size();
  return dot > start ? name.substr(0, dot - start) : std::string();
}

std::string clsFileAnalyzer::GetLongPath(const std::string& path) const {
  TextBuffer buffer(kPathBuffer);
  auto length = platform_.files.GetLongPathNameA(path, buffer);
  if (length.ok() && length.value > buffer.size()) {
    buffer = TextBuffer(length.value);
    length = platform_.files.GetLongPathNameA(path, buffer);
  }
  return length.ok() && length.value < buffer.size() ? buffer.text() : std::string();
}

std::string clsFileAnalyzer::GetShortPath(const std::string& path) const {
  TextBuffer buffer(kPathBuffer);
  auto length = platform_.files.GetShortPathNameA(path, buffer);
  return length.ok() && length.value < buffer.size() ? buffer.text() : std::string();
}

std::string clsFileAnalyzer::GetPathType(const std::string& path) const {
  const std::string name = platform_.shell.SHGetFileInfoA(path);
  return name.empty() ? GetFileExtension(path) + " File" : name;
}

std::string clsFileAnalyzer::GetAbsolutePath(const std::string& relative, const std::string& base) {
  if (HasDrive(relative)) return relative;
  std::string folder = FixPath(base);
  std::string_view rest = relative;
  while (rest.starts_with(kStepUp)) {
    rest.remove_prefix(kStepUp.size());
    folder = GetParentFolder(folder);
  }
  return folder + std::string(rest);
}

std::string clsFileAnalyzer::GetRelativePath(const std::string& from, const std::string& to) {
  if (!SameText(GetPathDrive(from), GetPathDrive(to))) return to;
  const auto start = Components(from), target = Components(to);
  std::size_t common = 0;
  while (common < start.size() && common < target.size() && SameText(start[common], target[common])) ++common;

  std::string path;
  for (std::size_t i = common; i < start.size(); ++i) path += kStepUp;
  for (std::size_t i = common; i < target.size(); ++i) path += std::string(target[i]) + '\\';
  const bool names_a_folder = common == target.size() || to.back() == '\\';
  return names_a_folder ? path : WithoutBackslash(path);
}

std::string clsFileAnalyzer::BuildPath(const std::string& folder, const std::string& name) const {
  const std::string start = FixPath(folder);
  std::string path = start + name;
  const std::size_t dot = std::min(name.find_last_of('.'), name.size());
  for (int number = 2; Exists(path); ++number) {
    path = start + name.substr(0, dot) + " (" + std::to_string(number) + ")" + name.substr(dot);
  }
  return path;
}

std::string clsFileAnalyzer::ParseSize(Currency size, int decimals) {
  constexpr int kMostDecimals = 22;
  if (decimals < 0 || decimals > kMostDecimals) return {};
  if (size < Currency::FromScaled(1024 * Currency::kScale)) return size.Text() + " Bytes";
  for (const SizeUnit& unit : kSizeUnits) {
    if (unit.below != kNoLimit && !(size < Currency::FromScaled(unit.below * Currency::kScale))) continue;
    // Dividing by a power of two is exact, and so is the product where it has a half to round. Past 2^53 a
    // double has no fraction left.
    const double number = size.ToDouble() / static_cast<double>(unit.bytes);
    const double power = std::pow(10.0, decimals);
    const double scaled = number * power;
    const bool whole = scaled >= 9007199254740992.0;
    return NumberText(whole ? number : std::nearbyint(scaled) / power) + std::string(unit.name);
  }
  return {};
}

}  // namespace qb
