// What the controls of the main window set off beyond it: a row for each.
#include "core/program.h"
#include "core/sites.h"

namespace qb {

namespace {

struct WiringRow {
  std::string_view control;
  void (*act)(Program& program);
};

constexpr WiringRow kClicks[] = {
    {"cmdKILLALL", [](Program& p) { p.kill_run().cmdKILLALL_Click(); }},
    {"cmdThumbs", [](Program& p) { p.ShowThumbnailScan(); }},
    {"cmdSetCookies", [](Program& p) { p.ShowCookieManager(); }},
    {"lblURL", [](Program& p) { p.OpenSite(kHomeSite); }},
    {"cmdAutoKillDetails", [](Program& p) { p.wizard().ShowModal(); }},
    {"lblTestAutoKill", [](Program& p) { p.resident().auto_kill.runAutoKillnow_Click(); }},
    {"lblTestBossKey", [](Program& p) { p.resident().boss_key.hider.InvokeBossKey(); }},
    // Clearing one of these two acts at once, without a run.
    {"chkWin_CacheIndexDat",
     [](Program& p) {
       if (!p.main_window().display().Ticked("chkWin_CacheIndexDat")) p.trace_units().index_dat.Clear_Auto_Exec2(1);
     }},
    {"chkWin_CookiesIndexDat",
     [](Program& p) {
       if (!p.main_window().display().Ticked("chkWin_CookiesIndexDat")) p.trace_units().index_dat.Clear_Auto_Exec2(0);
     }},

    {"mnuThumbsdb", [](Program& p) { p.ShowThumbnailScan(); }},
    {"Options", [](Program& p) { p.ShowGeneralSetup(); }},
    {"autoKill", [](Program& p) { p.ShowWizard(); }},
    {"mnuCookieSetup", [](Program& p) { p.ShowCookieManager(); }},
    {"mnuShutDown", [](Program& p) { p.ShutDown(); }},
    {"runAutoKillnow", [](Program& p) { p.resident().auto_kill.runAutoKillnow_Click(); }},
    {"autoKillsetup", [](Program& p) { p.wizard().ShowModal(); }},
    {"TechSupport", [](Program& p) { p.OpenSite(kSupportSite); }},
    {"About2", [](Program& p) { p.about().Show(); }},

    {"PopUp_RunAutoKill", [](Program& p) { p.resident().auto_kill.runAutoKillnow_Click(); }},
    {"mnuThumbsPopup", [](Program& p) { p.ShowThumbnailScan(); }},
    {"popHideIE", [](Program& p) { p.resident().boss_key.hider.InvokeBossKey(); }},
    {"mnuAutoKillSetup", [](Program& p) { p.ShowWizard(); }},
    {"PopUp_Maximize", [](Program& p) { p.ShowMainWindow(); }},
    {"popShutdownHK", [](Program& p) { p.ShutDown(); }},
};

constexpr WiringRow kTicks[] = {
    {"Timer1", [](Program& p) { p.resident().auto_kill.Timer1_Timer(); }},
    {"Timer2", [](Program& p) { p.main_window().Timer2_Timer(); }},
    {"Timer_AutoKill", [](Program& p) { p.resident().auto_kill.Timer_AutoKill_Timer(); }},
    {"Timer_HomePage", [](Program& p) { p.resident().guards.Timer_HomePage_Timer(); }},
    {"Timer_DisableScriptDebug", [](Program& p) { p.resident().guards.Timer_DisableScriptDebug_Timer(); }},
};

}  // namespace

void Program::Wire() {
  for (const WiringRow& row : kClicks) main_window_.Find(row.control)->Click = [this, act = row.act] { act(*this); };
  for (const WiringRow& row : kTicks) {
    static_cast<Timer*>(main_window_.Find(row.control))->Tick = [this, act = row.act] { act(*this); };
  }
  main_window_.auto_kill_page().IconHidden = [this](bool hidden) {
    hidden ? resident_.tray.Remove_Tray_Icon() : resident_.tray.Add_Tray_Icon();
  };
}

}  // namespace qb
