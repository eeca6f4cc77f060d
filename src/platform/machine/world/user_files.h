// What the user and other programs do to the files of a machine, and what can be seen of them. No call of the program.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/machine/world/machine_state.h"

namespace qb::machine {

class UserFiles {
 public:
  explicit UserFiles(MachineState& state) : state_(state) {}

  // Each gives false if what it names does not exist or cannot be done.
  bool MakeFolder(std::string_view path) { return Ok(FolderWithParents(path).error); }
  bool MakeFile(std::string_view path, std::string_view content);  // with its parents; replaces
  bool MakeFileOfSize(std::string_view path, std::uint64_t size);
  bool ChangeAttributes(std::string_view path, const std::vector<std::string>& changes);
  bool Delete(std::string_view path);
  bool Discard(std::string_view path);
  bool SetLocked(std::string_view path, bool locked);
  bool MakeLink(std::string_view path, std::string_view target);

  std::string Exists(std::string_view path) const;
  std::string Attributes(std::string_view path) const;
  std::optional<std::vector<std::string>> ListBelow(std::string_view folder) const;
  std::optional<std::string> Content(std::string_view path) const;
  std::optional<std::uint64_t> Size(std::string_view path) const;

 private:
  // With its parents; one that is there is emptied.
  Result<HostFile> EmptyFile(std::string_view path);
  Result<Entry*> FolderWithParents(std::string_view path);

  MachineState& state_;
};

}  // namespace qb::machine
