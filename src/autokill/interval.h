// The interval after which Auto-Kill runs by itself: its timer, and the minutes that are left.
#pragma once

#include <array>
#include <cstdint>

#include "settings/settings.h"
#include "widgets/controls.h"

namespace qb {

// The entries of both lists of intervals, by index. Only the index is stored; the texts are for display.
struct IntervalEntry {
  std::int16_t minutes;
  const char* text;         // in comboAK_Timer of the main window
  const char* wizard_text;  // in that of the wizard
};
inline constexpr std::array<IntervalEntry, 7> kIntervals{{{15, "15 Minutes", "15 mins"},
                                                          {30, "30 Minutes", "30 mins"},
                                                          {60, "1 Hour", "1 hr"},
                                                          {180, "3 Hours", "3 hrs"},
                                                          {360, "6 Hours", "6 hrs"},
                                                          {720, "12 Hours", "12 hrs"},
                                                          {1440, "24 Hours", "24 hrs"}}};

class AutoKillInterval {
 public:
  // `form` is the main window, which gets the timer.
  AutoKillInterval(Form& form, Settings& settings)
      : settings_(settings), timer_(form, "Timer_AutoKill", kOneMinute, false) {}

  // Until the next interval run.
  std::int16_t Minutes() const { return minutes_; }
  // Begins the countdown anew, from the entry that AK_Timer names in memory; 15 minutes for one outside the list.
  void Restart();
  // The same from an entry of the list that the user sees.
  void Restart(std::int32_t index);
  // A minute has passed. True if it was the last; the countdown then waits for Restart.
  [[nodiscard]] bool MinutePassed() { return --minutes_ < 1; }
  // The timer ticks once a minute, or not at all.
  void Enable(bool enabled);

 private:
  static constexpr std::uint32_t kOneMinute = 60000;

  Settings& settings_;
  Timer timer_;
  std::int16_t minutes_ = 0;
};

}  // namespace qb
