// The timers of the programs that run on a machine.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace qb::machine {

class Timers {
 public:
  // Window and id.
  using Key = std::pair<std::uint64_t, std::uint32_t>;

  // An id that is running starts anew. Times in ms of the machine's clock.
  void Set(const Key& key, std::uint64_t interval, std::uint64_t now, std::function<void()> tick);
  bool Kill(const Key& key) { return timers_.erase(key) != 0; }
  void KillAllOf(std::uint64_t window);
  void EndAll() { timers_.clear(); }
  bool Has(const Key& key) const { return timers_.count(key) != 0; }
  std::uint64_t DueTime(const Key& key) const { return timers_.at(key).due; }

  // Those that are due by then, the one that has been due longest first.
  std::vector<Key> Due(std::uint64_t now) const;
  std::optional<Key> NextDue(std::uint64_t now) const;
  // Runs the tick, unless the timer's own handler is running, and sets the next due time.
  void Fire(const Key& key, std::uint64_t now);

 private:
  struct Timer {
    std::uint64_t interval = 0, started = 0, due = 0;
    std::uint64_t order = 0;
    bool in_handler = false;
    std::function<void()> tick;
    std::pair<std::uint64_t, std::uint64_t> Place() const { return {due, order}; }
  };

  std::map<Key, Timer> timers_;
  std::uint64_t next_ = 0;
};

}  // namespace qb::machine
