// Listing a folder by pattern, plain deletes, and the questions and moves of the scripting file object.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "runtime/errors.h"

namespace qb {

struct FolderEntry {
  std::string name;  // without a path
  std::uint32_t attributes = 0;

  bool IsFolder() const { return (attributes & kAttributeDirectory) != 0; }
  // A junction or symbolic link: what it leads to is somebody else's.
  bool IsLink() const { return (attributes & kAttributeReparsePoint) != 0; }
};

// Attribute mask of a listing: normal, read-only and archive entries are always in it, hidden and
// system ones and folders when their bit is.
inline constexpr std::uint32_t kListFiles = 0;
inline constexpr std::uint32_t kListEverything =
    kAttributeReadOnly | kAttributeHidden | kAttributeSystem | kAttributeDirectory;  // 23

// True if the whole name matches a pattern with * and ?; "*.*" matches all. Case counts only with `match_case`.
bool MatchesPattern(std::string_view pattern, std::string_view name, bool match_case = false);

// What a listing gives is a name, and no path, only then: it is not empty, "." or "..", and holds no separator, colon,
// wildcard or other character that no name may hold. Anything else is never joined to a path.
bool IsEntryName(std::string_view name);

// Calls `visit` with what the system gives for a pattern, in its order, until that says false. What is no entry name is
// left out, and a failure at one entry does not hide the rest. False if nothing can be listed.
bool ForEachEntry(Files& files, std::string_view pattern, const std::function<bool(const FindData& found)>& visit);

// Names that match the pattern in the path's last component, in the system's order. Windows also matches 8.3 names; an
// entry whose long name does not match is left out. Empty if nothing matches or the folder cannot be read.
std::vector<FolderEntry> ListEntries(Files& files, std::string_view pattern, std::uint32_t attribute_mask);

// Deletes one file, or all that a pattern matches, hidden and system ones left alone. With a pattern, a
// file that cannot be deleted is passed over; FileNotFound if none matches.
RuntimeError DeleteFiles(Files& files, std::string_view path_or_pattern);

// Makes a folder the current one of its drive. Each drive has its own: the current drive stays what it is, and the
// current folder of another is nothing that anybody asks for.
Error ChangeFolder(Files& files, std::string_view path);

// A path of three characters or fewer, which is no more than a root, counts as none.
bool LongEnoughPath(std::string_view path);

bool FolderExists(Files& files, std::string_view path);
bool FileExists(Files& files, std::string_view path);
// A junction or symbolic link; false for what is not there. `path` is without a trailing backslash, which would ask for
// what it leads to.
bool IsLink(Files& files, std::string_view path);

}  // namespace qb
