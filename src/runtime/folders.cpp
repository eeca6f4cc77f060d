#include "runtime/folders.h"

#include <algorithm>

#include "platform/utf16.h"
#include "runtime/text.h"

namespace qb {

namespace {

// Failures one after the other that make a listing end: a drive that was pulled out never says that it has ended.
constexpr int kMostFailures = 100;

bool MatchExactly(std::string_view pattern, std::string_view name) {
  std::size_t p = 0, n = 0, star = std::string_view::npos, resume = 0;
  // A letter outside of ASCII is one character of several bytes.
  auto past = [name](std::size_t at) {
    std::string_view rest = name.substr(at);
    TakeCharacter(rest);
    return name.size() - rest.size();
  };
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '?') {
      ++p;
      n = past(n);
    } else if (p < pattern.size() && pattern[p] == name[n] && pattern[p] != '*') {
      ++p, ++n;
    } else if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      resume = n;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      n = resume = past(resume);
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

std::string_view LastComponent(std::string_view path) {
  std::size_t cut = path.find_last_of("\\/:");
  return cut == std::string_view::npos ? path : path.substr(cut + 1);
}

}  // namespace

bool MatchesPattern(std::string_view pattern, std::string_view name, bool match_case) {
  if (pattern == "*.*" || pattern == "*") return true;
  return match_case ? MatchExactly(pattern, name) : MatchExactly(UpperCase(pattern), UpperCase(name));
}

bool IsEntryName(std::string_view name) {
  if (name.empty() || name == "." || name == "..") return false;
  return std::none_of(name.begin(), name.end(), [](char c) {
    return static_cast<unsigned char>(c) < 0x20 || std::string_view("\\/:*?\"<>|").find(c) != std::string_view::npos;
  });
}

bool ForEachEntry(Files& files, std::string_view pattern, const std::function<bool(const FindData& found)>& visit) {
  const auto first = files.FindFirstFileA(pattern);
  if (!first.ok()) return false;
  auto take = [&](const FindData& found) { return !IsEntryName(found.name) || visit(found); };
  bool go_on = take(first.value.data);
  for (int failures = 0; go_on && failures < kMostFailures;) {
    const auto next = files.FindNextFileA(first.value.handle);
    if (next.error == Error::NoMoreFiles) break;
    failures = next.ok() ? 0 : failures + 1;
    if (next.ok()) go_on = take(next.value);
  }
  StepOver(files.FindClose(first.value.handle));
  return true;
}

std::vector<FolderEntry> ListEntries(Files& files, std::string_view pattern, std::uint32_t attribute_mask) {
  constexpr std::uint32_t kOnlyWhenAsked = kAttributeHidden | kAttributeSystem | kAttributeDirectory;
  std::vector<FolderEntry> entries;
  const std::string_view name_pattern = LastComponent(pattern);
  const bool wild = name_pattern.find_first_of("*?") != std::string_view::npos;
  ForEachEntry(files, pattern, [&](const FindData& found) {
    const bool asked = (found.attributes & kOnlyWhenAsked & ~attribute_mask) == 0;
    if (asked && (!wild || MatchesPattern(name_pattern, found.name))) entries.push_back({found.name, found.attributes});
    return true;
  });
  return entries;
}

RuntimeError DeleteFiles(Files& files, std::string_view path_or_pattern) {
  std::string_view name = LastComponent(path_or_pattern);
  if (name.find_first_of("*?") == std::string_view::npos) return FromWindows(files.DeleteFileA(path_or_pattern));
  std::string folder(path_or_pattern.substr(0, path_or_pattern.size() - name.size()));
  std::vector<FolderEntry> entries = ListEntries(files, path_or_pattern, kListFiles);
  for (const FolderEntry& entry : entries) StepOver(files.DeleteFileA(folder + entry.name));
  return entries.empty() ? RuntimeError::FileNotFound : RuntimeError::None;
}

Error ChangeFolder(Files& files, std::string_view path) {
  const bool with_drive = path.size() >= 2 && path[1] == ':';
  const auto current = files.GetCurrentDirectoryA();
  if (with_drive && current.ok() && !SameText(path.substr(0, 1), std::string_view(current.value).substr(0, 1))) {
    return FolderExists(files, path) ? Error::Success : Error::PathNotFound;
  }
  return files.SetCurrentDirectoryA(path);
}

bool LongEnoughPath(std::string_view path) {
  return path.size() > 3;
}

bool FolderExists(Files& files, std::string_view path) {
  auto attributes = files.GetFileAttributesA(path);
  return attributes.ok() && (attributes.value & kAttributeDirectory) != 0;
}

bool FileExists(Files& files, std::string_view path) {
  auto attributes = files.GetFileAttributesA(path);
  return attributes.ok() && (attributes.value & kAttributeDirectory) == 0;
}

bool IsLink(Files& files, std::string_view path) {
  return (files.GetFileAttributesA(path).value_or(0) & kAttributeReparsePoint) != 0;
}

}  // namespace qb
