#include "platform/win32/win32_key_security.h"

#include "platform/win32/convert.h"

namespace qb::win32 {

static_assert(sizeof(SECURITY_DESCRIPTOR) <= kDescriptorLength);

Error Win32KeySecurity::LookupAccountNameA(std::string_view account, Buffer identifier, Buffer domain,
                                           std::uint32_t& domain_size) {
  DWORD identifier_size = SizeOf(identifier);
  DWORD size = SizeOf(domain);
  SID_NAME_USE use = SidTypeUnknown;
  const BOOL found = ::LookupAccountNameA(nullptr, std::string(account).c_str(), identifier.data(), &identifier_size,
                                          domain.data(), &size, &use);
  const Error error = FromBool(found);
  domain_size = size;
  return error;
}

Error Win32KeySecurity::RegGetKeySecurity(KeyHandle key, std::uint32_t information, Buffer descriptor,
                                          std::uint32_t& size) {
  DWORD native_size = SizeOf(descriptor);
  const LSTATUS status = ::RegGetKeySecurity(Unwrap(key), information, descriptor.data(), &native_size);
  size = native_size;
  return FromStatus(status);
}

Error Win32KeySecurity::InitializeSecurityDescriptor(Buffer descriptor, std::uint32_t revision) {
  if (descriptor.size() < sizeof(SECURITY_DESCRIPTOR)) return Error::InsufficientBuffer;
  return FromBool(::InitializeSecurityDescriptor(descriptor.data(), revision));
}

Error Win32KeySecurity::RegSetKeySecurity(KeyHandle key, std::uint32_t information, std::span<const char> descriptor) {
  std::string copy(descriptor.data(), descriptor.size());
  return FromStatus(::RegSetKeySecurity(Unwrap(key), information, copy.data()));
}

Error Win32KeySecurity::RegEnumKeyExA(KeyHandle key, std::uint32_t index, Buffer name, std::uint32_t& length) {
  DWORD size = SizeOf(name);
  const LSTATUS status = ::RegEnumKeyExA(Unwrap(key), index, name.data(), &size, nullptr, nullptr, nullptr, nullptr);
  length = size;
  return FromStatus(status);
}

}  // namespace qb::win32
