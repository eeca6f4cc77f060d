// What long work tells of how far it is.
#pragma once

#include "platform/types.h"

namespace qb {

class Progress {
 public:
  virtual ~Progress() = default;

  virtual int Max() const = 0;
  // A maximum below 1 is refused in silence; a value above the new maximum is drawn back to it.
  virtual void SetMax(int max) = 0;
  // A value below 0 or above the maximum is refused in silence.
  virtual void SetValue(int value) = 0;
  // Draws what is out of date at once.
  virtual void Refresh() = 0;
  // The window that a message of the work belongs to.
  virtual WindowHandle Owner() const = 0;
};

}  // namespace qb
