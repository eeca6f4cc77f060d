// The families of traces that the rows of the class table call on.
#pragma once

#include "kill/windows_traces.h"

namespace qb {

struct TraceUnits {
  WindowsTraces& windows;
};

}  // namespace qb
