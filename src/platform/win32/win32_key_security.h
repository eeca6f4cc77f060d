// Accounts and the protection of registry keys, answered by Windows.
#pragma once

#include "platform/key_security.h"

namespace qb::win32 {

class Win32KeySecurity : public KeySecurity {
 public:
  Error LookupAccountNameA(std::string_view account, Buffer identifier, Buffer domain,
                           std::uint32_t& domain_size) override;
  Error RegGetKeySecurity(KeyHandle key, std::uint32_t information, Buffer descriptor, std::uint32_t& size) override;
  Error InitializeSecurityDescriptor(Buffer descriptor, std::uint32_t revision) override;
  Error RegSetKeySecurity(KeyHandle key, std::uint32_t information, std::span<const char> descriptor) override;
  Error RegEnumKeyExA(KeyHandle key, std::uint32_t index, Buffer name, std::uint32_t& length) override;
};

}  // namespace qb::win32
