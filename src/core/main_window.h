// The main window: ten tabs, the Kill Now! button and the timers that drive the program. What its controls set off
// beyond it, the program gives them.
#pragma once

#include <string>
#include <vector>

#include "autokill/auto_kill_page.h"
#include "bosskey/boss_key_page.h"
#include "core/log_page.h"
#include "core/menus.h"
#include "core/program_life.h"
#include "core/services.h"
#include "core/shredder_page.h"
#include "core/trace_boxes.h"
#include "kill/run_display.h"

namespace qb {

class frmMain : public Form, private RunDisplay {
 public:
  frmMain(const FormHost& host, Services& services, ProgramLife& life);

  // Sets every control that shows a setting.
  void LoadFromSettings();
  void EnableHomePageTimer(bool enabled) { Timer_HomePage.SetTimerEnabled(enabled); }
  void EnableWatcherTimer(bool enabled) { Timer1.SetTimerEnabled(enabled); }
  void Timer2_Timer() { log_page_.ShowTotal(); }
  void ClearDoNotAutoKill() { auto_kill_page_.ClearDoNotAutoKill(); }

  void Center() override { Form::Center(); }
  void Refresh() override { Form::Refresh(); }

  // What a run is shown on.
  RunDisplay& display() { return *this; }
  MainMenus& menus() { return menus_; }
  AutoKillInterval& interval() { return interval_; }
  AutoKillPage& auto_kill_page() { return auto_kill_page_; }
  Timer& HomePageTimer() { return Timer_HomePage; }

 protected:
  void Form_Load() override { life_.MainWindowLoaded(); }
  void Form_QueryUnload(bool& cancel, UnloadMode mode) override { life_.MainWindowCloseRequest(cancel, mode); }
  void Form_Unload(bool& cancel) override { life_.MainWindowUnload(cancel); }

 private:
  // RunDisplay
  bool Ticked(std::string_view box) const override { return boxes_.Ticked(box); }
  void EnableKill(bool enabled) override { cmdKILLALL.SetEnabled(enabled); }
  void ShowJustKilled(const std::string& text) override { log_page_.ShowJustKilled(text); }
  void AddLine(const std::string& line) override { log_page_.AddLine(line); }
  void SelectLastLine() override { log_page_.SelectLastLine(); }
  void ShowLog() override;
  void ShowBoxes() override;
  void ShowCacheUrls(const std::vector<std::string>& urls) override;
  int Max() const override { return log_page_.Bar().Max(); }
  void SetMax(int max) override { StepOver(log_page_.Bar().SetMax(max)); }
  void SetValue(int value) override { StepOver(log_page_.Bar().SetValue(value)); }
  WindowHandle Owner() const override { return Window(); }

  void lblmoreinfo_Click();

  ProgramLife& life_;

  TabStrip SftTabs1;
  Button cmdKILLALL, cmdThumbs;
  LinkLabel lblURL;
  LogPage log_page_;
  Button cmdSetCookies;
  LinkLabel lblmoreinfo;
  ListBox List3;  // the URLs of the cache; never shown
  Timer Timer1, Timer2, Timer_HomePage;
  AutoKillInterval interval_;
  Timer Timer_DisableScriptDebug;
  TraceBoxes boxes_;
  AutoKillPage auto_kill_page_;
  BossKeyPage boss_key_page_;
  ShredderPage shredder_page_;
  MainMenus menus_;
};

}  // namespace qb
