// The families of traces that the rows of the class table call on.
#pragma once

#include "kill/aol_traces.h"
#include "kill/auto_complete.h"
#include "kill/chrome_traces.h"
#include "kill/firefox_traces.h"
#include "kill/ie_traces.h"
#include "kill/index_dat.h"
#include "kill/safari_traces.h"
#include "kill/windows_traces.h"

namespace qb {

struct TraceUnits {
  FirefoxTraces& firefox;
  ChromeTraces& chrome;
  SafariTraces& safari;
  AolTraces& aol;
  IeTraces& ie;
  IndexDat& index_dat;
  AutoCompleteStore& auto_complete;
  WindowsTraces& windows;
};

}  // namespace qb
