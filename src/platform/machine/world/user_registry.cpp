#include "platform/machine/world/user_registry.h"

namespace qb::machine {

RegKey* UserRegistry::FindKey(std::string_view key) const {
  std::string_view below;
  RegKey* root = state_.registry.RootOf(key, below);
  return root == nullptr ? nullptr : state_.registry.Find(*root, below);
}

RegKey* UserRegistry::MakeKey(std::string_view key) {
  std::string_view below;
  RegKey* root = state_.registry.RootOf(key, below);
  return root == nullptr || !ValidKeyPath(key) ? nullptr : &state_.registry.Make(*root, below);
}

bool UserRegistry::SetValue(std::string_view key, const RegistryValue& value) {
  RegKey* found = ValidValueName(value.name) ? MakeKey(key) : nullptr;
  if (found == nullptr) return false;
  std::string data = value.data;
  if (value.type == kRegSz || value.type == kRegExpandSz) data += '\0';
  if (RegKey::Value* old = found->Find(value.name))
    *old = {old->name, value.type, data};
  else
    found->values.push_back({value.name, value.type, data});
  return true;
}

bool UserRegistry::DeleteKey(std::string_view key) {
  RegKey* found = FindKey(key);
  if (found == nullptr || found->parent == nullptr) return false;
  state_.registry.Remove(*found);
  return true;
}

bool UserRegistry::DeleteValue(std::string_view key, std::string_view name) {
  RegKey* found = FindKey(key);
  RegKey::Value* value = found == nullptr ? nullptr : found->Find(name);
  if (value == nullptr) return false;
  found->values.erase(found->values.begin() + (value - found->values.data()));
  return true;
}

bool UserRegistry::SetDenied(std::string_view key, bool denied) {
  RegKey* found = FindKey(key);
  if (found == nullptr) return false;
  found->denied = denied;
  return true;
}

std::optional<RegistryKey> UserRegistry::ReadKey(std::string_view key) const {
  const RegKey* found = FindKey(key);
  if (found == nullptr) return std::nullopt;
  RegistryKey read;
  for (const RegKey::Value& value : found->values) {
    std::string data = value.data;
    const bool text = value.type == kRegSz || value.type == kRegExpandSz;
    if (text && !data.empty() && data.back() == '\0') data.pop_back();
    read.values.push_back({value.name, value.type, data});
  }
  for (const RegKey* sub_key : found->Children()) read.sub_keys.push_back(sub_key->name);
  return read;
}

}  // namespace qb::machine
