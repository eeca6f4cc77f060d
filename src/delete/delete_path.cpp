#include "delete/delete_path.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "runtime/random.h"
#include "runtime/text.h"

namespace qb {

namespace {

// Compared in capitals with the whole path. Deliberate: the forms with and without a closing backslash
// differ from row to row, and only the form that stands here is caught.
constexpr std::string_view kRefusedFolders[] = {
    "C:\\",
    "C:\\WINDOWS",
    "D:\\WINDOWS\\",
    "C:\\WINNT",
    "D:\\WINNT\\",
    "C:\\PROGRAM FILES",
    "C:\\WINNT\\SYSTEM\\",
    "D:\\WINDOWS\\SYSTEM\\",
    "D:\\PROGRAM FILES\\",
    "D:\\",
};

constexpr std::string_view kSupportAddress = "support@quillbarrow.example";

// The number of the channel is fixed, so that one wipe at a time can go on.
constexpr int kWipeChannel = 1;
constexpr int kOverwrites = 7;

constexpr int kListingMax = 1000;

class ChannelCloser {
 public:
  ChannelCloser(Channels& channels, int number) : channels_(channels), number_(number) {}
  ~ChannelCloser() { StepOver(channels_.Close(number_)); }
  ChannelCloser(const ChannelCloser&) = delete;
  ChannelCloser& operator=(const ChannelCloser&) = delete;

 private:
  Channels& channels_;
  int number_;
};

}  // namespace

RuntimeError DeletePath::Wipe_File(const std::string& path) {
  if (IsLink(platform_.files, path)) return FromWindows(platform_.files.DeleteFileA(path));
  Random random(platform_.system.GetTickCount());
  const char fill = static_cast<char>(std::lround(random.Next()));
  if (auto error = channels_.Open(kWipeChannel, path, ChannelMode::Binary); !Ok(error)) return error;
  {
    ChannelCloser closer(channels_, kWipeChannel);
    for (int pass = 0; pass < kOverwrites; ++pass) {
      // Deliberate: every pass lands on the first byte; the rest is given up by the cut below.
      if (auto error = channels_.Put(kWipeChannel, 1, std::string_view(&fill, 1)); !Ok(error)) return error;
      // Deliberate: this is the number of the channel and no system handle, so nothing is flushed.
      StepOver(platform_.files.FlushFileBuffers(static_cast<FileHandle>(kWipeChannel)));
    }
  }
  if (auto error = channels_.Open(kWipeChannel, path, ChannelMode::Output); !Ok(error)) return error;
  {
    ChannelCloser closer(channels_, kWipeChannel);
    if (auto error = channels_.PrintLine(kWipeChannel, ""); !Ok(error)) return error;
  }
  return FromWindows(platform_.files.DeleteFileA(path));
}

bool DeletePath::Refused(const std::string& folder) {
  const std::string upper = UpperCase(folder);
  if (std::find(std::begin(kRefusedFolders), std::end(kRefusedFolders), upper) == std::end(kRefusedFolders)) {
    return false;
  }
  StepOver(platform_.desktop.MessageBoxA(progress_.Owner(),
                                         "Error # 69!  Please report to " + std::string(kSupportAddress), "Quillbarrow",
                                         kBoxOk | kBoxStop));
  return true;
}

bool DeletePath::IsPlainFolder(const std::string& folder) const {
  auto attributes = platform_.files.GetFileAttributesA(folder);
  return attributes.ok() && (attributes.value & (kAttributeDirectory | kAttributeReparsePoint)) == kAttributeDirectory;
}

void DeletePath::Wipe_Folder_Files(const std::string& folder) {
  Walk(folder, &DeletePath::Wipe_File);
}

void DeletePath::Delete_Folder_Files(const std::string& folder) {
  Walk(folder, &DeletePath::Delete_Files);
}

void DeletePath::Walk(const std::string& folder, FileStep file_step) {
  // Of its own, and no recursion: somebody else decides how deep folders lie inside each other.
  std::vector<Level> levels;
  if (!Enter(folder, file_step, levels)) return;
  while (!levels.empty()) {
    Level& level = levels.back();
    if (level.next == level.bound) {
      progress_.SetValue(progress_.Max());
      Leave(levels, levels.size() - 1);
      continue;
    }
    if (!PumpAndLive(platform_, life_)) return;
    // Somebody may have put a junction in the place of any of these meanwhile.
    const auto exchanged =
        std::find_if(levels.begin(), levels.end(), [this](const Level& above) { return !IsPlainFolder(above.folder); });
    if (exchanged != levels.end()) {
      Leave(levels, static_cast<std::size_t>(exchanged - levels.begin()));
      continue;
    }
    const FolderEntry& entry = level.entries[level.next++];
    const std::string path = level.folder + "\\" + entry.name;
    progress_.SetValue(static_cast<int>(level.next));
    if (entry.IsFolder() && !entry.IsLink()) {
      progress_.SetValue(progress_.Max());
      const std::size_t depth = levels.size();
      if (!Enter(path, &DeletePath::Wipe_File, levels)) return;
      if (levels.size() > depth) continue;  // counted when it is left
    } else if (!entry.IsFolder()) {
      StepOver(platform_.files.SetFileAttributesA(path, 0));
      StepOver((this->*level.file_step)(path));
    }
    history_removed_.Add(1);
  }
}

bool DeletePath::Enter(const std::string& folder, FileStep file_step, std::vector<Level>& levels) {
  if (life_.Over()) return false;
  if (Refused(folder)) return !life_.Over();
  progress_.SetValue(1);
  progress_.SetMax(kListingMax);
  Level level{folder, {}, 0, 0, file_step};
  if (IsPlainFolder(folder)) level.entries = ListEntries(platform_.files, folder + "\\*.*", kListEverything);
  for (std::size_t collected = 1; collected <= level.entries.size() && collected <= kListingMax; ++collected) {
    progress_.SetValue(static_cast<int>(collected));
  }
  progress_.SetMax(static_cast<int>(level.entries.size()));
  progress_.Refresh();
  if (!PumpAndLive(platform_, life_)) return false;
  // The number of entries is kept in 16 bits with a sign; one that does not fit leaves the bound at 0.
  if (level.entries.size() <= static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) {
    level.bound = level.entries.size();
  }
  levels.push_back(std::move(level));
  return true;
}

void DeletePath::Leave(std::vector<Level>& levels, std::size_t first) {
  // What lies inside the first of them goes uncounted; that one is an entry of the folder above it.
  levels.erase(levels.begin() + static_cast<std::ptrdiff_t>(first), levels.end());
  if (first > 0) history_removed_.Add(1);
}

int DeletePath::Count_Matching_Files(std::string_view pattern, bool hidden, bool system) {
  std::uint32_t mask = kListFiles;
  if (hidden) mask |= kAttributeHidden;
  if (system) mask |= kAttributeSystem;
  return static_cast<int>(ListEntries(platform_.files, pattern, mask).size());
}

RuntimeError DeletePath::Delete_Files(const std::string& path_or_pattern) {
  return DeleteFiles(platform_.files, path_or_pattern);
}

}  // namespace qb
