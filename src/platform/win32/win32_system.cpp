#include "platform/win32/win32_system.h"

#include <array>

#include "platform/win32/convert.h"
// After the basic types of windows.h.
#include <commctrl.h>

namespace qb::win32 {

Result<VersionInfo> Win32System::GetVersionExA() {
  OSVERSIONINFOA info{};
  info.dwOSVersionInfoSize = sizeof info;
  // A program whose manifest names no newer system is told at most 6.2.
  if (!::GetVersionExA(&info)) return LastError();
  return VersionInfo{info.dwMajorVersion, info.dwMinorVersion, info.dwBuildNumber, info.dwPlatformId};
}

Result<std::uint32_t> Win32System::GetUserNameA(Buffer buffer) {
  DWORD size = SizeOf(buffer);
  if (!::GetUserNameA(buffer.data(), &size)) return LastError();
  return size;
}

Result<std::uint32_t> Win32System::GetWindowsDirectoryA(Buffer buffer) {
  const UINT length = ::GetWindowsDirectoryA(buffer.data(), SizeOf(buffer));
  if (length == 0) return LastError();
  return length;
}

std::uint32_t Win32System::GetPrivateProfileStringA(std::string_view section, std::string_view key,
                                                    std::string_view fallback, Buffer buffer, std::string_view file) {
  return ::GetPrivateProfileStringA(std::string(section).c_str(), std::string(key).c_str(),
                                    std::string(fallback).c_str(), buffer.data(), SizeOf(buffer),
                                    std::string(file).c_str());
}

std::optional<std::string> Win32System::GetEnvironmentVariableA(std::string_view name) {
  const std::string wanted(name);
  std::string value(::GetEnvironmentVariableA(wanted.c_str(), nullptr, 0), '\0');
  if (value.empty()) return std::nullopt;
  value.resize(::GetEnvironmentVariableA(wanted.c_str(), value.data(), static_cast<DWORD>(value.size())));
  return value;
}

Result<std::string> Win32System::GetModuleFileNameA() {
  std::array<char, 32768> buffer{};
  const DWORD length = ::GetModuleFileNameA(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
  if (length == 0) return LastError();
  return std::string(buffer.data(), length);
}

bool Win32System::InitCommonControlsEx(std::uint32_t size, std::uint32_t classes) {
  const INITCOMMONCONTROLSEX wanted{size, classes};
  return ::InitCommonControlsEx(&wanted) != FALSE;
}

SystemTime Win32System::GetLocalTime() {
  SYSTEMTIME time;
  ::GetLocalTime(&time);
  return FromNative(time);
}

SystemTime Win32System::GetSystemTime() {
  SYSTEMTIME time;
  ::GetSystemTime(&time);
  return FromNative(time);
}

std::uint64_t Win32System::GetTickCount() {
  return ::GetTickCount64();
}

Result<FileTime> Win32System::FileTimeToLocalFileTime(FileTime utc) {
  const FILETIME from = ToNative(utc);
  FILETIME to;
  if (!::FileTimeToLocalFileTime(&from, &to)) return LastError();
  return FromNative(to);
}

Result<FileTime> Win32System::LocalFileTimeToFileTime(FileTime local) {
  const FILETIME from = ToNative(local);
  FILETIME to;
  if (!::LocalFileTimeToFileTime(&from, &to)) return LastError();
  return FromNative(to);
}

}  // namespace qb::win32
