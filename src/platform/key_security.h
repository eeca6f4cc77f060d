// The protection of registry keys.
#pragma once

#include "platform/registry.h"

namespace qb {

inline constexpr std::uint32_t kWriteDac = 0x40000;      // right of RegOpenKeyExA
inline constexpr std::uint32_t kDaclInformation = 4;     // DACL_SECURITY_INFORMATION
inline constexpr std::uint32_t kDescriptorRevision = 1;  // SECURITY_DESCRIPTOR_REVISION
inline constexpr std::size_t kDescriptorLength = 40;     // bytes, enough for either word size

class KeySecurity {
 public:
  virtual ~KeySecurity() = default;

  // Fills the identifier and the domain's name. A domain buffer that is null or too small fails with
  // InsufficientBuffer and gives the needed size; NoneMapped if there is no such account.
  virtual Error LookupAccountNameA(std::string_view account, Buffer identifier, TextBuffer* domain,
                                   std::uint32_t& domain_size) = 0;
  // Fills `descriptor`; too small a buffer gives InsufficientBuffer and the needed size.
  virtual Error RegGetKeySecurity(KeyHandle key, std::uint32_t information, Buffer descriptor, std::uint32_t& size) = 0;
  // Makes an absolute descriptor without owner and access lists.
  virtual Error InitializeSecurityDescriptor(Buffer descriptor, std::uint32_t revision) = 0;
  // A descriptor without an access list opens the key to all accounts. The key must be open with WRITE_DAC.
  virtual Error RegSetKeySecurity(KeyHandle key, std::uint32_t information, std::span<const char> descriptor) = 0;
  // As RegEnumKeyA, with the length of the name without its closing zero in `length`.
  virtual Error RegEnumKeyExA(KeyHandle key, std::uint32_t index, TextBuffer& name, std::uint32_t& length) = 0;
};

}  // namespace qb
