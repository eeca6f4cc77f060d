// The registry operations on a machine's registry.
#pragma once

#include <unordered_map>

#include "platform/machine/machine_state.h"

namespace qb::machine {

class MachineRegistry : public Registry {
 public:
  explicit MachineRegistry(MachineState& state) : state_(state) {}

  Result<KeyHandle> RegOpenKeyA(KeyHandle key, std::string_view sub_key) override;
  Result<KeyHandle> RegOpenKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t access) override;
  Result<KeyHandle> RegCreateKeyA(KeyHandle key, std::string_view sub_key) override;
  Result<KeyHandle> RegCreateKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t access) override;
  Error RegCloseKey(KeyHandle key) override;
  Error RegQueryValueExA(KeyHandle key, std::string_view name, Buffer data, RegValueInfo& info) override;
  Error RegSetValueExA(KeyHandle key, std::string_view name, std::uint32_t type, std::string_view data) override;
  Error RegDeleteKeyA(KeyHandle key, std::string_view sub_key) override;
  Error RegDeleteValueA(KeyHandle key, std::string_view name) override;
  Error RegEnumKeyA(KeyHandle key, std::uint32_t index, TextBuffer& name) override;
  Error RegEnumValueA(KeyHandle key, std::uint32_t index, TextBuffer& name, Buffer data, RegValueInfo& info) override;

  // Forgets the handles of programs that have ended.
  void EndAll() { handles_.clear(); }

  // A key behind a handle and the rights that it was opened with; null for a bad handle or a deleted key.
  struct Opened {
    RegKey* key = nullptr;
    std::uint32_t access = 0;
  };
  Opened Resolve(KeyHandle key) const;

 private:
  Result<KeyHandle> Open(KeyHandle key, std::string_view sub_key, std::uint32_t access, bool make);
  Error Recorded(const CallText& call, Error error);

  MachineState& state_;
  std::unordered_map<std::uint64_t, Opened> handles_;
};

}  // namespace qb::machine
