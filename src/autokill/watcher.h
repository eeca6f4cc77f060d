// What starts unattended runs: the watcher over browser windows, the interval, and the user's own wish.
#pragma once

#include <array>

#include "autokill/auto_kill_host.h"
#include "autokill/families.h"
#include "autokill/interval.h"
#include "platform/desktop.h"
#include "runtime/lifetime.h"
#include "settings/settings.h"

namespace qb {

class AutoKill {
 public:
  AutoKill(Desktop& desktop, Settings& settings, AutoKillInterval& interval, const Lifetime& life, AutoKillHost& host)
      : desktop_(desktop), settings_(settings), interval_(interval), life_(life), host_(host) {}

  // One tick of the watcher, once a second, and one of the interval, once a minute. Neither runs inside itself: a
  // tick that comes meanwhile is dropped. Each may run inside the other.
  void Timer1_Timer() { Once(in_watcher_, &AutoKill::WatcherTick); }
  void Timer_AutoKill_Timer() { Once(in_interval_, &AutoKill::IntervalTick); }

  // The entries of a run: after a browser was closed, asked for by the user or the interval, and one more.
  void runAutoKill_AutoRun() { Run(kAfterBrowser); }
  void runAutoKillnow_Click() { Run(kRunNow); }
  void runAutoKill_Click() { Run(kThirdEntry); }

  // A window of the family has been seen, and its close has not been acted on yet.
  bool Open(Family family) const { return open_[Index(family)]; }
  // Ticks since the last run of the watcher; 0 when it polls.
  std::int16_t HoldCount() const { return hold_count_; }
  bool Hold() const { return hold_; }

 private:
  static constexpr std::int16_t kThirdEntry = 1, kRunNow = 2, kAfterBrowser = 3;
  static std::size_t Index(Family family) { return static_cast<std::size_t>(family); }
  using Flags = std::array<bool, kFamilies.size()>;

  void Once(bool& running, void (AutoKill::*tick)());
  void WatcherTick();
  void IntervalTick();
  void Run(std::int16_t mode);
  Flags Poll();
  void LastWindowClosed(const FamilyRow& row);
  void AddTrayIcon();

  Desktop& desktop_;
  Settings& settings_;
  AutoKillInterval& interval_;
  const Lifetime& life_;
  AutoKillHost& host_;
  Flags open_{};
  std::int16_t hold_count_ = 0;
  bool hold_ = false;
  bool in_watcher_ = false, in_interval_ = false;
};

}  // namespace qb
