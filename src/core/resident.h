// What the program does while it stands in the tray: Auto-Kill, hot keys and Boss Key, guards, the icon.
#pragma once

#include "autokill/watcher.h"
#include "bosskey/boss_key.h"
#include "core/main_window.h"
#include "core/services.h"
#include "core/tray.h"
#include "guards/guards.h"
#include "kill/kill_run.h"

namespace qb {

// What the resident part asks of the program.
class ResidentHost {
 public:
  virtual ~ResidentHost() = default;
  virtual void ShowMainWindow() = 0;
  // The wizard, shown without waiting for it.
  virtual void ShowWizard() = 0;
};

class Resident : public AutoKillHost, public HotKeyHost {
 public:
  Resident(Services& services, frmMain& main_window, KillRun& kill_run, ResidentHost& host);

  // At a real end: no window stays hidden, no chord taken, no icon in the tray.
  void Leave();

  AutoKill auto_kill;
  BossKey boss_key;
  Guards guards;
  Tray tray;

  // AutoKillHost
  void Do_Start_Up(std::int16_t mode) override { kill_run_.Do_Start_Up(mode); }
  void Add_Tray_Icon() override { tray.Add_Tray_Icon(); }
  void ClearDoNotAutoKill() override { main_window_.ClearDoNotAutoKill(); }
  void ShowWizard() override { host_.ShowWizard(); }
  // HotKeyHost
  void ShowMainWindow() override { host_.ShowMainWindow(); }
  void RunAutoKillNow() override { auto_kill.runAutoKillnow_Click(); }
  void FlipStrictMode() override { guards.FlipStrictMode(); }
  void FlipTanglegate() override { guards.FlipTanglegate(); }
  void MainWindowMessage(std::uint32_t message, std::uint64_t wparam, std::int64_t lparam) override {
    tray.MainWindowMessage(message, wparam, lparam);
  }

 private:
  frmMain& main_window_;
  KillRun& kill_run_;
  ResidentHost& host_;
};

}  // namespace qb
