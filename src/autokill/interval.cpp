#include "autokill/interval.h"

namespace qb {

void AutoKillInterval::Restart() {
  Restart(settings_.Number(Setting::AK_Timer));
}

void AutoKillInterval::Restart(std::int32_t index) {
  const bool known = index >= 0 && static_cast<std::size_t>(index) < kIntervals.size();
  minutes_ = kIntervals[known ? static_cast<std::size_t>(index) : 0].minutes;
}

void AutoKillInterval::Enable(bool enabled) {
  if (enabled) timer_.SetInterval(kOneMinute);
  timer_.SetTimerEnabled(enabled);
}

}  // namespace qb
