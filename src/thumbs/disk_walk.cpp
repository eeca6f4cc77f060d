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
  ended_ = false;
  std::size_t count = 0;
  Walk_Folder(Add_Backslash(root), count, 0);
  Reset_Results();
}

void DiskWalk::Reset_Results() {
  results_.clear();
  stop_ = false;
}

void DiskWalk::Walk_Folder(const std::string& folder, std::size_t& count, int depth) {
  const std::size_t first = count;
  if (!ListFolder(folder, count)) return;
  const std::size_t end = count;
  for (std::size_t i = first; i < end && !ended_; ++i) {
    if (i % kCancelStep == 0 && observer_.Scan_Cancelled()) return observer_.Do_Cancel();
    const File_Entry& entry = EntryAt(i);
    if (LooksLikeThumbsCache(entry.name())) observer_.CacheFound(entry.full_path);
    const bool plain_folder =
        (entry.attributes & (kAttributeDirectory | kAttributeReparsePoint)) == kAttributeDirectory;
    if (plain_folder && depth < kDeepest) Walk_Folder(entry.full_path, count, depth + 1);
  }
}

bool DiskWalk::ListFolder(const std::string& folder, std::size_t& count) {
  bool go_on = true;
  const bool listed = ForEachEntry(files_, folder + "*", [&](const FindData& found) {
    go_on = TakeEntry(folder, found, count);
    return go_on && !stop_;
  });
  return listed && go_on;
}

bool DiskWalk::TakeEntry(const std::string& folder, const FindData& found, std::size_t& count) {
  const std::string& name = found.name;
  ended_ = !observer_.PumpMessages();
  if (ended_) return false;
  if (observer_.Scan_Cancelled()) {
    observer_.Do_Cancel();
    return false;
  }
  if (count / kRoom >= results_.size()) results_.push_back(std::make_unique<File_Entry[]>(kRoom));
  const bool is_folder = (found.attributes & kAttributeDirectory) != 0;
  File_Entry& entry = EntryAt(count);
  entry.full_path.reserve(folder.size() + name.size() + (is_folder ? 1 : 0));
  entry.full_path.append(folder).append(name);
  if (is_folder) entry.full_path += '\\';
  entry.folder_length = static_cast<std::uint32_t>(folder.size());
  entry.attributes = found.attributes;
  ++count;
  observer_.EntrySeen();
  return true;
}

}  // namespace qb
