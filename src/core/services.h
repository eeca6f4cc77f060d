// Everything of the program that has no window: made first, gone last.
#pragma once

#include <string>

#include "environment/browser_profiles.h"
#include "environment/windows_folders.h"
#include "kill/run_state.h"
#include "runtime/channels.h"
#include "runtime/lifetime.h"
#include "runtime/trace_counter.h"
#include "settings/error_log.h"
#include "settings/mod_registry_related.h"
#include "settings/reg_settings.h"
#include "settings/registry_counter.h"
#include "settings/settings.h"

namespace qb {

struct Services {
  explicit Services(Platform& windows)
      : platform(windows),
        channels(windows.files, windows.system),
        store(windows.registry),
        settings(store, history_removed),
        reg_settings(windows.registry),
        registry_counter(windows.registry, [this] { return PumpAndLive(platform, life); }),
        error_log(channels, windows.system, data_folder),
        registry_related(windows.registry, error_log),
        folders(windows, channels),
        profiles(windows, channels, folders, settings) {}

  Platform& platform;
  Lifetime life;
  Channels channels;
  TraceCounter history_removed;
  SettingsStore store;
  Settings settings;
  CRegSettings reg_settings;  // the main window's one
  RegistryCounter registry_counter;
  std::string data_folder;  // empty until the start has made it
  ErrorLog error_log;
  ModRegistryRelated registry_related;
  WindowsFolders folders;
  BrowserProfiles profiles;
  RunState run;
  ThumbTotals thumbs;
};

}  // namespace qb
