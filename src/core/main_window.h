// The main window: ten tabs, the Kill Now! button, the log, and the five timers that drive the program.
#pragma once

#include <map>
#include <string>

#include "autokill/auto_kill_page.h"
#include "bosskey/boss_key_page.h"
#include "core/menus.h"
#include "core/program_life.h"
#include "core/services.h"
#include "core/shredder_page.h"
#include "kill/class_table.h"
#include "kill/run_display.h"
#include "widgets/form.h"

namespace qb {

class frmMain : public Form, public RunDisplay {
 public:
  frmMain(const FormHost& host, Services& services, ProgramLife& life);

  // Sets every control that shows a setting.
  void LoadFromSettings();
  void EnableHomePageTimer(bool enabled) { Timer_HomePage.SetTimerEnabled(enabled); }
  void EnableWatcherTimer(bool enabled) { Timer1.SetTimerEnabled(enabled); }

  void cmdClearLog_Click();
  void Timer2_Timer();
  void ClearDoNotAutoKill() { auto_kill_page_.ClearDoNotAutoKill(); }
  MainMenus& menus() { return menus_; }

  // RunDisplay
  bool Ticked(std::string_view box) const override;
  void EnableKill(bool enabled) override { cmdKILLALL.SetEnabled(enabled); }
  void ShowJustKilled(const std::string& text) override { lblJustKilled.SetCaption(text); }
  void AddLine(const std::string& line) override { lstStatus.AddItem(line); }
  void SelectLastLine() override { StepOver(lstStatus.SetListIndex(lstStatus.ListCount() - 1)); }
  void ShowLog() override;
  void ShowBoxes() override;
  void Center() override { Form::Center(); }
  void ShowCacheUrls(const std::vector<std::string>& urls) override;
  int Max() const override { return pBar.Max(); }
  void SetMax(int max) override { StepOver(pBar.SetMax(max)); }
  void SetValue(int value) override { StepOver(pBar.SetValue(value)); }
  void Refresh() override { Form::Refresh(); }
  WindowHandle Owner() const override { return Window(); }

 protected:
  void Form_Load() override { life_.MainWindowLoaded(); }
  void Form_QueryUnload(bool& cancel, UnloadMode mode) override;
  void Form_Unload(bool& cancel) override { life_.MainWindowUnload(cancel); }

 private:
  void SelectTab(int tab) { StepOver(SftTabs1.SetTab(tab)); }
  void MakeTraceBoxes();
  Layout TracePage(TraceGroup group);
  Layout LogPage();
  void AllBoxClicked(const TraceGroupRow& row);
  void ArmIndexDatBoxes();
  void lblmoreinfo_Click();

  Services& services_;
  ProgramLife& life_;
  std::map<std::string, CheckBox*, std::less<>> boxes_;  // by name

  TabStrip SftTabs1;
  Button cmdKILLALL, cmdThumbs;
  LinkLabel lblURL;
  ListBox lstStatus;
  ProgressBar pBar;
  Label lblJustKilled, lblQuillbarrowed;
  Button cmdClearLog;
  Button cmdSetCookies;
  LinkLabel lblmoreinfo;
  ListBox List3;  // the URLs of the cache; never shown

 public:
  // Whoever makes the window gives them their ticks.
  Timer Timer1, Timer2, Timer_HomePage;
  AutoKillInterval auto_kill_interval;
  Timer Timer_DisableScriptDebug;

 private:
  AutoKillPage auto_kill_page_;
  BossKeyPage boss_key_page_;
  ShredderPage shredder_page_;
  MainMenus menus_;
};

}  // namespace qb
