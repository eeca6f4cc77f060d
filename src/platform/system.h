// The system's version, account, folders and clock.
#pragma once

#include <optional>

#include "platform/text_buffer.h"
#include "platform/types.h"

namespace qb {

struct VersionInfo {
  std::uint32_t major = 0, minor = 0, build = 0, platform_id = 0;
};

class System {
 public:
  virtual ~System() = default;

  virtual Result<VersionInfo> GetVersionExA() = 0;
  // Text and closing zero go into the buffer; gives the length with the zero.
  virtual Result<std::uint32_t> GetUserNameA(TextBuffer& buffer) = 0;
  // Without a closing backslash. Gives the length without the closing zero.
  virtual Result<std::uint32_t> GetWindowsDirectoryA(TextBuffer& buffer) = 0;
  // Gives the length written, without the closing zero; a longer value is cut to the buffer.
  virtual std::uint32_t GetPrivateProfileStringA(std::string_view section, std::string_view key,
                                                 std::string_view fallback, TextBuffer& buffer,
                                                 std::string_view file) = 0;
  virtual std::optional<std::string> GetEnvironmentVariableA(std::string_view name) = 0;
  // The full path of the running program.
  virtual Result<std::string> GetModuleFileNameA() = 0;
  // Size and class mask of INITCOMMONCONTROLSEX.
  virtual bool InitCommonControlsEx(std::uint32_t size, std::uint32_t classes) = 0;

  // Between texts and the system's ANSI code page, in which text files are. A character that the page lacks becomes
  // "?".
  virtual Result<std::string> WideCharToMultiByte(std::string_view text) = 0;
  virtual Result<std::string> MultiByteToWideChar(std::string_view bytes) = 0;

  virtual SystemTime GetLocalTime() = 0;
  virtual SystemTime GetSystemTime() = 0;
  // Milliseconds since the system started; the caller takes differences only.
  virtual std::uint64_t GetTickCount() = 0;
  virtual Result<FileTime> FileTimeToLocalFileTime(FileTime utc) = 0;
  virtual Result<FileTime> LocalFileTimeToFileTime(FileTime local) = 0;
};

}  // namespace qb
