// The system's version, account, folders and clock, answered by Windows.
#pragma once

#include "platform/system.h"

namespace qb::win32 {

class Win32System : public System {
 public:
  Result<VersionInfo> GetVersionExA() override;
  Result<std::uint32_t> GetUserNameA(Buffer buffer) override;
  Result<std::uint32_t> GetWindowsDirectoryA(Buffer buffer) override;
  std::uint32_t GetPrivateProfileStringA(std::string_view section, std::string_view key, std::string_view fallback,
                                         Buffer buffer, std::string_view file) override;
  std::optional<std::string> GetEnvironmentVariableA(std::string_view name) override;
  Result<std::string> GetModuleFileNameA() override;
  bool InitCommonControlsEx(std::uint32_t size, std::uint32_t classes) override;

  SystemTime GetLocalTime() override;
  SystemTime GetSystemTime() override;
  std::uint64_t GetTickCount() override;
  Result<FileTime> FileTimeToLocalFileTime(FileTime utc) override;
  Result<FileTime> LocalFileTimeToFileTime(FileTime local) override;
};

}  // namespace qb::win32
