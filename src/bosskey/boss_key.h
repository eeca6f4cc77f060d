// The Boss Key with its chords.
#pragma once

#include "bosskey/hot_keys.h"
#include "bosskey/window_hider.h"
#include "platform/platform.h"

namespace qb {

struct BossKey {
  // `mark` sets the check mark of the menu entry that shows the state.
  BossKey(Platform& platform, const Settings& settings, HotKeyHost& host, std::function<void(bool)> mark)
      : hider(platform.desktop, settings, std::move(mark)),
        hot_keys(platform.hot_keys_and_tray, settings, hider, host) {}

  WindowHider hider;
  HotKeys hot_keys;
};

}  // namespace qb
