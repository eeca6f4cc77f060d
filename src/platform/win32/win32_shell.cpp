// The shell, answered by Windows.
#include "platform/win32/convert.h"
#include "platform/win32/factories.h"
// After the basic types of windows.h.
#include <shellapi.h>
#include <shlobj.h>

namespace qb::win32 {

namespace {

constexpr std::uint32_t kBadPath = ERROR_PATH_NOT_FOUND;  // of the numbers up to 32 that say why nothing was started

std::uint32_t InstanceNumber(HINSTANCE result) {
  return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(result));
}

Error FromHresult(HRESULT result) {
  return static_cast<Error>(SUCCEEDED(result) ? 0 : HRESULT_CODE(result));
}

class Win32Shell : public Shell {
 public:
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
};

}  // namespace

// The shell writes up to MAX_PATH characters whatever the caller's buffer holds.

std::uint32_t Win32Shell::SHGetFolderPathA(std::uint32_t folder, TextBuffer& path) {
  wchar_t found[MAX_PATH]{};
  const HRESULT result = ::SHGetFolderPathW(nullptr, static_cast<int>(folder), nullptr, SHGFP_TYPE_CURRENT, found);
  path.FillCut(TextOf(found));
  return static_cast<std::uint32_t>(result);
}

Result<ItemIdList> Win32Shell::SHGetSpecialFolderLocation(WindowHandle owner, std::uint32_t folder) {
  PIDLIST_ABSOLUTE item = nullptr;
  const HRESULT result = ::SHGetSpecialFolderLocation(Unwrap<HWND>(owner), static_cast<int>(folder), &item);
  if (FAILED(result)) return FromHresult(result);
  return Wrap<ItemIdList>(item);
}

ItemIdList Win32Shell::SHBrowseForFolderA(WindowHandle owner, std::string_view title, std::uint32_t flags) {
  const std::wstring heading = Wide(title);
  BROWSEINFOW info{};
  info.hwndOwner = Unwrap<HWND>(owner);
  info.lpszTitle = heading.c_str();
  info.ulFlags = flags;
  return Wrap<ItemIdList>(::SHBrowseForFolderW(&info));
}

bool Win32Shell::SHGetPathFromIDListA(ItemIdList item, TextBuffer& path) {
  wchar_t found[MAX_PATH]{};
  if (!::SHGetPathFromIDListW(Unwrap<PCIDLIST_ABSOLUTE>(item), found)) return false;
  path.FillCut(TextOf(found));
  return true;
}

void Win32Shell::CoTaskMemFree(ItemIdList item) {
  ::CoTaskMemFree(Unwrap<void*>(item));
}

std::uint32_t Win32Shell::ShellExecuteA(WindowHandle owner, std::optional<std::string_view> verb, std::string_view file,
                                        std::optional<std::string_view> parameters,
                                        std::optional<std::string_view> folder, std::uint32_t show) {
  auto native = NativeText(file);
  if (!native.ok()) return kBadPath;
  return InstanceNumber(::ShellExecuteW(Unwrap<HWND>(owner), WideText(verb).get(), native.value.c_str(),
                                        WideText(parameters).get(), WideText(folder).get(), static_cast<int>(show)));
}

std::uint32_t Win32Shell::FindExecutableA(std::string_view file, std::optional<std::string_view> folder,
                                          TextBuffer& program) {
  wchar_t found[MAX_PATH]{};
  auto native = NativeText(file);
  if (!native.ok()) return kBadPath;
  const std::uint32_t result = InstanceNumber(::FindExecutableW(native.value.c_str(), WideText(folder).get(), found));
  program.FillCut(TextOf(found));
  return result;
}

std::string Win32Shell::SHGetFileInfoA(std::string_view path) {
  SHFILEINFOW info{};
  auto native = NativeText(path);
  if (!native.ok() || !::SHGetFileInfoW(native.value.c_str(), 0, &info, sizeof info, SHGFI_TYPENAME)) return {};
  return TextOf(info.szTypeName);
}

std::uint32_t Win32Shell::SHFileOperationA(const FileOperation& operation) {
  auto from = NativeText(operation.from);
  if (!from.ok()) return static_cast<std::uint32_t>(from.error);
  from.value += L'\0';  // a list of one path, closed by a second zero
  SHFILEOPSTRUCTW native{};
  native.hwnd = Unwrap<HWND>(operation.owner);
  native.wFunc = operation.operation;
  native.pFrom = from.value.c_str();
  native.fFlags = static_cast<FILEOP_FLAGS>(operation.flags);
  return static_cast<std::uint32_t>(::SHFileOperationW(&native));
}

void Win32Shell::SHAddToRecentDocs(std::uint32_t flags, std::optional<std::string_view> path) {
  constexpr UINT kAnsiPath = SHARD_PATHA;  // the flag that the seam tells by its number
  ::SHAddToRecentDocs(flags == kAnsiPath ? static_cast<UINT>(SHARD_PATHW) : flags, WideText(path).get());
}

std::uint32_t Win32Shell::SHEmptyRecycleBinA(WindowHandle owner, std::optional<std::string_view> root,
                                             std::uint32_t flags) {
  return static_cast<std::uint32_t>(::SHEmptyRecycleBinW(Unwrap<HWND>(owner), WideText(root).get(), flags));
}

Result<RecycleBinInfo> Win32Shell::SHQueryRecycleBinA(std::optional<std::string_view> root) {
  SHQUERYRBINFO info{};
  info.cbSize = sizeof info;
  const HRESULT result = ::SHQueryRecycleBinW(WideText(root).get(), &info);
  if (FAILED(result)) return FromHresult(result);
  return RecycleBinInfo{static_cast<std::uint64_t>(info.i64Size), static_cast<std::uint64_t>(info.i64NumItems)};
}

std::unique_ptr<Shell> MakeShell() {
  return std::make_unique<Win32Shell>();
}

}  // namespace qb::win32
