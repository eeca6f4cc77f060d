// The registry, answered by Windows.
#pragma once

#include "platform/registry.h"

namespace qb::win32 {

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
  Error RegEnumKeyA(KeyHandle key, std::uint32_t index, Buffer name) override;
  Error RegEnumValueA(KeyHandle key, std::uint32_t index, Buffer name, Buffer data, RegValueInfo& info) override;
};

}  // namespace qb::win32
