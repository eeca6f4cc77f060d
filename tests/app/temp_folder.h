// A folder of the host that goes with its scope.
#pragma once

#include <stdlib.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace qb::test {

// In memory where there is room: on a disk a sweep of faults, which makes and removes a machine for each fault, mostly
// waits for the journal. TMPDIR has the last word.
inline std::filesystem::path TempRoot() {
  constexpr std::uintmax_t kRoom = std::uintmax_t{1} << 30;
  std::filesystem::path memory = "/dev/shm";
  std::error_code failed;
  const auto space = std::filesystem::space(memory, failed);
  if (getenv("TMPDIR") == nullptr && !failed && space.available >= kRoom && access(memory.c_str(), W_OK | X_OK) == 0) {
    return memory;
  }
  return std::filesystem::temp_directory_path();
}

class TempFolder {
 public:
  explicit TempFolder(const std::filesystem::path& root = TempRoot()) {
    std::string name = (root / "quillbarrow-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = name;
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace qb::test
