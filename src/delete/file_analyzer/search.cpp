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
  struct Found {
    std::string path;
    bool wanted, enter;
  };
  // Of its own, and no recursion: somebody else decides how deep folders lie inside each other. The last one that is
  // added is the next one.
  std::vector<Found> pending = {{folder, false, true}};
  while (!pending.empty()) {
    const Found next = std::move(pending.back());
    pending.pop_back();
    if (next.wanted) contents.push_back(next.path);
    if (!next.enter) continue;
    const std::vector<FolderEntry> entries = List(next.path);
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
      pending.push_back({FixPath(next.path) + entry->name, Wanted(*entry, kind), recursive && MayEnter(*entry)});
    }
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
  std::int32_t count = 0;
  std::vector<std::string> pending;  // the last one is the next one
  if (!IsLink(folder)) pending.push_back(FixPath(folder));
  while (!pending.empty()) {
    const std::string next = std::move(pending.back());
    pending.pop_back();
    std::vector<std::string> names;
    const std::vector<FolderEntry> entries = List(next);
    for (const FolderEntry& entry : entries) {
      if (Wanted(entry, kind)) names.push_back(entry.name);
    }
    for (auto entry = entries.rbegin(); recursive && entry != entries.rend(); ++entry) {
      if (MayEnter(*entry)) pending.push_back(FixPath(next + entry->name));
    }
    FilterNames(names, pattern, match_case);
    count += static_cast<std::int32_t>(names.size());
    if (!names.empty() && Search_Hit) Search_Hit(names, next);
  }
  return count;
}

}  // namespace qb
