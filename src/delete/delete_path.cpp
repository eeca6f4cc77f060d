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
  if (life_.Over() || Refused(folder)) return;
  progress_.SetValue(1);
  progress_.SetMax(kListingMax);
  std::vector<FolderEntry> entries;
  if (IsPlainFolder(folder)) entries = ListEntries(platform_.files, folder + "\\*.*", kListEverything);
  for (std::size_t collected = 1; collected <= entries.size() && collected <= kListingMax; ++collected) {
    progress_.SetValue(static_cast<int>(collected));
  }
  progress_.SetMax(static_cast<int>(entries.size()));
  progress_.Refresh();
  if (!PumpAndLive(platform_, life_)) return;
  // The number of entries is kept in 16 bits with a sign; one that does not fit leaves the bound at 0.
  const std::size_t bound =
      entries.size() <= static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max()) ? entries.size() : 0;

  for (std::size_t i = 0; i < bound; ++i) {
    const FolderEntry& entry = entries[i];
    const std::string path = folder + "\\" + entry.name;
    if (!PumpAndLive(platform_, life_)) return;
    progress_.SetValue(static_cast<int>(i + 1));
    if (entry.IsLink()) {
      // Counted below, and left: what it leads to is no part of this folder.
    } else if (entry.IsFolder()) {
      progress_.SetValue(progress_.Max());
      Wipe_Folder_Files(path);
      if (life_.Over()) return;
    } else {
      StepOver(platform_.files.SetFileAttributesA(path, 0));
      StepOver((this->*file_step)(path));
    }
    history_removed_.Add(1);
  }
  progress_.SetValue(progress_.Max());
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
