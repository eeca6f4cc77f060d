#include "platform/machine/world/registry_tree.h"

#include <algorithm>

#include "platform/machine/world/names.h"

namespace qb::machine {

namespace {

std::string_view TakePart(std::string_view& path) {
  while (!path.empty() && path.front() == '\\') path.remove_prefix(1);
  const std::size_t cut = std::min(path.find('\\'), path.size());
  const std::string_view part = path.substr(0, cut);
  path.remove_prefix(cut);
  return part;
}

void MarkGone(RegKey& key) {
  key.gone = true;
  for (RegKey* child : key.Children()) MarkGone(*child);
}

}  // namespace

RegKey* RegKey::Child(std::string_view child) const {
  auto found = by_name_.find(FoldName(child));
  return found == by_name_.end() ? nullptr : found->second.get();
}

RegKey& RegKey::MakeChild(std::string_view child) {
  std::unique_ptr<RegKey>& made = by_name_[FoldName(child)];
  made = std::make_unique<RegKey>();
  made->name = child;
  made->parent = this;
  in_order_.clear();
  return *made;
}

std::unique_ptr<RegKey> RegKey::TakeChild(RegKey& child) {
  auto taken = by_name_.extract(FoldName(child.name));
  std::erase(in_order_, &child);
  return std::move(taken.mapped());
}

const std::vector<RegKey*>& RegKey::Children() const {
  if (in_order_.size() != by_name_.size()) {
    std::vector<std::pair<std::string_view, RegKey*>> named;
    for (const auto& [folded, child] : by_name_) named.emplace_back(folded, child.get());
    std::sort(named.begin(), named.end());
    in_order_.clear();
    for (const auto& [folded, child] : named) in_order_.push_back(child);
  }
  return in_order_;
}

RegKey::Value* RegKey::Find(std::string_view value) {
  for (Value& candidate : values) {
    if (SameName(candidate.name, value)) return &candidate;
  }
  return nullptr;
}

bool ValidKeyPath(std::string_view path, int levels_above) {
  constexpr int kMostLevels = 512;
  constexpr std::size_t kLongest = 255;
  if (path.find('\0') != std::string_view::npos || path.find("]\n") != std::string_view::npos ||
      path.find("]\r") != std::string_view::npos) {
    return false;
  }
  int levels = levels_above;
  for (std::string_view part = TakePart(path); !part.empty(); part = TakePart(path)) {
    if (++levels > kMostLevels || Utf16Length(part) > kLongest) return false;
  }
  return true;
}

bool ValidValueName(std::string_view name) {
  constexpr std::size_t kLongest = 16383;
  return name.find('\0') == std::string_view::npos && Utf16Length(name) <= kLongest;
}

bool RegKey::Denied() const {
  for (const RegKey* key = this; key != nullptr; key = key->parent) {
    if (key->denied) return true;
  }
  return false;
}

RegistryTree::RegistryTree() {
  Root("HKEY_CURRENT_USER");
  Root("HKEY_LOCAL_MACHINE");
}

RegKey& RegistryTree::Root(std::string_view name) {
  for (const auto& root : roots_) {
    if (SameName(root->name, name)) return *root;
  }
  roots_.push_back(std::make_unique<RegKey>());
  roots_.back()->name = name;
  return *roots_.back();
}

RegKey* RegistryTree::Find(RegKey& from, std::string_view path) const {
  RegKey* key = &from;
  for (std::string_view part = TakePart(path); key != nullptr && !part.empty(); part = TakePart(path)) {
    key = key->Child(part);
  }
  return key;
}

RegKey& RegistryTree::Make(RegKey& from, std::string_view path) {
  RegKey* key = &from;
  for (std::string_view part = TakePart(path); !part.empty(); part = TakePart(path)) {
    RegKey* child = key->Child(part);
    if (child == nullptr) child = &key->MakeChild(part);
    key = child;
  }
  return *key;
}

void RegistryTree::Remove(RegKey& key) {
  MarkGone(key);
  removed_.push_back(key.parent->TakeChild(key));
}

RegKey* RegistryTree::RootOf(std::string_view key, std::string_view& below) {
  const std::size_t cut = std::min(key.find('\\'), key.size());
  const std::string root = FoldName(key.substr(0, cut));
  below = key.substr(cut);
  if (root == "HKCU") return &Root("HKEY_CURRENT_USER");
  if (root == "HKLM") return &Root("HKEY_LOCAL_MACHINE");
  return nullptr;
}

}  // namespace qb::machine
