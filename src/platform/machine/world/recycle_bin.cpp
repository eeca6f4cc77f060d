#include "platform/machine/world/recycle_bin.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qb::machine {

namespace {

// Removes what lies in a folder of the host, links as links.
void EmptyHostFolder(int folder) {
  ForEachName(folder, [folder](const std::string& name) {
    if (unlinkat(folder, name.c_str(), 0) == 0) return;
    const HostFile below = FolderIn(folder, name);
    if (!below.ok()) return;
    EmptyHostFolder(below.fd());
    unlinkat(folder, name.c_str(), AT_REMOVEDIR);
  });
}

// Of a file, or of all files below a folder.
std::uint64_t BytesOf(int folder, const std::string& name) {
  struct stat info {};
  if (fstatat(folder, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) return 0;
  if (S_ISREG(info.st_mode)) return static_cast<std::uint64_t>(info.st_size);
  std::uint64_t bytes = 0;
  if (const HostFile below = FolderIn(folder, name); below.ok()) {
    ForEachName(below.fd(), [&](const std::string& inside) { bytes += BytesOf(below.fd(), inside); });
  }
  return bytes;
}

}  // namespace

RecycleBinInfo BinContents(const MachineState& state) {
  RecycleBinInfo info;
  ForEachName(state.bin.fd(), [&](const std::string& name) {
    ++info.items;
    info.bytes += BytesOf(state.bin.fd(), name);
  });
  return info;
}

void EmptyBin(const MachineState& state) {
  EmptyHostFolder(state.bin.fd());
}

Error DiscardEntry(MachineState& state, Entry& entry) {
  for (std::size_t number = 1;; ++number) {
    const std::string name = "item" + std::to_string(number);
    struct stat info {};
    if (fstatat(state.bin.fd(), name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0) continue;
    return state.disk.MoveOut(entry, state.bin, name);
  }
}

}  // namespace qb::machine
