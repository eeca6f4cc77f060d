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

  // One tick of the watcher, once a second.
  void Timer1_Timer();
  // One tick of the interval, once a minute.
  void Timer_AutoKill_Timer();

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
};

}  // namespace qb
