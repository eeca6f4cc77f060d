#include "platform/win32/win32_shell.h"

#include <algorithm>
#include <array>

#include "platform/win32/convert.h"
// After the basic types of windows.h.
#include <shellapi.h>
#include <shlobj.h>

namespace qb::win32 {

namespace {

using PathBuffer = std::array<char, MAX_PATH>;

// The shell writes up to MAX_PATH characters whatever the caller's buffer holds, so it writes here first.
void CopyTo(Buffer to, const PathBuffer& from) {
  if (to.empty()) return;
  const std::string text = TextOf(from);
  const std::size_t length = std::min(text.size(), to.size() - 1);
  std::copy_n(text.data(), length, to.data());
  to[length] = '\0';
}

std::uint32_t InstanceNumber(HINSTANCE result) {
  return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(result));
}

Error FromHresult(HRESULT result) {
  return static_cast<Error>(SUCCEEDED(result) ? 0 : HRESULT_CODE(result));
}

}  // namespace

std::uint32_t Win32Shell::SHGetFolderPathA(std::uint32_t folder, Buffer path) {
  PathBuffer buffer{};
  const HRESULT result =
      ::SHGetFolderPathA(nullptr, static_cast<int>(folder), nullptr, SHGFP_TYPE_CURRENT, buffer.data());
  CopyTo(path, buffer);
  return static_cast<std::uint32_t>(result);
}

Result<ItemIdList> Win32Shell::SHGetSpecialFolderLocation(WindowHandle owner, std::uint32_t folder) {
  PIDLIST_ABSOLUTE item = nullptr;
  const HRESULT result = ::SHGetSpecialFolderLocation(Unwrap<HWND>(owner), static_cast<int>(folder), &item);
  if (FAILED(result)) return FromHresult(result);
  return Wrap<ItemIdList>(item);
}

ItemIdList Win32Shell::SHBrowseForFolderA(WindowHandle owner, std::string_view title, std::uint32_t flags) {
  const std::string heading(title);
  BROWSEINFOA info{};
  info.hwndOwner = Unwrap<HWND>(owner);
  info.lpszTitle = heading.c_str();
  info.ulFlags = flags;
  return Wrap<ItemIdList>(::SHBrowseForFolderA(&info));
}

bool Win32Shell::SHGetPathFromIDListA(ItemIdList item, Buffer path) {
  PathBuffer buffer{};
  if (!::SHGetPathFromIDListA(Unwrap<PCIDLIST_ABSOLUTE>(item), buffer.data())) return false;
  CopyTo(path, buffer);
  return true;
}

void Win32Shell::CoTaskMemFree(ItemIdList item) {
  ::CoTaskMemFree(Unwrap<void*>(item));
}

std::uint32_t Win32Shell::ShellExecuteA(WindowHandle owner, std::optional<std::string_view> verb, std::string_view file,
                                        std::optional<std::string_view> parameters,
                                        std::optional<std::string_view> folder, std::uint32_t show) {
  return InstanceNumber(::ShellExecuteA(Unwrap<HWND>(owner), OptionalText(verb).get(), std::string(file).c_str(),
                                        OptionalText(parameters).get(), OptionalText(folder).get(),
                                        static_cast<int>(show)));
}

std::uint32_t Win32Shell::FindExecutableA(std::string_view file, std::optional<std::string_view> folder,
                                          Buffer program) {
  PathBuffer buffer{};
  const std::uint32_t result =
      InstanceNumber(::FindExecutableA(std::string(file).c_str(), OptionalText(folder).get(), buffer.data()));
  CopyTo(program, buffer);
  return result;
}

std::string Win32Shell::SHGetFileInfoA(std::string_view path) {
  SHFILEINFOA info{};
  if (!::SHGetFileInfoA(std::string(path).c_str(), 0, &info, sizeof info, SHGFI_TYPENAME)) return {};
  return TextOf(info.szTypeName);
}

std::uint32_t Win32Shell::SHFileOperationA(const FileOperation& operation) {
  const std::string from = operation.from + '\0';  // a list of one path, closed by a second zero
  SHFILEOPSTRUCTA native{};
  native.hwnd = Unwrap<HWND>(operation.owner);
  native.wFunc = operation.operation;
  native.pFrom = from.c_str();
  native.fFlags = static_cast<FILEOP_FLAGS>(operation.flags);
  return static_cast<std::uint32_t>(::SHFileOperationA(&native));
}

void Win32Shell::SHAddToRecentDocs(std::uint32_t flags, std::optional<std::string_view> path) {
  ::SHAddToRecentDocs(flags, OptionalText(path).get());
}

std::uint32_t Win32Shell::SHEmptyRecycleBinA(WindowHandle owner, std::optional<std::string_view> root,
                                             std::uint32_t flags) {
  return static_cast<std::uint32_t>(::SHEmptyRecycleBinA(Unwrap<HWND>(owner), OptionalText(root).get(), flags));
}

Result<RecycleBinInfo> Win32Shell::SHQueryRecycleBinA(std::optional<std::string_view> root) {
  SHQUERYRBINFO info{};
  info.cbSize = sizeof info;
  const HRESULT result = ::SHQueryRecycleBinA(OptionalText(root).get(), &info);
  if (FAILED(result)) return FromHresult(result);
  return RecycleBinInfo{static_cast<std::uint64_t>(info.i64Size), static_cast<std::uint64_t>(info.i64NumItems)};
}

}  // namespace qb::win32
