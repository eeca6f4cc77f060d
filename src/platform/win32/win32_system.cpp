// The system's version, account, folders and clock, answered by Windows.
#include "platform/win32/convert.h"
#include "platform/win32/factories.h"
#include "platform/win32/native_path.h"
// After the basic types of windows.h.
#include <commctrl.h>
#include <lmcons.h>

#include <cwchar>

namespace qb::win32 {

namespace {

class Win32System : public System {
 public:
  Result<VersionInfo> GetVersionExA() override;
  Result<std::uint32_t> GetUserNameA(TextBuffer& buffer) override;
  Result<std::uint32_t> GetWindowsDirectoryA(TextBuffer& buffer) override;
  std::uint32_t GetPrivateProfileStringA(std::string_view section, std::string_view key, std::string_view fallback,
                                         TextBuffer& buffer, std::string_view file) override;
  std::optional<std::string> GetEnvironmentVariableA(std::string_view name) override;
  Result<std::string> GetModuleFileNameA() override;
  bool InitCommonControlsEx(std::uint32_t size, std::uint32_t classes) override;

  Result<std::string> WideCharToMultiByte(std::string_view text) override;
  Result<std::string> MultiByteToWideChar(std::string_view bytes) override;
  SystemTime GetLocalTime() override;
  SystemTime GetSystemTime() override;
  std::uint64_t GetTickCount() override;
  Result<FileTime> FileTimeToLocalFileTime(FileTime utc) override;
  Result<FileTime> LocalFileTimeToFileTime(FileTime local) override;
};

// The system's own page: that of the process is the one that the manifest asks for.
UINT AskForSystemCodePage() {
  wchar_t number[8]{};
  DWORD size = sizeof number;
  const LSTATUS status = ::RegGetValueW(HKEY_LOCAL_MACHINE, L"SYSTEM\\CurrentControlSet\\Control\\Nls\\CodePage",
                                        L"ACP", RRF_RT_REG_SZ, nullptr, number, &size);
  const auto page = status == ERROR_SUCCESS ? static_cast<UINT>(std::wcstoul(number, nullptr, 10)) : 0;
  return page != 0 && ::IsValidCodePage(page) ? page : ::GetACP();
}
// It stays while Windows runs.
UINT SystemCodePage() {
  static const UINT page = AskForSystemCodePage();
  return page;
}

}  // namespace

Result<VersionInfo> Win32System::GetVersionExA() {
  OSVERSIONINFOW info{};
  info.dwOSVersionInfoSize = sizeof info;
  // A program whose manifest names no newer system is told at most 6.2.
  if (!::GetVersionExW(&info)) return LastError();
  return VersionInfo{info.dwMajorVersion, info.dwMinorVersion, info.dwBuildNumber, info.dwPlatformId};
}

Result<std::uint32_t> Win32System::GetUserNameA(TextBuffer& buffer) {
  wchar_t name[UNLEN + 1]{};
  DWORD size = UNLEN + 1;
  if (!::GetUserNameW(name, &size)) return LastError();
  const std::uint32_t length = buffer.Fill(TextOf(name));
  if (length >= buffer.size()) return Error::InsufficientBuffer;
  return length + 1;
}

Result<std::uint32_t> Win32System::GetWindowsDirectoryA(TextBuffer& buffer) {
  auto folder = FilledText([](wchar_t* filled, DWORD size) { return ::GetWindowsDirectoryW(filled, size); });
  if (!folder.ok()) return folder.error;
  return buffer.Fill(folder.value);
}

std::uint32_t Win32System::GetPrivateProfileStringA(std::string_view section, std::string_view key,
                                                    std::string_view fallback, TextBuffer& buffer,
                                                    std::string_view file) {
  auto native = NativePath(file);
  if (!native.ok()) return 0;
  std::wstring value(buffer.size(), L'\0');
  value.resize(::GetPrivateProfileStringW(Wide(section).c_str(), Wide(key).c_str(), Wide(fallback).c_str(),
                                          value.data(), static_cast<DWORD>(value.size()), native.value.c_str()));
  return buffer.FillCut(Narrow(value));
}

std::optional<std::string> Win32System::GetEnvironmentVariableA(std::string_view name) {
  const std::wstring wanted = Wide(name);
  auto value =
      FilledText([&](wchar_t* filled, DWORD size) { return ::GetEnvironmentVariableW(wanted.c_str(), filled, size); });
  // A variable may be there and empty.
  if (!value.ok() && value.error == Error::Success) return std::string();
  return value.ok() ? std::optional(value.value) : std::nullopt;
}

Result<std::string> Win32System::GetModuleFileNameA() {
  return FilledText([](wchar_t* filled, DWORD size) { return ::GetModuleFileNameW(nullptr, filled, size); });
}

bool Win32System::InitCommonControlsEx(std::uint32_t size, std::uint32_t classes) {
  const INITCOMMONCONTROLSEX wanted{size, classes};
  return ::InitCommonControlsEx(&wanted) != FALSE;
}

Result<std::string> Win32System::WideCharToMultiByte(std::string_view text) {
  const std::wstring wide = Wide(text);
  const UINT page = SystemCodePage();
  // UTF-8 takes neither the flag nor the default.
  const DWORD flags = page == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
  const char* missing = page == CP_UTF8 ? nullptr : "?";
  const int length = static_cast<int>(wide.size());
  std::string bytes(
      static_cast<std::size_t>(::WideCharToMultiByte(page, flags, wide.data(), length, nullptr, 0, missing, nullptr)),
      '\0');
  ::WideCharToMultiByte(page, flags, wide.data(), length, bytes.data(), static_cast<int>(bytes.size()), missing,
                        nullptr);
  return bytes;
}

Result<std::string> Win32System::MultiByteToWideChar(std::string_view bytes) {
  const UINT page = SystemCodePage();
  const int length = static_cast<int>(bytes.size());
  std::wstring wide(static_cast<std::size_t>(::MultiByteToWideChar(page, 0, bytes.data(), length, nullptr, 0)), L'\0');
  ::MultiByteToWideChar(page, 0, bytes.data(), length, wide.data(), static_cast<int>(wide.size()));
  return Narrow(wide);
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

std::unique_ptr<System> MakeSystem() {
  return std::make_unique<Win32System>();
}

}  // namespace qb::win32
