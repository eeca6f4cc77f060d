#include "autokill/watcher.h"

namespace qb {

namespace {

// So many ticks after a run the watcher polls again: a run touches windows and files of browsers and must
// not start the next one.
constexpr std::int16_t kHoldTicks = 30;

}  // namespace

void AutoKill::Once(bool& running, void (AutoKill::*tick)()) {
  if (running) return;
  running = true;
  (this->*tick)();
  running = false;
}

void AutoKill::WatcherTick() {
  if (hold_count_ != 0) {
    ++hold_count_;
    hold_ = hold_count_ < kHoldTicks;
    if (!hold_) hold_count_ = 0;
  }
  if (hold_) return;
  const Flags here = Poll();
  for (const FamilyRow& row : kFamilies) {
    if (here[Index(row.family)]) {
      open_[Index(row.family)] = true;
    } else if (Open(row.family) && settings_.On(Setting::AutoRun) && !hold_) {
      LastWindowClosed(row);
      if (life_.Over()) return;
    }
  }
}

AutoKill::Flags AutoKill::Poll() {
  Flags here{};
  WindowHandle yahoo = WindowHandle::None;
  for (const WatchedClass& row : kWatchedClasses) {
    // None is the desktop.
    const WindowHandle parent = row.family == Family::AOLPane ? yahoo : WindowHandle::None;
    const WindowHandle found = desktop_.FindWindowExA(parent, WindowHandle::None, row.class_name, std::nullopt);
    if (found == WindowHandle::None) continue;
    here[Index(row.family)] = true;
    if (row.family == Family::YahooBrowser) yahoo = found;
  }
  return here;
}

void AutoKill::LastWindowClosed(const FamilyRow& row) {
  if (!row.setting || settings_.On(*row.setting)) runAutoKill_AutoRun();
  if (life_.Over()) return;
  AddTrayIcon();
  open_[Index(row.family)] = false;
  // Only the next tick makes a hold of it: a second family that closed in this second has its run too.
  hold_count_ = 1;
}

void AutoKill::IntervalTick() {
  if (!interval_.MinutePassed()) return;
  runAutoKillnow_Click();
  if (life_.Over()) return;
  AddTrayIcon();
  interval_.Restart();
}

void AutoKill::AddTrayIcon() {
  if (!settings_.On(Setting::HideIcon)) host_.Add_Tray_Icon();
}

void AutoKill::Run(std::int16_t mode) {
  if (settings_.On(Setting::Disable_AK)) {
    settings_.SetNumber(Setting::Disable_AK, 0);
    host_.ClearDoNotAutoKill();
    settings_.SetNumber(Setting::AutoRun, 1);
    host_.ShowWizard();
  }
  host_.Do_Start_Up(mode);
}

}  // namespace qb
