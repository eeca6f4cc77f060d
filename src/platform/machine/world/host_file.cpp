#include "platform/machine/world/host_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace qb::machine {

namespace {

constexpr int kFolderMode = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

// In one call for all of the path, which Linux has since 5.6; the path has fewer than PATH_MAX bytes.
HostFile OpenAtOnce(int folder, const std::string& path, int mode) {
  open_how how{};
  how.flags = static_cast<std::uint64_t>(mode);
  how.resolve = RESOLVE_NO_SYMLINKS | RESOLVE_BENEATH;
  return HostFile(static_cast<int>(syscall(SYS_openat2, folder, path.c_str(), &how, sizeof how)));
}

}  // namespace

HostFile::~HostFile() {
  if (fd_ >= 0) close(fd_);
}

HostFile& HostFile::operator=(HostFile&& other) noexcept {
  if (this != &other) {
    if (fd_ >= 0) close(fd_);
    fd_ = other.fd_;
    other.fd_ = -1;
  }
  return *this;
}

HostFile FolderIn(int folder, const std::string& name) {
  return HostFile(openat(folder, name.c_str(), kFolderMode));
}

HostFile FolderBelow(int folder, const std::string& path) {
  if (HostFile opened = OpenAtOnce(folder, path, kFolderMode); opened.ok()) return opened;
  HostFile opened;
  for (std::size_t start = 0; start < path.size();) {
    const std::size_t end = std::min(path.find('/', start), path.size());
    opened = FolderIn(opened.ok() ? opened.fd() : folder, path.substr(start, end - start));
    if (!opened.ok()) break;
    start = end + 1;
  }
  return opened;
}

HostFile FileBelow(int folder, const std::string& path, bool write) {
  const int mode = (write ? O_RDWR : O_RDONLY) | O_NOFOLLOW | O_CLOEXEC;
  if (HostFile opened = OpenAtOnce(folder, path, mode); opened.ok()) return opened;
  const std::size_t name = path.rfind('/') + 1;
  const HostFile parent = FolderBelow(folder, path.substr(0, name == 0 ? 0 : name - 1));
  return HostFile(parent.ok() ? openat(parent.fd(), path.c_str() + name, mode) : -1);
}

void ForEachName(int folder, const std::function<void(const std::string&)>& visit) {
  // An opening of its own has a place in the listing of its own.
  const int copy = openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  DIR* listing = copy < 0 ? nullptr : fdopendir(copy);
  if (listing == nullptr) {
    if (copy >= 0) close(copy);
    return;
  }
  while (const dirent* item = readdir(listing)) {
    const std::string name = item->d_name;
    if (name != "." && name != "..") visit(name);
  }
  closedir(listing);
}

bool CopyContent(const HostFile& from, const HostFile& to) {
  std::array<char, 65536> block;
  off_t place = 0;
  for (;;) {
    const ssize_t got = pread(from.fd(), block.data(), block.size(), place);
    if (got <= 0) return got == 0;
    if (pwrite(to.fd(), block.data(), static_cast<std::size_t>(got), place) != got) return false;
    place += got;
  }
}

}  // namespace qb::machine
