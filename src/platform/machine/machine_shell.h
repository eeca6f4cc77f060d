// The shell of a machine.
#pragma once

#include <map>

#include "platform/machine/machine_state.h"

namespace qb::machine {

class MachineShell : public Shell {
 public:
  explicit MachineShell(MachineState& state) : state_(state) {}

  std::uint32_t SHGetFolderPathA(std::uint32_t folder, TextBuffer& path) override;
  Result<ItemIdList> SHGetSpecialFolderLocation(WindowHandle owner, std::uint32_t folder) override;
  ItemIdList SHBrowseForFolderA(WindowHandle owner, std::string_view title, std::uint32_t flags) override;
  bool SHGetPathFromIDListA(ItemIdList item, TextBuffer& path) override;
  void CoTaskMemFree(ItemIdList item) override;
  std::uint32_t ShellExecuteA(WindowHandle owner, std::optional<std::string_view> verb, std::string_view file,
                              std::optional<std::string_view> parameters, std::optional<std::string_view> folder,
                              std::uint32_t show) override;
  std::uint32_t FindExecutableA(std::string_view file, std::optional<std::string_view> folder,
                                TextBuffer& program) override;
  std::string SHGetFileInfoA(std::string_view path) override;
  std::uint32_t SHFileOperationA(const FileOperation& operation) override;
  void SHAddToRecentDocs(std::uint32_t flags, std::optional<std::string_view> path) override;
  std::uint32_t SHEmptyRecycleBinA(WindowHandle owner, std::optional<std::string_view> root,
                                   std::uint32_t flags) override;
  Result<RecycleBinInfo> SHQueryRecycleBinA(std::optional<std::string_view> root) override;

 private:
  ItemIdList NewItem(const std::string& path);

  MachineState& state_;
  std::map<std::uint64_t, std::string> items_;
};

// The Recycle Bin: items lie in a folder of the host outside of all drives.
Error DiscardEntry(MachineState& state, Entry& entry);
RecycleBinInfo BinContents(const MachineState& state);
void EmptyBin(const MachineState& state);

}  // namespace qb::machine
