// What the user and other programs do to the registry of a machine, and what can be seen of it. Keys begin with "HKCU"
// or "HKLM". No call of the program.
#pragma once

#include <optional>
#include <string_view>

#include "platform/machine/world/machine_state.h"

namespace qb::machine {

class UserRegistry {
 public:
  explicit UserRegistry(MachineState& state) : state_(state) {}

  // Each gives false if what it names does not exist or cannot be done.
  bool AddKey(std::string_view key) { return MakeKey(key) != nullptr; }
  bool SetValue(std::string_view key, const RegistryValue& value);
  bool DeleteKey(std::string_view key);  // with all below it
  bool DeleteValue(std::string_view key, std::string_view name);
  bool SetDenied(std::string_view key, bool denied);

  std::optional<RegistryKey> ReadKey(std::string_view key) const;

 private:
  RegKey* FindKey(std::string_view key) const;
  RegKey* MakeKey(std::string_view key);

  MachineState& state_;
};

}  // namespace qb::machine
