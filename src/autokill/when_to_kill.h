// The controls that say when Auto-Kill runs. They stand on the Auto-Kill tab and in the wizard, with other
// texts, and act on the same settings and the same interval.
#pragma once

#include "autokill/interval.h"
#include "settings/bindings.h"

namespace qb {

inline constexpr std::string_view kDisableAutoKill = "Disable Auto-Kill";

class WhenToKill {
 public:
  struct Texts {
    const char* last_window_closed;
    const char* IntervalEntry::*interval;
  };
  // `last_window_answered` runs when the question of the first box was answered.
  WhenToKill(Form& form, SettingBindings& bindings, AutoKillInterval& interval, const Texts& texts,
             std::function<void(bool yes)> last_window_answered = nullptr);

  // What a click of the box does, and a load that ticks it: the countdown, its timer and the stored interval follow.
  void UseTimerSet();

  CheckBox last_window_closed, use_timer, windows_start;
  ComboBox interval_list;

 private:
  SettingBindings& bindings_;
  AutoKillInterval& interval_;
};

}  // namespace qb
