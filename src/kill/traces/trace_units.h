// The families of traces that the rows of the class table call on.
#pragma once

#include <tuple>

#include "kill/kill_needs.h"
#include "kill/traces/aol_traces.h"
#include "kill/traces/auto_complete.h"
#include "kill/traces/chrome_traces.h"
#include "kill/traces/firefox_traces.h"
#include "kill/traces/ie_traces.h"
#include "kill/traces/index_dat.h"
#include "kill/traces/safari_traces.h"
#include "kill/traces/windows_traces.h"

namespace qb {

struct TraceUnits {
  TraceUnits(const KillNeeds& needs, DeletePath& delete_path, clsFileAnalyzer& analyzer, RunDisplay& display)
      : names(delete_path, needs.history_removed, needs.life),
        firefox(needs.profiles, needs.folders, names),
        chrome(needs.profiles, names),
        safari(needs.profiles, names),
        aol(needs.settings, names),
        ie(needs, delete_path, analyzer, names, display),
        index_dat(needs, display),
        auto_complete(needs.platform, needs.reg_settings, needs.history_removed, needs.life),
        windows(needs, delete_path, display) {}

  // Runs the routine of that name, without regard to case. False if no unit has one.
  bool Call(std::string_view name) {
    return std::apply([name](auto&... unit) { return (CallByName(unit, name) || ...); },
                      std::tie(firefox, chrome, safari, aol, ie, index_dat, auto_complete, windows));
  }

  NamedTraces names;
  FirefoxTraces firefox;
  ChromeTraces chrome;
  SafariTraces safari;
  AolTraces aol;
  IeTraces ie;
  IndexDat index_dat;
  AutoCompleteStore auto_complete;
  WindowsTraces windows;
};

}  // namespace qb
