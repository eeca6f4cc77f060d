// Accounts and the protection of registry keys on a machine.
#pragma once

#include "platform/machine/machine_registry.h"

namespace qb::machine {

class MachineKeySecurity : public KeySecurity {
 public:
  MachineKeySecurity(MachineState& state, MachineRegistry& registry) : state_(state), registry_(registry) {}

  Error LookupAccountNameA(std::string_view account, Buffer identifier, TextBuffer* domain,
                           std::uint32_t& domain_size) override;
  Error RegGetKeySecurity(KeyHandle key, std::uint32_t information, Buffer descriptor, std::uint32_t& size) override;
  Error InitializeSecurityDescriptor(Buffer descriptor, std::uint32_t revision) override;
  Error RegSetKeySecurity(KeyHandle key, std::uint32_t information, std::span<const char> descriptor) override;
  Error RegEnumKeyExA(KeyHandle key, std::uint32_t index, TextBuffer& name, std::uint32_t& length) override;

 private:
  MachineState& state_;
  MachineRegistry& registry_;
};

}  // namespace qb::machine
