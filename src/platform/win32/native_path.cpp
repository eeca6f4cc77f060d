#include "platform/win32/native_path.h"

#include "platform/win32/convert.h"

namespace qb::win32 {

namespace {

// CreateDirectory wants room for an 8.3 name behind the folder, and refuses longer plain paths than all others.
constexpr std::size_t kLongestPlain = MAX_PATH - 12 - 1;

constexpr std::wstring_view kExtended = L"\\\\?\\", kExtendedNetwork = L"\\\\?\\UNC";

bool HasDrive(std::wstring_view path) {
  return path.size() >= 3 && path[1] == L':' && (path[2] == L'\\' || path[2] == L'/');
}

// "\\server\…", and neither "\\?\…" nor "\\.\…".
bool OnNetwork(std::wstring_view path) {
  return path.size() >= 3 && path.substr(0, 2) == L"\\\\" && path[2] != L'?' && path[2] != L'.';
}

}  // namespace

Result<std::wstring> NativePath(std::string_view path) {
  auto text = NativeText(path);
  if (!text.ok()) return text;
  const std::wstring& plain = text.value;
  if (plain.size() <= kLongestPlain || (!HasDrive(plain) && !OnNetwork(plain))) return plain;
  std::wstring whole(plain.size() + 1, L'\0');
  const DWORD length = ::GetFullPathNameW(plain.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
  if (length == 0 || length >= whole.size()) return plain;
  whole.resize(length);
  if (HasDrive(whole)) return std::wstring(kExtended) + whole;
  if (OnNetwork(whole)) return std::wstring(kExtendedNetwork) + whole.substr(1);
  return plain;  // the name of a device
}

std::string PlainPath(std::string_view path) {
  constexpr std::string_view kNetwork = "\\\\?\\UNC\\", kDrive = "\\\\?\\";
  if (path.starts_with(kNetwork)) return "\\\\" + std::string(path.substr(kNetwork.size()));
  return std::string(path.starts_with(kDrive) ? path.substr(kDrive.size()) : path);
}

}  // namespace qb::win32
