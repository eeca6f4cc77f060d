// The hot keys that the system of a machine has granted, and the icons in its tray.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/hot_keys_and_tray.h"
#include "platform/machine/machine.h"

namespace qb::machine {

// The first number that RegisterWindowMessageA gives, and the message of a new taskbar.
inline constexpr std::uint32_t kFirstSharedMessage = 0xC000;
inline constexpr const char* kTaskbarCreated = "TaskbarCreated";

class HotKeys {
 public:
  struct Registered {
    std::uint64_t window = 0;
    GrantedHotKey key;
  };

  // False for a chord that is taken.
  bool Grant(std::uint64_t window, const GrantedHotKey& key) {
    for (const Registered& there : granted_) {
      if (there.key.modifiers == key.modifiers && there.key.key == key.key) return false;
    }
    granted_.push_back({window, key});
    return true;
  }
  bool Release(std::uint64_t window, std::int32_t id) {
    return std::erase_if(granted_,
                         [=](const Registered& there) { return there.window == window && there.key.id == id; }) != 0;
  }
  void ReleaseAllOf(std::uint64_t window) {
    std::erase_if(granted_, [window](const Registered& there) { return there.window == window; });
  }
  void EndAll() { granted_.clear(); }
  const std::vector<Registered>& Granted() const { return granted_; }  // in order

 private:
  std::vector<Registered> granted_;
};

class Tray {
 public:
  // A window and the id that it gave the icon.
  using Key = std::pair<std::uint64_t, std::uint32_t>;

  bool Add(const NotifyIconData& data) { return icons_.emplace(KeyOf(data), data).second; }
  bool Modify(const NotifyIconData& data) {
    auto found = icons_.find(KeyOf(data));
    if (found != icons_.end()) found->second = data;
    return found != icons_.end();
  }
  bool Delete(const NotifyIconData& data) { return icons_.erase(KeyOf(data)) != 0; }
  void Clear() { icons_.clear(); }
  const std::map<Key, NotifyIconData>& Icons() const { return icons_; }

 private:
  static Key KeyOf(const NotifyIconData& data) { return {static_cast<std::uint64_t>(data.window), data.id}; }
  std::map<Key, NotifyIconData> icons_;
};

}  // namespace qb::machine
