#include "autokill/auto_kill_page.h"

namespace qb {

namespace {

constexpr std::string_view kAskDisable =
    "Are you sure you want to disable Auto-Kill?  Doing this will disable the Auto-Kill privacy features which allow "
    "Quillbarrow to automatically run after closing your web broser window.";
constexpr std::string_view kAskHideIcon =
    "Are you sure you want to disable the Quillbarrow tray icon (next to your system clock on your taskbar)? "
    "\r\n\r\n"
    "VERY IMPORTANT: You must use the Quillbarrow HOTKEY to show or configure Quillbarrow!  "
    "\r\n\r\n"
    "The Quillbarrow HOTKEY is: ALT + Z (HOLD ALT KEY THEN PRESS Z)"
    "\r\n"
    "PLEASE WRITE THIS DOWN NOW!";

}  // namespace

AutoKillPage::AutoKillPage(Form& form, Settings& settings, AutoKillInterval& interval)
    : settings_(settings),
      auto_kill_interval_(interval),
      bindings_(form, settings),
      heading_(form, "lblAutoKillHeading", "Auto-Kill Settings"),
      what_(form, "lblAutoKillNote", "Auto-Kill takes its own stored selection of traces, not the boxes of the tabs."),
      show_note_(form, "lblStealthNote", "The log is not written while Auto-Kill runs hidden."),
      when_frame_(form, "frameAK_When", "When to Kill:"),
      what_frame_(form, "frameAK_What", "What to Kill:"),
      show_frame_(form, "frameAK_Show", "What to show when Killing:"),
      when_(form, bindings_, interval, {"Auto-Kill on Last Browser Window close", &IntervalEntry::text}),
      do_not_auto_kill_(form, "chk_DoNotAutoKill", "Disable Auto-Kill (Not Recommended)"),
      hide_icon_(form, "chk_HideIcon", "Complete Stealth - Hide Tray Icon (ALT-Z to Show Quillbarrow)"),
      stealth_on_(form, "optStealthOn", "Stealth Mode - Auto-Kill with Quillbarrow hidden", "Stealth"),
      stealth_off_(form, "optStealthOff", "Display Mode - Show Progress Window During Auto-Kill ", "Stealth"),
      lblTestAutoKill(form, "lblTestAutoKill", "Test Auto-Kill Now"),
      cmdAutoKillDetails(form, "cmdAutoKillDetails", " Auto-Killing Settings") {
  cmdAutoKillDetails.SetToolTip(
      "Click to manage which Internet Explorer/MSN cookies to keep.  Cookies are useful if you login to the same site "
      "frequently.",
      "Auto-Kill Setup");
  bindings_.Bind(Setting::Stealth, stealth_on_, stealth_off_);
  // Deliberate: only shown, a click stores nothing. What it asks for goes by its mouse.
  bindings_.Show(Setting::Disable_AK, do_not_auto_kill_);
  bindings_.Bind(
      Setting::HideIcon, hide_icon_,
      {.question = Question{kDisableAutoKill, kAskHideIcon}, .asked_at = 1, .set = [this] { HideIconChanged(); }});
  do_not_auto_kill_.MouseDown = [this] { chk_DoNotAutoKill_MouseDown(); };
}

Layout AutoKillPage::Arrangement() {
  return Page({heading_,
               Row({Group(when_frame_, {when_.last_window_closed, when_.windows_start,
                                        Row({when_.use_timer, when_.interval_list}), do_not_auto_kill_}),
                    Group(show_frame_, {stealth_off_, stealth_on_, hide_icon_, show_note_})}),
               Group(what_frame_, {what_, Row({cmdAutoKillDetails, lblTestAutoKill})})});
}

void AutoKillPage::LoadFromSettings() {
  loading_ = true;
  bindings_.Load();
  loading_ = false;
  auto_kill_interval_.Restart();
}

void AutoKillPage::HideIconChanged() {
  // The start adds the icon, and takes it away again, by itself.
  if (!loading_ && IconHidden) IconHidden(hide_icon_.Value() == 1);
}

void AutoKillPage::chk_DoNotAutoKill_MouseDown() {
  if (do_not_auto_kill_.Value() == 1) return;
  // The box that asks takes the mouse away, so that the release of the button clicks nothing.
  do_not_auto_kill_.LoseClick();
  const std::optional<bool> disable = bindings_.Ask({kDisableAutoKill, kAskDisable});
  if (!disable) return;
  settings_.SetNumber(Setting::AutoRun, *disable ? 0 : 1);
  do_not_auto_kill_.SetValue(*disable ? 1 : 0);
  when_.last_window_closed.SetValue(*disable ? 0 : 1);
}

}  // namespace qb
