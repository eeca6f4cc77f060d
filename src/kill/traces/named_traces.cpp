#include "kill/traces/named_traces.h"

#include <algorithm>

#include "runtime/folders.h"

namespace qb {

namespace {

constexpr std::string_view kEverything = "\\*.*";

}  // namespace

bool NamedTraces::IsPath(std::string_view path) {
  constexpr std::string_view kSeparators = "\\/";
  if (!LongEnoughPath(path)) return false;
  for (std::size_t start = 0; start <= path.size();) {
    const std::size_t end = std::min(path.find_first_of(kSeparators, start), path.size());
    if (path.substr(start, end - start) == "..") return false;
    start = end + 1;
  }
  return true;
}

void NamedTraces::WipeFiles(const std::string& folder, Names names) {
  if (!IsPath(folder) || life_.Over()) return;
  for (std::string_view name : names) {
    const std::string path = folder + std::string(name);
    if (!delete_path_.File_Can_Open(path)) continue;
    StepOver(delete_path_.Wipe_File(path));
    history_removed_.Add(1);
  }
}

void NamedTraces::WipeFolders(const std::string& folder, Names names, FolderCount count) {
  if (!IsPath(folder)) return;
  for (std::string_view name : names) {
    delete_path_.Wipe_Folder_Files(folder + std::string(name));
    if (count == FolderCount::WalkerAndOne) Count(1);
  }
}

void NamedTraces::DeletePattern(const std::string& pattern) {
  if (life_.Over()) return;
  if (pattern.ends_with(kEverything) &&
      !delete_path_.IsPlainFolder(pattern.substr(0, pattern.size() - kEverything.size()))) {
    return;
  }
  StepOver(delete_path_.Delete_Files(pattern));
}

void NamedTraces::DeletePaths(Names paths) {
  if (life_.Over()) return;
  for (std::string_view path : paths) {
    if (delete_path_.File_Can_Open(path)) StepOver(delete_path_.Delete_Files(std::string(path)));
  }
}

}  // namespace qb
