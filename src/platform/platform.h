// The one seam between the program and Windows. Two families of classes stand behind it: Windows
// itself, and a machine in a folder. All calls are made from one thread.
#pragma once

#include "platform/com.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/hot_keys_and_tray.h"
#include "platform/key_security.h"
#include "platform/processes.h"
#include "platform/pump.h"
#include "platform/random_source.h"
#include "platform/registry.h"
#include "platform/shell.h"
#include "platform/system.h"
#include "platform/url_cache.h"

namespace qb {

struct Platform {
  Registry& registry;
  Files& files;
  Shell& shell;
  System& system;
  Processes& processes;
  Desktop& desktop;
  HotKeysAndTray& hot_keys_and_tray;
  Pump& pump;
  RandomSource& random_source;
  UrlCache& url_cache;
  Com& com;
  KeySecurity& key_security;
};

}  // namespace qb
