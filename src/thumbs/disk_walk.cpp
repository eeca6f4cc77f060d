#include "thumbs/disk_walk.h"

#include "runtime/folders.h"
#include "runtime/text.h"
#include "thumbs/picture_cut.h"

namespace qb {

namespace {

// The looks at the wish to cancel while the entries of a folder are tested.
constexpr std::size_t kCancelStep = 100;

// Windows paths of 260 characters hold no more folders than this in one another.
constexpr int kDeepest = 260;

}  // namespace

void DiskWalk::Find_Thumbs(const std::string& root) {
  Reset_Results();
  Results results;
  Walk_Folder(Add_Backslash(root), results, 0);
}

void DiskWalk::Walk_Folder(const std::string& folder, Results& results, int depth) {
  const std::size_t first = results.count;
  if (!ListFolder(folder, results)) return;
  const std::size_t end = results.count;
  for (std::size_t i = first; i < end && !results.ended; ++i) {
    if (i % kCancelStep == 0 && observer_.Scan_Cancelled()) return observer_.Do_Cancel();
    const File_Entry& entry = results.At(i);
    if (LooksLikeThumbsCache(entry.name())) observer_.CacheFound(entry.full_path);
    const bool plain_folder =
        (entry.attributes & (kAttributeDirectory | kAttributeReparsePoint)) == kAttributeDirectory;
    if (plain_folder && depth < kDeepest) Walk_Folder(entry.full_path, results, depth + 1);
  }
}

bool DiskWalk::ListFolder(const std::string& folder, Results& results) {
  bool go_on = true;
  const bool listed = ForEachEntry(files_, folder + "*", [&](const FindData& found) {
    go_on = TakeEntry(folder, found, results);
    return go_on && !stop_;
  });
  return listed && go_on;
}

bool DiskWalk::TakeEntry(const std::string& folder, const FindData& found, Results& results) {
  const std::string& name = found.name;
  results.ended = !observer_.PumpMessages();
  if (results.ended) return false;
  if (observer_.Scan_Cancelled()) {
    observer_.Do_Cancel();
    return false;
  }
  if (results.count / Results::kRoom >= results.entries.size()) {
    results.entries.push_back(std::make_unique<File_Entry[]>(Results::kRoom));
  }
  const bool is_folder = (found.attributes & kAttributeDirectory) != 0;
  File_Entry& entry = results.At(results.count);
  entry.full_path.reserve(folder.size() + name.size() + (is_folder ? 1 : 0));
  entry.full_path.append(folder).append(name);
  if (is_folder) entry.full_path += '\\';
  entry.folder_length = static_cast<std::uint32_t>(folder.size());
  entry.attributes = found.attributes;
  ++results.count;
  observer_.EntrySeen();
  return true;
}

}  // namespace qb
