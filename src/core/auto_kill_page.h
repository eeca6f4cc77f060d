// The Auto-Kill tab of the main window: its controls, their settings and confirmations.
#pragma once

#include "settings/settings.h"
#include "widgets/form.h"

namespace qb {

// The interval that an entry of comboAK_Timer stands for, in minutes; 15 for an index outside the list.
std::int16_t MinutesOfInterval(std::int16_t index);

class AutoKillPage {
 public:
  // `form` gets the page's controls; `timer` is the interval timer.
  AutoKillPage(Form& form, Settings& settings, Timer& timer);

  Layout Arrangement();
  // Sets the controls from the settings in memory. Their handlers run, but ask and store nothing.
  void LoadFromSettings();

  std::int16_t AutoKillMinutes = 0;  // until the next interval run

 private:
  void chkAK_LastWinClosed_Click();
  void chkAK_UseTimer_Click();
  void comboAK_Timer_Click();
  void chkAK_WinStart_Click();
  void chk_DoNotAutoKill_MouseDown();
  void chk_HideIcon_Click();
  void StealthChosen(std::int16_t stealth);
  // Sets in memory, and stores unless the page is being loaded.
  void Keep(Setting setting, std::int16_t number);
  bool Confirmed(std::string_view question);

  Form& form_;
  Settings& settings_;
  Timer& timer_;
  bool loading_ = false;

  Label heading_, what_, show_note_;
  Frame when_frame_, show_frame_;
  CheckBox last_window_closed_, use_timer_, windows_start_, do_not_auto_kill_, hide_icon_;
  ComboBox interval_;
  OptionButton stealth_on_, stealth_off_;
};

}  // namespace qb
