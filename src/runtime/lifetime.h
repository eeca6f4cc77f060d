// Whether the program still lives. One object for each program; everything that runs messages, or acts
// after them, asks it.
#pragma once

#include <algorithm>
#include <vector>

#include "platform/platform.h"

namespace qb {

// What goes with the program, at the moment of its end.
class Mortal {
 public:
  virtual void LifeEnded() = 0;

 protected:
  ~Mortal() = default;
};

class Lifetime {
 public:
  Lifetime() = default;
  Lifetime(const Lifetime&) = delete;
  Lifetime& operator=(const Lifetime&) = delete;

  // True from the end on: no handler may run any more, and nothing may be changed.
  bool Over() const { return over_; }
  // Ends it, once. All that joined hear of it at once, those that came last first.
  void End() {
    if (over_) return;
    over_ = true;
    while (!members_.empty()) {
      Mortal* last = members_.back();
      members_.pop_back();
      last->LifeEnded();
    }
  }
  void Join(Mortal& member) { members_.push_back(&member); }
  void Leave(Mortal& member) { std::erase(members_, &member); }

 private:
  std::vector<Mortal*> members_;
  bool over_ = false;
};

// One round of the message pump, in which the program may end. False if its life is over afterwards.
[[nodiscard]] inline bool PumpAndLive(Platform& platform, const Lifetime& life) {
  if (!life.Over()) platform.pump.PumpMessages();
  return !life.Over();
}

// The same for a loop that has nothing to do but to wait.
[[nodiscard]] inline bool RestAndLive(Platform& platform, const Lifetime& life) {
  if (!life.Over()) platform.pump.RestAndPumpMessages();
  return !life.Over();
}

}  // namespace qb
