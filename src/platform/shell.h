// The shell: folders by number, documents and programs, the Recycle Bin.
#pragma once

#include <optional>

#include "platform/text_buffer.h"
#include "platform/types.h"

namespace qb {

struct RecycleBinInfo {
  std::uint64_t bytes = 0, items = 0;
};

// SHFILEOPSTRUCT, what of it is set. Several paths are not used.
struct FileOperation {
  WindowHandle owner = WindowHandle::None;
  std::uint32_t operation = 0;  // 3 is delete
  std::string from;
  std::uint32_t flags = 0;
};

class Shell {
 public:
  virtual ~Shell() = default;

  // Fills the buffer of 260 characters for the current user. The result is the HRESULT: 0, 1 (no such
  // folder), 0x80070057 (no such number on this system) or another failure.
  virtual std::uint32_t SHGetFolderPathA(std::uint32_t folder, TextBuffer& path) = 0;
  virtual Result<ItemIdList> SHGetSpecialFolderLocation(WindowHandle owner, std::uint32_t folder) = 0;
  // The chooser; None when the user cancels.
  virtual ItemIdList SHBrowseForFolderA(WindowHandle owner, std::string_view title, std::uint32_t flags) = 0;
  // False for an item that is no place in the file system.
  virtual bool SHGetPathFromIDListA(ItemIdList item, TextBuffer& path) = 0;
  virtual void CoTaskMemFree(ItemIdList item) = 0;

  // Above 32 is success; else an error number. A missing verb, parameter or folder is a null pointer.
  virtual std::uint32_t ShellExecuteA(WindowHandle owner, std::optional<std::string_view> verb, std::string_view file,
                                      std::optional<std::string_view> parameters,
                                      std::optional<std::string_view> folder, std::uint32_t show) = 0;
  // Above 32 is success, and the program's path is in the buffer.
  virtual std::uint32_t FindExecutableA(std::string_view file, std::optional<std::string_view> folder,
                                        TextBuffer& program) = 0;
  // The type name that the shell shows for a file (SHGFI_TYPENAME); empty on failure.
  virtual std::string SHGetFileInfoA(std::string_view path) = 0;
  // 0 on success, else an error number.
  virtual std::uint32_t SHFileOperationA(const FileOperation& operation) = 0;

  // Flag 2 is a path, nullopt empties the list of recent documents.
  virtual void SHAddToRecentDocs(std::uint32_t flags, std::optional<std::string_view> path) = 0;
  // A null root means all drives. The result is the HRESULT.
  virtual std::uint32_t SHEmptyRecycleBinA(WindowHandle owner, std::optional<std::string_view> root,
                                           std::uint32_t flags) = 0;
  virtual Result<RecycleBinInfo> SHQueryRecycleBinA(std::optional<std::string_view> root) = 0;
};

}  // namespace qb
