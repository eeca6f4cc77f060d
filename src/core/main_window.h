// The main window: ten tabs, the Kill Now! button, the log, and the five timers that drive the program.
#pragma once

#include <map>
#include <string>

#include "autokill/auto_kill_page.h"
#include "bosskey/boss_key_page.h"
#include "core/program_life.h"
#include "core/services.h"
#include "core/shredder_page.h"
#include "kill/class_table.h"
#include "kill/run_window.h"
#include "widgets/form.h"

namespace qb {

class frmMain : public Form, public RunWindow {
 public:
  frmMain(const FormHost& host, Services& services, ProgramLife& life);

  // Sets every control that shows a setting.
  void LoadFromSettings();
  Timer& HomePageTimer() { return Timer_HomePage; }
  void EnableHomePageTimer(bool enabled) { Timer_HomePage.SetTimerEnabled(enabled); }

  void cmdClearLog_Click();
  void Timer2_Timer();
  void Exit_Click();
  ListBox& CacheList() { return List3; }
  std::int16_t AutoKillMinutes() const { return auto_kill_interval_.Minutes(); }

  // RunWindow
  bool BoxTicked(std::string_view box) const override;
  void EnableKillButton(bool enabled) override { cmdKILLALL.SetEnabled(enabled); }
  void SetJustKilled(const std::string& text) override { lblJustKilled.SetCaption(text); }
  ListBox& LogList() override { return lstStatus; }
  ProgressBar& Bar() override { return pBar; }
  void SelectTab(int tab) override { StepOver(SftTabs1.SetTab(tab)); }
  Form& MainForm() override { return *this; }
  void Pause_Seconds(double seconds) override { life_.Pause_Seconds(seconds); }
  void ShowGeneralSetup() override { life_.ShowGeneralSetup(); }
  void AskForSelection() override { life_.AskForSelection(); }

 protected:
  void Form_Load() override { life_.MainWindowLoaded(); }
  void Form_QueryUnload(bool& cancel, UnloadMode mode) override;
  void Form_Unload(bool& cancel) override { life_.MainWindowUnload(cancel); }

 private:
  void MakeTraceBoxes();
  void MakeMenu();
  Layout TracePage(TraceGroup group);
  Layout LogPage();
  void AllBoxClicked(const TraceGroupRow& row);
  void ArmIndexDatBoxes();
  void lblmoreinfo_Click();

  Services& services_;
  ProgramLife& life_;
  std::map<std::string, CheckBox*, std::less<>> boxes_;  // by name

  TabStrip SftTabs1;
  Button cmdKILLALL;
  LinkLabel lblURL;
  ListBox lstStatus;
  ProgressBar pBar;
  Label lblJustKilled, lblQuillbarrowed;
  Button cmdClearLog;
  Button cmdSetCookies;
  LinkLabel lblmoreinfo;
  ListBox List3;  // the URLs of the cache; never shown
  Timer Timer1, Timer2, Timer_HomePage;
  AutoKillInterval auto_kill_interval_;
  Timer Timer_DisableScriptDebug;
  AutoKillPage auto_kill_page_;
  BossKeyPage boss_key_page_;
  ShredderPage shredder_page_;
};

}  // namespace qb
