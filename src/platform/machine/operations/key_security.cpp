// Accounts and the protection of registry keys on a machine.
#include "platform/machine/operation.h"
#include "platform/machine/operations/operations.h"

namespace qb::machine {
namespace {

constexpr std::string_view kDomain = "MACHINE";
constexpr std::uint32_t kReadControl = 0x20000, kEnumerate = 0x8;
constexpr auto kUnknownRevision = static_cast<Error>(1305);  // ERROR_UNKNOWN_REVISION
constexpr std::uint32_t kStoredDescriptor = 48;              // bytes of a key's protection, self-relative

class MachineKeySecurity final : public KeySecurity {
 public:
  explicit MachineKeySecurity(MachineState& state) : state_(state) {}

  Error LookupAccountNameA(std::string_view account, Buffer identifier, TextBuffer* domain,
                           std::uint32_t& domain_size) override {
    const auto shown = domain == nullptr ? std::nullopt : std::optional(Bytes(*domain));
    return gate_
        .Call<"LookupAccountNameA">(kNull, account, Bytes(identifier.size()), identifier.size(), shown, domain_size, 1)
        .ReturnsBool([&] {
          if (account.empty() || FoldName(account) != FoldName(state_.config.user)) return Error::NoneMapped;
          TextBuffer none(0);
          TextBuffer& filled = domain == nullptr ? none : *domain;
          domain_size = filled.Fill(kDomain);
          return domain_size < filled.size() ? Error::Success : Error::InsufficientBuffer;
        });
  }

  Error RegGetKeySecurity(KeyHandle key, std::uint32_t information, Buffer descriptor, std::uint32_t& size) override {
    return gate_.Call<"RegGetKeySecurity">(key, information, Bytes(descriptor.size()), size).ReturnsStatus([&] {
      size = kStoredDescriptor;
      const Result<RegKey*> opened = state_.open_keys.Granting(key, kReadControl);
      if (!opened.ok()) return opened.error;
      return descriptor.size() < kStoredDescriptor ? Error::InsufficientBuffer : Error::Success;
    });
  }

  Error InitializeSecurityDescriptor(Buffer descriptor, std::uint32_t revision) override {
    return gate_.Call<"InitializeSecurityDescriptor">(Bytes(descriptor.size()), revision).ReturnsBool([&] {
      if (descriptor.empty()) return Error::InvalidParameter;
      if (revision != kDescriptorRevision) return kUnknownRevision;
      std::fill(descriptor.begin(), descriptor.end(), '\0');
      descriptor[0] = static_cast<char>(revision);
      return Error::Success;
    });
  }

  Error RegSetKeySecurity(KeyHandle key, std::uint32_t information, std::span<const char> descriptor) override {
    return gate_.Call<"RegSetKeySecurity">(key, information, Bytes(descriptor.size())).ReturnsStatus([&] {
      const Result<RegKey*> opened = state_.open_keys.Granting(key, kWriteDac);
      if (!opened.ok()) return opened.error;
      if (descriptor.empty() || descriptor[0] != static_cast<char>(kDescriptorRevision)) return Error::InvalidParameter;
      opened.value->denied = false;
      return Error::Success;
    });
  }

  Error RegEnumKeyExA(KeyHandle key, std::uint32_t index, TextBuffer& name, std::uint32_t& length) override {
    return gate_.Call<"RegEnumKeyExA">(key, index, Bytes(name.size()), length, kNull, kNull, kNull, kNull)
        .ReturnsStatus([&] {
          const Result<RegKey*> opened = state_.open_keys.Granting(key, kEnumerate);
          if (!opened.ok()) return opened.error;
          const auto& children = opened.value->Children();
          if (index >= children.size()) return Error::NoMoreItems;
          const std::uint32_t filled = name.Fill(children[index]->name);
          if (filled >= name.size()) return Error::MoreData;
          length = filled;
          return Error::Success;
        });
  }

 private:
  MachineState& state_;
  Gate& gate_ = state_.gate;
};

}  // namespace

std::unique_ptr<KeySecurity> MakeKeySecurity(MachineState& state) {
  return std::make_unique<MachineKeySecurity>(state);
}

}  // namespace qb::machine
