// The registry of a machine in memory: keys and values in the order of their making, names compared
// without regard to case.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/types.h"

namespace qb::machine {

struct RegKey {
  struct Value {
    std::string name;
    std::uint32_t type = 0;
    std::string data;  // as stored: a text with its closing zero if it was given one
  };
  std::string name;
  RegKey* parent = nullptr;
  std::vector<Value> values;
  bool denied = false;  // it, and what lies below, may only be read
  bool gone = false;    // deleted while a handle was open

  RegKey* Child(std::string_view child) const;
  RegKey& MakeChild(std::string_view child);
  std::unique_ptr<RegKey> TakeChild(RegKey& child);
  bool HasChildren() const { return !by_name_.empty(); }
  // By name without regard to case, as Windows enumerates.
  const std::vector<RegKey*>& Children() const;
  Value* Find(std::string_view value);
  // This key and those above it.
  int Levels() const { return parent == nullptr ? 1 : parent->Levels() + 1; }
  // This key or one above it is denied.
  bool Denied() const;

 private:
  std::unordered_map<std::string, std::unique_ptr<RegKey>> by_name_;  // in one case
  // Made anew when someone asks for the order after a change.
  mutable std::vector<RegKey*> in_order_;
};

// Whether a path of names can stand in the registry: each of 255 characters at most, with the levels above it no more
// than the 512 that Windows allows. A zero character ends a name; and "]" before a line break would end it in the file.
bool ValidKeyPath(std::string_view path, int levels_above = 0);
bool ValidValueName(std::string_view name);  // of 16,383 characters at most

class RegistryTree {
 public:
  RegistryTree();

  // The root of a name as "HKEY_CURRENT_USER", made if it is not there yet.
  RegKey& Root(std::string_view name);
  const std::vector<std::unique_ptr<RegKey>>& Roots() const { return roots_; }
  // Below a key, by a path with backslashes; null if it is missing. An empty path is the key itself.
  RegKey* Find(RegKey& from, std::string_view path) const;
  RegKey& Make(RegKey& from, std::string_view path);
  // Takes the key out with all below it. Handles to it stay valid and find it gone.
  void Remove(RegKey& key);
  // "HKCU\…" or "HKLM\…": the root, and what stands behind it. Null for any other beginning.
  RegKey* RootOf(std::string_view key, std::string_view& below);

 private:
  std::vector<std::unique_ptr<RegKey>> roots_;
  std::vector<std::unique_ptr<RegKey>> removed_;  // kept for the handles that may still lead to them
};

// The text form that Windows exports and imports. Reading is all or nothing: on a line that cannot be
// read false, and which one in `problem`.
bool ReadRegistryFile(std::string_view bytes, RegistryTree& tree, std::string& problem);
std::string WriteRegistryFile(const RegistryTree& tree);

}  // namespace qb::machine
