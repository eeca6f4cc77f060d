// The small routines that walk the browsers' tables of file and folder names. Once the program has ended
// none of them does anything.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "delete/delete_path.h"

namespace qb {

using Names = std::span<const std::string_view>;

// What a walk over folder names adds by itself for each folder, on top of what the walker counts.
enum class FolderCount { Walker, WalkerAndOne };

class NamedTraces {
 public:
  NamedTraces(DeletePath& delete_path, TraceCounter& history_removed, const Lifetime& life)
      : delete_path_(delete_path), history_removed_(history_removed), life_(life) {}

  // A path of three characters or fewer is none, and nothing is done for it; nor for one that still climbs
  // with "..", which leads out of the profiles to anywhere.
  static bool IsPath(std::string_view path);

  // For each name, in order: if `folder` + name opens, wipes it and counts 1.
  void WipeFiles(const std::string& folder, Names names);
  // For each name, in order: empties the folder tree `folder` + name.
  void WipeFolders(const std::string& folder, Names names, FolderCount count);
  // Plainly deletes what `pattern` matches; nothing is counted. A folder of which all is to go is left alone
  // if it is itself a junction, which leads elsewhere.
  void DeletePattern(const std::string& pattern);
  // For each path, in order: if it opens, plainly deletes it; nothing is counted.
  void DeletePaths(Names paths);
  void Count(double traces) {
    if (!life_.Over()) history_removed_.Add(traces);
  }

 private:
  DeletePath& delete_path_;
  TraceCounter& history_removed_;
  const Lifetime& life_;
};

}  // namespace qb
