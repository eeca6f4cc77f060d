#include "platform/machine/world/host_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>

namespace qb::machine {

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
  return HostFile(openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
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
