#include "platform/machine/world/host_text.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

namespace qb::machine {

namespace {

// The first of the texts that are written together, from when on all of them hold until each has its own name.
constexpr const char* kWritten = "written";

std::string Beside(const std::string& name) {
  return name + ".new";
}

bool WriteBeside(const HostFile& folder, const HostText& text, std::string& problem) {
  const std::string beside = Beside(text.name);
  unlinkat(folder.fd(), beside.c_str(), 0);
  const HostFile file(openat(folder.fd(), beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644));
  std::string_view content = text.content;
  while (file.ok() && !content.empty()) {
    const ssize_t wrote = write(file.fd(), content.data(), content.size());
    if (wrote <= 0) break;
    content.remove_prefix(static_cast<std::size_t>(wrote));
  }
  if (file.ok() && content.empty()) return true;
  problem = HostProblem(text.name.c_str());
  return false;
}

}  // namespace

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

bool WriteTogether(const HostFile& folder, std::span<const HostText> texts, std::string& problem) {
  std::vector<std::string> names;
  bool written = true;
  for (const HostText& text : texts) {
    names.push_back(text.name);
    written = written && WriteBeside(folder, text, problem);
  }
  if (written && renameat(folder.fd(), Beside(names.front()).c_str(), folder.fd(), kWritten) != 0) {
    problem = HostProblem(names.front().c_str());
    written = false;
  }
  std::string other;
  return FinishWriting(folder, names, written ? problem : other) && written;
}

bool FinishWriting(const HostFile& folder, std::span<const std::string> names, std::string& problem) {
  const bool written = faccessat(folder.fd(), kWritten, F_OK, AT_SYMLINK_NOFOLLOW) == 0;
  for (const std::string& name : names) {
    if (!written) {
      unlinkat(folder.fd(), Beside(name).c_str(), 0);
    } else if (renameat(folder.fd(), Beside(name).c_str(), folder.fd(), name.c_str()) != 0 && errno != ENOENT) {
      problem = HostProblem(name.c_str());
      return false;
    }
  }
  if (!written || renameat(folder.fd(), kWritten, folder.fd(), names.front().c_str()) == 0) return true;
  problem = HostProblem(names.front().c_str());
  return false;
}

}  // namespace qb::machine
