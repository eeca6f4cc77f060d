#include "platform/machine/world/host_text.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace qb::machine {

std::string HostProblem(const char* what) {
  return std::string(what) + ": " + std::strerror(errno);
}

bool ReadWhole(const HostFile& folder, const char* name, std::optional<std::string>& content, std::string& problem) {
  // Opening a pipe would wait for somebody to write to it.
  const HostFile file(openat(folder.fd(), name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!file.ok()) {
    if (errno == ENOENT) return true;
    problem = HostProblem(name);
    return false;
  }
  struct stat status = {};
  if (fstat(file.fd(), &status) != 0 || !S_ISREG(status.st_mode)) {
    problem = std::string(name) + ": no plain file";
    return false;
  }
  content.emplace();
  char block[65536];
  for (;;) {
    const ssize_t got = read(file.fd(), block, sizeof block);
    if (got < 0) {
      problem = HostProblem(name);
      return false;
    }
    if (got == 0) return true;
    content->append(block, static_cast<std::size_t>(got));
  }
}

bool WriteWhole(const HostFile& folder, const std::string& name, std::string_view content, std::string& problem) {
  const std::string beside = name + ".new";
  unlinkat(folder.fd(), beside.c_str(), 0);
  const HostFile file(openat(folder.fd(), beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644));
  if (!file.ok()) {
    problem = HostProblem(name.c_str());
    return false;
  }
  while (!content.empty()) {
    const ssize_t wrote = write(file.fd(), content.data(), content.size());
    if (wrote <= 0) break;
    content.remove_prefix(static_cast<std::size_t>(wrote));
  }
  if (!content.empty() || renameat(folder.fd(), beside.c_str(), folder.fd(), name.c_str()) != 0) {
    problem = HostProblem(name.c_str());
    unlinkat(folder.fd(), beside.c_str(), 0);
    return false;
  }
  return true;
}

}  // namespace qb::machine
