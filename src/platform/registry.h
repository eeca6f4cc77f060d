// The registry, by its Windows names. Every function gives the Windows error code.
#pragma once

#include "platform/text_buffer.h"
#include "platform/types.h"

namespace qb {

// Access rights of RegOpenKeyExA.
inline constexpr std::uint32_t kKeyRead = 0x20019;
inline constexpr std::uint32_t kKeyAllAccess = 0xF003F;

// Types of a registry value.
inline constexpr std::uint32_t kRegSz = 1;
inline constexpr std::uint32_t kRegExpandSz = 2;
inline constexpr std::uint32_t kRegBinary = 3;
inline constexpr std::uint32_t kRegDword = 4;

struct RegValueInfo {
  std::uint32_t type = 0;
  std::uint32_t size = 0;  // bytes of data, the closing zero of a text included
};

class Registry {
 public:
  virtual ~Registry() = default;

  // RegOpenKeyA asks for the access MAXIMUM_ALLOWED: a key that may only be read still opens.
  virtual Result<KeyHandle> RegOpenKeyA(KeyHandle key, std::string_view sub_key) = 0;
  virtual Result<KeyHandle> RegOpenKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t access) = 0;
  // Opens the key or makes it with all its parents.
  virtual Result<KeyHandle> RegCreateKeyA(KeyHandle key, std::string_view sub_key) = 0;
  virtual Result<KeyHandle> RegCreateKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t access) = 0;
  virtual Error RegCloseKey(KeyHandle key) = 0;

  // Fills `data` and always says type and size in `info`. A null buffer only asks for these and
  // succeeds; one that is too small gives MoreData. The name "" is the unnamed value.
  virtual Error RegQueryValueExA(KeyHandle key, std::string_view name, Buffer data, RegValueInfo& info) = 0;
  // Writes the bytes as they are: a text must bring its closing zero.
  virtual Error RegSetValueExA(KeyHandle key, std::string_view name, std::uint32_t type, std::string_view data) = 0;
  // Refused with AccessDenied while the key has sub-keys (Windows NT and later).
  virtual Error RegDeleteKeyA(KeyHandle key, std::string_view sub_key) = 0;
  virtual Error RegDeleteValueA(KeyHandle key, std::string_view name) = 0;

  // Entry `index` from 0: the name with a closing zero goes into `name`; too small a buffer gives
  // MoreData, an index past the end NoMoreItems.
  virtual Error RegEnumKeyA(KeyHandle key, std::uint32_t index, TextBuffer& name) = 0;
  // The same over values; `data` may be null. Sizes of what was written come back in `info`.
  virtual Error RegEnumValueA(KeyHandle key, std::uint32_t index, TextBuffer& name, Buffer data,
                              RegValueInfo& info) = 0;
};

}  // namespace qb
