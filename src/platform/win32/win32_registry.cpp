#include "platform/win32/win32_registry.h"

#include "platform/win32/convert.h"

namespace qb::win32 {

namespace {

Result<KeyHandle> Opened(LSTATUS status, HKEY key) {
  if (status != ERROR_SUCCESS) return FromStatus(status);
  return Wrap<KeyHandle>(key);
}

BYTE* Bytes(Buffer buffer) {
  return reinterpret_cast<BYTE*>(buffer.data());
}

}  // namespace

Result<KeyHandle> Win32Registry::RegOpenKeyA(KeyHandle key, std::string_view sub_key) {
  HKEY opened = nullptr;
  const LSTATUS status = ::RegOpenKeyA(Unwrap(key), std::string(sub_key).c_str(), &opened);
  return Opened(status, opened);
}

Result<KeyHandle> Win32Registry::RegOpenKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t access) {
  HKEY opened = nullptr;
  const LSTATUS status = ::RegOpenKeyExA(Unwrap(key), std::string(sub_key).c_str(), 0, access, &opened);
  return Opened(status, opened);
}

Result<KeyHandle> Win32Registry::RegCreateKeyA(KeyHandle key, std::string_view sub_key) {
  HKEY opened = nullptr;
  const LSTATUS status = ::RegCreateKeyA(Unwrap(key), std::string(sub_key).c_str(), &opened);
  return Opened(status, opened);
}

Result<KeyHandle> Win32Registry::RegCreateKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t access) {
  HKEY opened = nullptr;
  const LSTATUS status = ::RegCreateKeyExA(Unwrap(key), std::string(sub_key).c_str(), 0, nullptr,
                                           REG_OPTION_NON_VOLATILE, access, nullptr, &opened, nullptr);
  return Opened(status, opened);
}

Error Win32Registry::RegCloseKey(KeyHandle key) {
  return FromStatus(::RegCloseKey(Unwrap(key)));
}

Error Win32Registry::RegQueryValueExA(KeyHandle key, std::string_view name, Buffer data, RegValueInfo& info) {
  DWORD type = 0;
  DWORD size = SizeOf(data);
  const LSTATUS status = ::RegQueryValueExA(Unwrap(key), std::string(name).c_str(), nullptr, &type, Bytes(data), &size);
  info = {type, size};
  return FromStatus(status);
}

Error Win32Registry::RegSetValueExA(KeyHandle key, std::string_view name, std::uint32_t type, std::string_view data) {
  return FromStatus(::RegSetValueExA(Unwrap(key), std::string(name).c_str(), 0, type,
                                     reinterpret_cast<const BYTE*>(data.data()), static_cast<DWORD>(data.size())));
}

Error Win32Registry::RegDeleteKeyA(KeyHandle key, std::string_view sub_key) {
  return FromStatus(::RegDeleteKeyA(Unwrap(key), std::string(sub_key).c_str()));
}

Error Win32Registry::RegDeleteValueA(KeyHandle key, std::string_view name) {
  return FromStatus(::RegDeleteValueA(Unwrap(key), std::string(name).c_str()));
}

Error Win32Registry::RegEnumKeyA(KeyHandle key, std::uint32_t index, Buffer name) {
  return FromStatus(::RegEnumKeyA(Unwrap(key), index, name.data(), SizeOf(name)));
}

Error Win32Registry::RegEnumValueA(KeyHandle key, std::uint32_t index, Buffer name, Buffer data, RegValueInfo& info) {
  DWORD type = 0;
  DWORD name_size = SizeOf(name);
  DWORD size = SizeOf(data);
  // Without a data buffer Windows wants no size either, or it takes the 0 for a buffer that is too small.
  const LSTATUS status = ::RegEnumValueA(Unwrap(key), index, name.data(), &name_size, nullptr, &type, Bytes(data),
                                         data.data() != nullptr ? &size : nullptr);
  info = {type, size};
  return FromStatus(status);
}

}  // namespace qb::win32
