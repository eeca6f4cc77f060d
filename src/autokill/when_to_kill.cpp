#include "autokill/when_to_kill.h"

namespace qb {

namespace {

constexpr std::string_view kAskLastWindow =
    "Are you sure you want to disable Auto-Kill?  Doing this will disable the Auto-Kill privacy features which allows "
    "Quillbarrow to automatically run after closing all your web broser windows.";
constexpr std::string_view kAskWindowsStart =
    "Are you sure you want to disable Auto-Kill on Windows StartUp?  Doing this will disable Quillbarrow from "
    "automatically protecting your privacy on Windows startup!";

}  // namespace

WhenToKill::WhenToKill(Form& form, SettingBindings& bindings, AutoKillInterval& interval, const Texts& texts,
                       std::function<void(bool yes)> last_window_answered)
    : last_window_closed(form, "chkAK_LastWinClosed", texts.last_window_closed),
      use_timer(form, "chkAK_UseTimer", "Auto-Kill every:"),
      windows_start(form, "chkAK_WinStart", "Auto-Kill on Windows startup"),
      interval_list(form, "comboAK_Timer"),
      bindings_(bindings),
      interval_(interval) {
  for (const IntervalEntry& entry : kIntervals) interval_list.AddItem(entry.*texts.interval);
  bindings.Bind(Setting::AutoRun, last_window_closed,
                {.question = Question{kDisableAutoKill, kAskLastWindow}, .answered = std::move(last_window_answered)});
  bindings.Bind(Setting::AK_WinStart, windows_start, {.question = Question{kDisableAutoKill, kAskWindowsStart}});
  bindings.Bind(Setting::AK_Timer, interval_list, [&interval] { interval.Restart(); });
  bindings.Bind(Setting::AK_UseTimer, use_timer, {.set = [this] { UseTimerSet(); }});
}

void WhenToKill::UseTimerSet() {
  const bool use = use_timer.Value() == 1;
  if (use) {
    // The other window's list may have moved what memory holds.
    interval_.Restart(interval_list.ListIndex());
    bindings_.Save(Setting::AK_Timer);
  }
  interval_.Enable(use);
}

}  // namespace qb
