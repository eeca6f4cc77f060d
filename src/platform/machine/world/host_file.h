// Open files and folders of the host. Links of the host are never followed.
#pragma once

#include <functional>
#include <string>

namespace qb::machine {

// An open file descriptor of the host.
class HostFile {
 public:
  HostFile() = default;
  explicit HostFile(int fd) : fd_(fd) {}
  ~HostFile();
  HostFile(HostFile&& other) noexcept : fd_(other.fd_) { other.fd_ = -1; }
  HostFile& operator=(HostFile&& other) noexcept;
  int fd() const { return fd_; }
  bool ok() const { return fd_ >= 0; }

 private:
  int fd_ = -1;
};

// A folder in an open one.
HostFile FolderIn(int folder, const std::string& name);
// The folder at a path of names with "/" between them, below an open one.
HostFile FolderBelow(int folder, const std::string& path);
// The file at such a path, to be read, or read and written.
HostFile FileBelow(int folder, const std::string& path, bool write);
// Calls `visit` with each name in an open folder.
void ForEachName(int folder, const std::function<void(const std::string&)>& visit);
// Writes what one file holds into another, from its start. False if that does not work to the end.
bool CopyContent(const HostFile& from, const HostFile& to);

}  // namespace qb::machine
