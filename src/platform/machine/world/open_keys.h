// The keys of a machine's registry that a program has open, and the rights that it has on them.
#pragma once

#include <cstdint>
#include <unordered_map>

#include "platform/machine/world/registry_tree.h"

namespace qb::machine {

inline constexpr std::uint32_t kMaximumAllowed = 0x2000000;

struct OpenedKey {
  RegKey* key = nullptr;
  std::uint32_t access = 0;

  bool Grants(std::uint32_t right) const { return access == kMaximumAllowed || (access & right) == right; }
};

class OpenKeys {
 public:
  explicit OpenKeys(RegistryTree& tree) : tree_(tree) {}

  void Add(std::uint64_t handle, OpenedKey opened) { handles_[handle] = opened; }
  bool Close(std::uint64_t handle) { return handles_.erase(handle) != 0; }
  void EndAll() { handles_.clear(); }
  // Of a root or an open handle; the key is null for a bad handle, and may be gone.
  OpenedKey Resolve(KeyHandle key) const {
    if (key == KeyHandle::CurrentUser) return {&tree_.Root("HKEY_CURRENT_USER"), kMaximumAllowed};
    if (key == KeyHandle::LocalMachine) return {&tree_.Root("HKEY_LOCAL_MACHINE"), kMaximumAllowed};
    auto found = handles_.find(static_cast<std::uint64_t>(key));
    return found == handles_.end() ? OpenedKey() : found->second;
  }
  // A key that is open with a right. Windows looks at the rights of the handle first and then whether the key is still
  // there.
  Result<RegKey*> Granting(KeyHandle key, std::uint32_t right) const {
    const OpenedKey opened = Resolve(key);
    if (opened.key == nullptr) return Error::InvalidHandle;
    if (!opened.Grants(right)) return Error::AccessDenied;
    return opened.key->gone ? Result<RegKey*>(Error::KeyDeleted) : opened.key;
  }

 private:
  RegistryTree& tree_;
  std::unordered_map<std::uint64_t, OpenedKey> handles_;
};

}  // namespace qb::machine
