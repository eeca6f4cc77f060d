// Hot keys of the whole desktop, and the program's icon in the tray.
#pragma once

#include "platform/types.h"

namespace qb {

class HotKeysAndTray {
 public:
  virtual ~HotKeysAndTray() = default;
};

}  // namespace qb
