// The registry, answered by Windows.
#include <algorithm>

#include "platform/win32/convert.h"
#include "platform/win32/factories.h"

namespace qb::win32 {

namespace {

class Win32Registry : public Registry {
 public:
  Result<KeyHandle> RegOpenKeyA(KeyHandle key, std::string_view sub_key) override;
  Result<KeyHandle> RegOpenKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t access) override;
  Result<KeyHandle> RegCreateKeyA(KeyHandle key, std::string_view sub_key) override;
  Result<KeyHandle> RegCreateKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t access) override;
  Error RegCloseKey(KeyHandle key) override;
  Error RegQueryValueExA(KeyHandle key, std::string_view name, Buffer data, RegValueInfo& info) override;
  Error RegSetValueExA(KeyHandle key, std::string_view name, std::uint32_t type, std::string_view data) override;
  Error RegDeleteKeyA(KeyHandle key, std::string_view sub_key) override;
  Error RegDeleteValueA(KeyHandle key, std::string_view name) override;
  Error RegEnumKeyA(KeyHandle key, std::uint32_t index, TextBuffer& name) override;
  Error RegEnumValueA(KeyHandle key, std::uint32_t index, TextBuffer& name, Buffer data, RegValueInfo& info) override;
};

Result<KeyHandle> Opened(LSTATUS status, HKEY key) {
  if (status != ERROR_SUCCESS) return FromStatus(status);
  return Wrap<KeyHandle>(key);
}

// Data that Windows keeps in UTF-16 and converts for programs of other encodings.
bool IsText(DWORD type) {
  return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// What stands behind a name, as the program sees it.
std::string FromStored(DWORD type, const std::vector<BYTE>& stored) {
  if (!IsText(type)) return std::string(stored.begin(), stored.end());
  std::wstring text(stored.size() / sizeof(wchar_t), L'\0');
  std::copy_n(stored.begin(), text.size() * sizeof(wchar_t), reinterpret_cast<BYTE*>(text.data()));
  return Narrow(text);
}

// Gives what was read to a caller's buffer; a null one only asks.
Error HandOver(DWORD type, const std::vector<BYTE>& stored, Buffer data, RegValueInfo& info) {
  const std::string value = FromStored(type, stored);
  info = {type, static_cast<std::uint32_t>(value.size())};
  if (data.data() == nullptr) return Error::Success;
  if (data.size() < value.size()) return Error::MoreData;
  std::copy(value.begin(), value.end(), data.begin());
  return Error::Success;
}

// Calls until the block is large enough: another program may write a longer value between two calls.
template <typename Call>
LSTATUS ReadStored(std::vector<BYTE>& stored, Call call) {
  for (DWORD offered = 1024;;) {
    stored.resize(offered);
    DWORD size = offered;
    const LSTATUS status = call(stored.data(), &size);
    if (status != ERROR_MORE_DATA || size <= offered) {
      stored.resize(status == ERROR_SUCCESS ? size : 0);
      return status;
    }
    offered = size;
  }
}

// The key that a call opens or makes at a path below another.
template <typename Call>
Result<KeyHandle> OpenedBy(std::string_view sub_key, Call call) {
  auto path = NativeText(sub_key);
  if (!path.ok()) return path.error;
  HKEY opened = nullptr;
  const LSTATUS status = call(path.value.c_str(), &opened);
  return Opened(status, opened);
}

}  // namespace

Result<KeyHandle> Win32Registry::RegOpenKeyA(KeyHandle key, std::string_view sub_key) {
  return OpenedBy(sub_key, [&](auto path, auto opened) { return ::RegOpenKeyW(Unwrap(key), path, opened); });
}

Result<KeyHandle> Win32Registry::RegOpenKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t access) {
  return OpenedBy(sub_key,
                  [&](auto path, auto opened) { return ::RegOpenKeyExW(Unwrap(key), path, 0, access, opened); });
}

Result<KeyHandle> Win32Registry::RegCreateKeyA(KeyHandle key, std::string_view sub_key) {
  return OpenedBy(sub_key, [&](auto path, auto opened) { return ::RegCreateKeyW(Unwrap(key), path, opened); });
}

Result<KeyHandle> Win32Registry::RegCreateKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t access) {
  return OpenedBy(sub_key, [&](auto path, auto opened) {
    return ::RegCreateKeyExW(Unwrap(key), path, 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr, opened, nullptr);
  });
}

Error Win32Registry::RegCloseKey(KeyHandle key) {
  return FromStatus(::RegCloseKey(Unwrap(key)));
}

Error Win32Registry::RegQueryValueExA(KeyHandle key, std::string_view name, Buffer data, RegValueInfo& info) {
  auto wanted = NativeText(name);
  if (!wanted.ok()) return wanted.error;
  DWORD type = 0;
  std::vector<BYTE> stored;
  const LSTATUS status = ReadStored(stored, [&](BYTE* block, DWORD* size) {
    return ::RegQueryValueExW(Unwrap(key), wanted.value.c_str(), nullptr, &type, block, size);
  });
  if (status != ERROR_SUCCESS) return FromStatus(status);
  return HandOver(type, stored, data, info);
}

Error Win32Registry::RegSetValueExA(KeyHandle key, std::string_view name, std::uint32_t type, std::string_view data) {
  auto wanted = NativeText(name);
  if (!wanted.ok()) return wanted.error;
  const std::wstring text = IsText(type) ? Wide(data) : std::wstring();
  const void* bytes = IsText(type) ? static_cast<const void*>(text.data()) : data.data();
  const std::size_t size = IsText(type) ? text.size() * sizeof(wchar_t) : data.size();
  return FromStatus(::RegSetValueExW(Unwrap(key), wanted.value.c_str(), 0, type, static_cast<const BYTE*>(bytes),
                                     static_cast<DWORD>(size)));
}

Error Win32Registry::RegDeleteKeyA(KeyHandle key, std::string_view sub_key) {
  auto path = NativeText(sub_key);
  return path.ok() ? FromStatus(::RegDeleteKeyW(Unwrap(key), path.value.c_str())) : path.error;
}

Error Win32Registry::RegDeleteValueA(KeyHandle key, std::string_view name) {
  auto wanted = NativeText(name);
  return wanted.ok() ? FromStatus(::RegDeleteValueW(Unwrap(key), wanted.value.c_str())) : wanted.error;
}

Error Win32Registry::RegEnumKeyA(KeyHandle key, std::uint32_t index, TextBuffer& name) {
  std::wstring found(name.size(), L'\0');
  const LSTATUS status = ::RegEnumKeyW(Unwrap(key), index, found.data(), static_cast<DWORD>(found.size()));
  if (status == ERROR_SUCCESS) name.Fill(Narrow(found.c_str()));
  return FromStatus(status);
}

Error Win32Registry::RegEnumValueA(KeyHandle key, std::uint32_t index, TextBuffer& name, Buffer data,
                                   RegValueInfo& info) {
  std::wstring found(name.size(), L'\0');
  DWORD type = 0, length = 0;
  std::vector<BYTE> stored;
  const LSTATUS status = ReadStored(stored, [&](BYTE* block, DWORD* size) {
    length = static_cast<DWORD>(found.size());
    return ::RegEnumValueW(Unwrap(key), index, found.data(), &length, nullptr, &type, block, size);
  });
  if (status != ERROR_SUCCESS) return FromStatus(status);
  name.Fill(Narrow(std::wstring_view(found).substr(0, length)));
  return HandOver(type, stored, data, info);
}

std::unique_ptr<Registry> MakeRegistry() {
  return std::make_unique<Win32Registry>();
}

}  // namespace qb::win32
