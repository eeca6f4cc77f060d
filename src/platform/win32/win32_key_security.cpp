// The protection of registry keys, answered by Windows.
#include "platform/win32/convert.h"
#include "platform/win32/factories.h"

namespace qb::win32 {

namespace {

static_assert(sizeof(SECURITY_DESCRIPTOR) <= kDescriptorLength);

class Win32KeySecurity : public KeySecurity {
 public:
  Error LookupAccountNameA(std::string_view account, Buffer identifier, TextBuffer* domain,
                           std::uint32_t& domain_size) override;
  Error RegGetKeySecurity(KeyHandle key, std::uint32_t information, Buffer descriptor, std::uint32_t& size) override;
  Error InitializeSecurityDescriptor(Buffer descriptor, std::uint32_t revision) override;
  Error RegSetKeySecurity(KeyHandle key, std::uint32_t information, std::span<const char> descriptor) override;
  Error RegEnumKeyExA(KeyHandle key, std::uint32_t index, TextBuffer& name, std::uint32_t& length) override;
};

}  // namespace

Error Win32KeySecurity::LookupAccountNameA(std::string_view account, Buffer identifier, TextBuffer* domain,
                                           std::uint32_t& domain_size) {
  DWORD identifier_size = SizeOf(identifier);
  DWORD size = domain == nullptr ? 0 : static_cast<DWORD>(domain->size());
  std::wstring name(size, L'\0');
  SID_NAME_USE use = SidTypeUnknown;
  const BOOL found = ::LookupAccountNameW(nullptr, Wide(account).c_str(), identifier.data(), &identifier_size,
                                          domain == nullptr ? nullptr : name.data(), &size, &use);
  const Error error = FromBool(found);
  domain_size = size;
  if (Ok(error) && domain != nullptr) domain->Fill(Narrow(std::wstring_view(name).substr(0, size)));
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

Error Win32KeySecurity::RegEnumKeyExA(KeyHandle key, std::uint32_t index, TextBuffer& name, std::uint32_t& length) {
  std::wstring found(name.size(), L'\0');
  DWORD size = static_cast<DWORD>(found.size());
  const LSTATUS status = ::RegEnumKeyExW(Unwrap(key), index, found.data(), &size, nullptr, nullptr, nullptr, nullptr);
  if (status == ERROR_SUCCESS) name.Fill(Narrow(std::wstring_view(found).substr(0, size)));
  length = size;
  return FromStatus(status);
}

std::unique_ptr<KeySecurity> MakeKeySecurity() {
  return std::make_unique<Win32KeySecurity>();
}

}  // namespace qb::win32
