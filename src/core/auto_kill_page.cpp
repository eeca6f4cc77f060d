#include "core/auto_kill_page.h"

#include <iterator>

namespace qb {

namespace {

constexpr struct {
  std::int16_t minutes;
  const char* text;
} kIntervals[] = {{15, "15 Minutes"}, {30, "30 Minutes"}, {60, "1 Hour"},    {180, "3 Hours"},
                  {360, "6 Hours"},   {720, "12 Hours"},  {1440, "24 Hours"}};

constexpr std::uint32_t kOneMinute = 60000;
constexpr std::string_view kConfirmationTitle = "Disable Auto-Kill";
constexpr std::string_view kAskLastWindow =
    "Are you sure you want to disable Auto-Kill?  Doing this will disable the Auto-Kill privacy features which allows "
    "Quillbarrow to automatically run after closing all your web broser windows.";
constexpr std::string_view kAskDisable =
    "Are you sure you want to disable Auto-Kill?  Doing this will disable the Auto-Kill privacy features which allow "
    "Quillbarrow to automatically run after closing your web broser window.";
constexpr std::string_view kAskWindowsStart =
    "Are you sure you want to disable Auto-Kill on Windows StartUp?  Doing this will disable Quillbarrow from "
    "automatically protecting your privacy on Windows startup!";
constexpr std::string_view kAskHideIcon =
    "Are you sure you want to disable the Quillbarrow tray icon (next to your system clock on your taskbar)? "
    "\r\n\r\n"
    "VERY IMPORTANT: You must use the Quillbarrow HOTKEY to show or configure Quillbarrow!  "
    "\r\n\r\n"
    "The Quillbarrow HOTKEY is: ALT + Z (HOLD ALT KEY THEN PRESS Z)"
    "\r\n"
    "PLEASE WRITE THIS DOWN NOW!";

}  // namespace

std::int16_t MinutesOfInterval(std::int16_t index) {
  const bool known = index >= 0 && static_cast<std::size_t>(index) < std::size(kIntervals);
  return kIntervals[known ? index : 0].minutes;
}

AutoKillPage::AutoKillPage(Form& form, Settings& settings, Timer& timer)
    : form_(form),
      settings_(settings),
      timer_(timer),
      heading_(form, "lblAutoKillHeading", "Auto-Kill Settings"),
      what_(form, "lblAutoKillNote", "Auto-Kill takes its own stored selection of traces, not the boxes of the tabs."),
      show_note_(form, "lblStealthNote", "The log is not written while Auto-Kill runs hidden."),
      when_frame_(form, "frameAK_When", "When to Kill:"),
      show_frame_(form, "frameAK_Show", "What to show when Killing:"),
      last_window_closed_(form, "chkAK_LastWinClosed", "Auto-Kill on Last Browser Window close"),
      use_timer_(form, "chkAK_UseTimer", "Auto-Kill every:"),
      windows_start_(form, "chkAK_WinStart", "Auto-Kill on Windows startup"),
      do_not_auto_kill_(form, "chk_DoNotAutoKill", "Disable Auto-Kill (Not Recommended)"),
      hide_icon_(form, "chk_HideIcon", "Complete Stealth - Hide Tray Icon (ALT-Z to Show Quillbarrow)"),
      interval_(form, "comboAK_Timer"),
      stealth_on_(form, "optStealthOn", "Stealth Mode - Auto-Kill with Quillbarrow hidden", "Stealth"),
      stealth_off_(form, "optStealthOff", "Display Mode - Show Progress Window During Auto-Kill ", "Stealth") {
  last_window_closed_.Click = [this] { chkAK_LastWinClosed_Click(); };
  use_timer_.Click = [this] { chkAK_UseTimer_Click(); };
  interval_.Click = [this] { comboAK_Timer_Click(); };
  windows_start_.Click = [this] { chkAK_WinStart_Click(); };
  do_not_auto_kill_.MouseDown = [this] { chk_DoNotAutoKill_MouseDown(); };
  hide_icon_.Click = [this] { chk_HideIcon_Click(); };
  stealth_on_.Click = [this] { StealthChosen(1); };
  stealth_off_.Click = [this] { StealthChosen(0); };
}

Layout AutoKillPage::Arrangement() {
  return Page(
      {heading_,
       Group(when_frame_, {last_window_closed_, windows_start_, Row({use_timer_, interval_}), do_not_auto_kill_}),
       Group(show_frame_, {stealth_off_, stealth_on_, hide_icon_, show_note_}), what_});
}

void AutoKillPage::LoadFromSettings() {
  loading_ = true;
  (settings_.On(Setting::Stealth) ? stealth_on_ : stealth_off_).SetValue(true);
  last_window_closed_.SetValue(settings_.On(Setting::AutoRun));
  windows_start_.SetValue(settings_.On(Setting::AK_WinStart));
  do_not_auto_kill_.SetValue(settings_.On(Setting::Disable_AK));
  hide_icon_.SetValue(settings_.On(Setting::HideIcon));
  interval_.Clear();
  for (const auto& interval : kIntervals) interval_.AddItem(interval.text);
  const std::int16_t index = settings_.Number(Setting::AK_Timer);
  StepOver(interval_.SetListIndex(index));
  AutoKillMinutes = MinutesOfInterval(index);
  use_timer_.SetValue(settings_.On(Setting::AK_UseTimer));
  loading_ = false;
}

void AutoKillPage::Keep(Setting setting, std::int16_t number) {
  settings_.SetNumber(setting, number);
  if (!loading_) settings_.Save(setting);
}

bool AutoKillPage::Confirmed(std::string_view question) {
  return form_.platform().desktop.MessageBoxA(form_.Window(), question, kConfirmationTitle, kBoxYesNo | kBoxQuestion) ==
         BoxAnswer::Yes;
}

void AutoKillPage::chkAK_LastWinClosed_Click() {
  if (last_window_closed_.Value() == 1) {
    Keep(Setting::AutoRun, 1);
  } else if (!loading_) {
    const bool disable = Confirmed(kAskLastWindow);
    Keep(Setting::AutoRun, disable ? 0 : 1);
    last_window_closed_.SetValue(disable ? 0 : 1);
  }
}

void AutoKillPage::chkAK_UseTimer_Click() {
  const bool use = use_timer_.Value() == 1;
  if (use) {
    const auto index = static_cast<std::int16_t>(interval_.ListIndex());
    timer_.SetInterval(kOneMinute);
    AutoKillMinutes = MinutesOfInterval(index);
    if (!loading_) Keep(Setting::AK_Timer, index);
  }
  timer_.SetTimerEnabled(use);
  Keep(Setting::AK_UseTimer, use ? 1 : 0);
}

void AutoKillPage::comboAK_Timer_Click() {
  const auto index = static_cast<std::int16_t>(interval_.ListIndex());
  AutoKillMinutes = MinutesOfInterval(index);
  Keep(Setting::AK_Timer, index);
}

void AutoKillPage::chkAK_WinStart_Click() {
  if (windows_start_.Value() == 1) {
    Keep(Setting::AK_WinStart, 1);
  } else if (!loading_) {
    const bool disable = Confirmed(kAskWindowsStart);
    Keep(Setting::AK_WinStart, disable ? 0 : 1);
    windows_start_.SetValue(disable ? 0 : 1);
  }
}

void AutoKillPage::chk_DoNotAutoKill_MouseDown() {
  if (do_not_auto_kill_.Value() == 1) return;
  // The box that asks takes the mouse away, so that the release of the button clicks nothing.
  do_not_auto_kill_.LoseClick();
  const bool disable = Confirmed(kAskDisable);
  settings_.SetNumber(Setting::AutoRun, disable ? 0 : 1);
  do_not_auto_kill_.SetValue(disable ? 1 : 0);
  last_window_closed_.SetValue(disable ? 0 : 1);
}

void AutoKillPage::chk_HideIcon_Click() {
  if (loading_) return;
  const bool hide = hide_icon_.Value() == 1 && Confirmed(kAskHideIcon);
  Keep(Setting::HideIcon, hide ? 1 : 0);
  hide_icon_.SetValue(hide ? 1 : 0);
}

void AutoKillPage::StealthChosen(std::int16_t stealth) {
  Keep(Setting::Stealth, stealth);
}

}  // namespace qb
