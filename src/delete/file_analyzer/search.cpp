// Listing folders and searching them.
#include <algorithm>

#include "delete/file_analyzer/file_analyzer.h"

namespace qb {

namespace {

bool Wanted(const FolderEntry& entry, EntryKind kind) {
  return kind == EntryKind::Both || kind == (entry.IsFolder() ? EntryKind::Folders : EntryKind::Files);
}

bool MatchesAll(const std::string& pattern) {
  return pattern.empty() || pattern == "*" || pattern == "*.*";
}

bool MayEnter(const FolderEntry& entry) {
  return entry.IsFolder() && !entry.IsLink();
}

}  // namespace

std::vector<FolderEntry> clsFileAnalyzer::List(const std::string& folder) const {
  return ListEntries(platform_.files, FixPath(folder) + "*", kListEverything);
}

void clsFileAnalyzer::FilterNames(std::vector<std::string>& paths, const std::string& pattern, bool match_case) {
  if (MatchesAll(pattern)) return;
  std::erase_if(paths, [&](const std::string& path) {
    return !MatchesPattern(pattern, path.substr(path.find_last_of('\\') + 1), match_case);
  });
}

void clsFileAnalyzer::AddContents(const std::string& folder, EntryKind kind, bool recursive,
                                  std::vector<std::string>& contents) const {
  for (const FolderEntry& entry : List(folder)) {
    const std::string path = FixPath(folder) + entry.name;
    if (Wanted(entry, kind)) contents.push_back(path);
    if (recursive && MayEnter(entry)) AddContents(path, kind, recursive, contents);
  }
}

std::int32_t clsFileAnalyzer::GetFolderContents(const std::string& folder, EntryKind kind, bool recursive,
                                                const std::string& pattern, std::vector<std::string>& contents) const {
  if (IsLink(folder)) return 0;
  std::vector<std::string> found;
  AddContents(folder, kind, recursive, found);
  FilterNames(found, pattern, false);
  contents.insert(contents.end(), found.begin(), found.end());
  return static_cast<std::int32_t>(found.size());
}

std::int32_t clsFileAnalyzer::Search(const std::string& folder, const std::string& pattern, EntryKind kind,
                                     bool recursive, bool match_case) {
  return IsLink(folder) ? 0 : SearchFolder(FixPath(folder), pattern, kind, recursive, match_case);
}

std::int32_t clsFileAnalyzer::SearchFolder(const std::string& folder, const std::string& pattern, EntryKind kind,
                                           bool recursive, bool match_case) {
  std::vector<std::string> names, subfolders;
  for (const FolderEntry& entry : List(folder)) {
    if (Wanted(entry, kind)) names.push_back(entry.name);
    if (MayEnter(entry)) subfolders.push_back(FixPath(folder + entry.name));
  }
  FilterNames(names, pattern, match_case);
  auto count = static_cast<std::int32_t>(names.size());
  if (count > 0 && Search_Hit) Search_Hit(names, folder);
  if (!recursive) return count;
  for (const std::string& subfolder : subfolders) {
    count += SearchFolder(subfolder, pattern, kind, recursive, match_case);
  }
  return count;
}

}  // namespace qb
