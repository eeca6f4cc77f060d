// Attributes, links and dates of files and folders.
#include "delete/file_analyzer/file_analyzer.h"
#include "runtime/filetime.h"
#include "runtime/text.h"

namespace qb {

namespace {

struct AttributeName {
  std::uint32_t bit;
  std::string_view text;
};

constexpr AttributeName kAttributeNames[] = {
    {0x1, "Read Only, "},  {0x2, "Hidden, "},   {0x4, "System, "}, {0x8, "Volume, "},
    {0x10, "Directory, "}, {0x20, "Archive, "}, {0x40, "Alias, "},
};

constexpr std::uint32_t kProtecting = kAttributeReadOnly | kAttributeHidden | kAttributeSystem;

FileTime TimeOf(const FindData& data, PathTime kind) {
  switch (kind) {
    case PathTime::Created:
      return data.created;
    case PathTime::LastAccess:
      return data.accessed;
    case PathTime::LastWrite:
      return data.written;
  }
  return {};
}

}  // namespace

std::optional<FindData> clsFileAnalyzer::Find(const std::string& path) const {
  // FindFirstFileA refuses a closing backslash.
  auto found = platform_.files.FindFirstFileA(AsName(path));
  if (!found.ok()) return std::nullopt;
  StepOver(platform_.files.FindClose(found.value.handle));
  return found.value.data;
}

std::int32_t clsFileAnalyzer::GetPathAttributes(const std::string& path) const {
  auto attributes = platform_.files.GetFileAttributesA(path);
  if (attributes.ok()) return static_cast<std::int32_t>(attributes.value);
  // A file that is held open without sharing, as the page file, still shows its attributes in its folder.
  auto found = Find(path);
  return found ? static_cast<std::int32_t>(found->attributes) : -1;
}

bool clsFileAnalyzer::IsFolder(const std::string& path) const {
  const std::int32_t attributes = GetPathAttributes(path);
  return attributes >= 0 && (attributes & static_cast<std::int32_t>(kAttributeDirectory)) != 0;
}

bool clsFileAnalyzer::IsLink(const std::string& path) const {
  const std::int32_t attributes = GetPathAttributes(AsName(path));
  return attributes >= 0 && (attributes & static_cast<std::int32_t>(kAttributeReparsePoint)) != 0;
}

std::string clsFileAnalyzer::GetAttributeNames(std::int32_t attributes) {
  if (attributes == 0) return "Normal";
  if (attributes < 0) return {};
  std::string names;
  for (const AttributeName& name : kAttributeNames) {
    if ((static_cast<std::uint32_t>(attributes) & name.bit) != 0) names += name.text;
  }
  return WithoutLast(names, 2);
}

int clsFileAnalyzer::SetPathAttributes(const std::string& path, std::uint32_t attributes) {
  return static_cast<int>(platform_.files.SetFileAttributesA(path, attributes));
}

Error clsFileAnalyzer::ClearAttributes(const std::string& path) {
  auto attributes = platform_.files.GetFileAttributesA(path);
  if (!attributes.ok()) return attributes.error;
  return platform_.files.SetFileAttributesA(path, attributes.value & ~kProtecting);
}

std::int64_t clsFileAnalyzer::TimeZoneOffset() const {
  constexpr std::int64_t kMinute = 60 * static_cast<std::int64_t>(kFileTimeTicksPerSecond);
  const auto utc = SystemTimeToFileTime(platform_.system.GetSystemTime());
  const auto local = SystemTimeToFileTime(platform_.system.GetLocalTime());
  if (!utc || !local) return 0;
  // The clock may move between the two questions; offsets are whole minutes.
  const auto apart = static_cast<std::int64_t>(local->ticks - utc->ticks);
  const std::int64_t half = apart < 0 ? -kMinute / 2 : kMinute / 2;
  return (apart + half) / kMinute * kMinute;
}

std::optional<SystemTime> clsFileAnalyzer::GetPathDate(const std::string& path, PathTime kind) const {
  auto found = Find(path);
  if (!found) return std::nullopt;
  return FileTimeToSystemTime({TimeOf(*found, kind).ticks + static_cast<std::uint64_t>(TimeZoneOffset())});
}

bool clsFileAnalyzer::SetPathDate(const std::string& path, const SystemTime& date, PathTime kind) {
  const auto local = SystemTimeToFileTime(date);
  if (!local) return false;
  auto utc = platform_.system.LocalFileTimeToFileTime(*local);
  if (!utc.ok()) return false;
  auto file = platform_.files.CreateFileA(path, kGenericWrite, kShareRead | kShareWrite, kOpenExisting, 0);
  if (!file.ok()) return false;
  auto only = [&](PathTime other) { return kind == other ? std::optional(utc.value) : std::nullopt; };
  const bool done = Ok(platform_.files.SetFileTime(file.value, only(PathTime::Created), only(PathTime::LastAccess),
                                                   only(PathTime::LastWrite)));
  StepOver(platform_.files.CloseHandle(file.value));
  return done;
}

}  // namespace qb
