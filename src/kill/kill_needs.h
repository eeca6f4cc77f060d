// What the kill engine works with and does not own.
#pragma once

#include "cookies/keep_list.h"
#include "environment/browser_profiles.h"
#include "environment/product_folders.h"
#include "kill/run_state.h"
#include "runtime/lifetime.h"
#include "runtime/trace_counter.h"
#include "settings/reg_settings.h"

namespace qb {

struct KillNeeds {
  Platform& platform;
  Channels& channels;
  Settings& settings;
  CRegSettings& reg_settings;  // the main window's one
  const WindowsFolders& folders;
  const ProductFolders& products;
  const BrowserProfiles& profiles;
  KeepList& keep_list;
  TraceCounter& history_removed;
  RunState& state;
  const ThumbTotals& thumbs;
  const ShortFolders& short_folders;
  const Lifetime& life;
};

}  // namespace qb
