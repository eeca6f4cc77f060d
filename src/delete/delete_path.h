// The common delete path of the kill routines: the quick wipe of one file and the folder walker behind
// its guard list.
#pragma once

#include <string>
#include <string_view>

#include "delete/progress.h"
#include "platform/platform.h"
#include "runtime/channels.h"
#include "runtime/folders.h"
#include "runtime/lifetime.h"
#include "runtime/trace_counter.h"

namespace qb {

class DeletePath {
 public:
  // `progress` tells how far a walk is. When the program ends a walk stops at its next entry.
  DeletePath(Platform& platform, Channels& channels, TraceCounter& history_removed, Progress& progress,
             const Lifetime& life)
      : platform_(platform), channels_(channels), history_removed_(history_removed), progress_(progress), life_(life) {}

  // Writes one byte over the file's first byte seven times, cuts the file to an empty line and deletes
  // it. A file that is not there is made and deleted. The first step that fails ends it: a file that
  // another program holds stays as it was, a read-only one too. A file that is a link goes as a link: what it leads to
  // keeps its content.
  RuntimeError Wipe_File(const std::string& path);

  // Wipes every file below the folder, hidden, system and read-only ones too, and leaves all folders.
  // Counts each entry, whether or not its wipe worked. A junction or a link to a folder is counted and left,
  // and so is what it leads to; if `folder` itself is one, there is nothing to wipe. A folder that became one while
  // messages were pumped is not walked on. Some roots are refused
  // with a message; a folder of more than 32,767 entries is left alone. `folder` is without a trailing
  // backslash.
  void Wipe_Folder_Files(const std::string& folder);
  // The same, but the files of the folder itself are plainly deleted; those below are wiped.
  void Delete_Folder_Files(const std::string& folder);

  // How many names a pattern matches; hidden and system ones only when asked for.
  int Count_Matching_Files(std::string_view pattern, bool hidden, bool system);
  // Plain delete of one file or of all that a pattern matches.
  RuntimeError Delete_Files(const std::string& path_or_pattern);
  // A folder that is there and no junction or symbolic link. `folder` is without a trailing backslash.
  bool IsPlainFolder(const std::string& folder) const;
  bool File_Can_Open(std::string_view path) const { return channels_.CanOpen(path); }

 private:
  using FileStep = RuntimeError (DeletePath::*)(const std::string& path);
  // A folder that a walk is in.
  struct Level {
    std::string folder;
    std::vector<FolderEntry> entries;
    std::size_t next = 0, bound = 0;
    FileStep file_step;
  };
  void Walk(const std::string& folder, FileStep file_step);
  // Lists a folder and adds its level, unless it is refused. False once the program has ended.
  bool Enter(const std::string& folder, FileStep file_step, std::vector<Level>& levels);
  // Drops the levels from `first` on and counts that one.
  void Leave(std::vector<Level>& levels, std::size_t first);
  bool Refused(const std::string& folder);

  Platform& platform_;
  Channels& channels_;
  TraceCounter& history_removed_;
  Progress& progress_;
  const Lifetime& life_;
};

}  // namespace qb
