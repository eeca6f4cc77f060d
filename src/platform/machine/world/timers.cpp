#include "platform/machine/world/timers.h"

#include <algorithm>

namespace qb::machine {

void Timers::Set(const Key& key, std::uint64_t interval, std::uint64_t now, std::function<void()> tick) {
  Timer& timer = timers_[key];
  timer.interval = interval;
  timer.started = now;
  timer.due = now + interval;
  timer.order = next_++;
  timer.tick = std::move(tick);
}

void Timers::KillAllOf(std::uint64_t window) {
  std::erase_if(timers_, [window](const auto& timer) { return timer.first.first == window; });
}

std::vector<Timers::Key> Timers::Due(std::uint64_t now) const {
  std::vector<Key> due;
  for (const auto& [key, timer] : timers_) {
    if (timer.due <= now) due.push_back(key);
  }
  std::sort(due.begin(), due.end(),
            [this](const Key& a, const Key& b) { return timers_.at(a).Place() < timers_.at(b).Place(); });
  return due;
}

std::optional<Timers::Key> Timers::NextDue(std::uint64_t now) const {
  const std::vector<Key> due = Due(now);
  return due.empty() ? std::nullopt : std::optional(due.front());
}

void Timers::Fire(const Key& key, std::uint64_t now) {
  Timer& timer = timers_.at(key);
  // The next multiple of the interval since the timer was set.
  timer.due = timer.started + ((now - timer.started) / timer.interval + 1) * timer.interval;
  if (timer.in_handler) return;  // a tick that falls due while its own handler runs is dropped
  timer.in_handler = true;
  const std::function<void()> tick = timer.tick;  // the handler may kill its timer
  tick();
  auto found = timers_.find(key);
  if (found != timers_.end()) found->second.in_handler = false;
}

}  // namespace qb::machine
