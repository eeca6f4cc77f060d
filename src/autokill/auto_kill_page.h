// The Auto-Kill tab of the main window: its controls, their settings and confirmations.
#pragma once

#include "autokill/when_to_kill.h"

namespace qb {

class AutoKillPage {
 public:
  // `form` gets the page's controls.
  AutoKillPage(Form& form, Settings& settings, AutoKillInterval& interval);

  Layout Arrangement();
  // Sets the controls from the settings in memory, and the interval's countdown anew.
  void LoadFromSettings();
  // Clears the box chk_DoNotAutoKill, without a question.
  void ClearDoNotAutoKill() { do_not_auto_kill_.SetValue(0); }

  // The user chose, and confirmed, whether the tray icon is hidden.
  std::function<void(bool hidden)> IconHidden;

 private:
  void HideIconChanged();
  void chk_DoNotAutoKill_MouseDown();

  Settings& settings_;
  AutoKillInterval& auto_kill_interval_;
  SettingBindings bindings_;
  bool loading_ = false;

  HeadingLabel heading_;
  Label what_, show_note_;
  Frame when_frame_, what_frame_, show_frame_;
  WhenToKill when_;
  CheckBox do_not_auto_kill_, hide_icon_;
  OptionButton stealth_on_, stealth_off_;
  LinkLabel lblTestAutoKill;
  Button cmdAutoKillDetails;
};

}  // namespace qb
