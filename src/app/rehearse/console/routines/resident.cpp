// Auto-Kill, the Boss Key, the guards and the tray.
#include "app/rehearse/console/routines.h"

namespace qb::rehearse {

namespace routines {

std::span<const ProgramRoutine> Resident() {
  static const std::vector<ProgramRoutine> table = {
      {"runAutoKill_AutoRun", Bind([](Program& p) { p.resident().auto_kill.runAutoKill_AutoRun(); })},
      {"runAutoKillnow_Click", Bind([](Program& p) { p.resident().auto_kill.runAutoKillnow_Click(); })},
      {"runAutoKill_Click", Bind([](Program& p) { p.resident().auto_kill.runAutoKill_Click(); })},
      {"InvokeBossKey", Bind([](Program& p) { p.resident().boss_key.hider.InvokeBossKey(); })},
      {"Hide_Boss_Windows", Bind([](Program& p) { p.resident().boss_key.hider.Hide_Boss_Windows(); })},
      {"Show_Boss_Windows", Bind([](Program& p) { p.resident().boss_key.hider.Show_Boss_Windows(); })},
      {"HomePage", Bind([](Program& p) { return p.resident().guards.HomePage(); })},
      {"Add_Tray_Icon", Bind([](Program& p) { p.resident().tray.Add_Tray_Icon(); })},
      {"Remove_Tray_Icon", Bind([](Program& p) { p.resident().tray.Remove_Tray_Icon(); })},
      {"SysTrayMouseEventHandler", Bind([](Program& p) { p.resident().tray.SysTrayMouseEventHandler(); })},
  };
  return table;
}

}  // namespace routines

}  // namespace qb::rehearse
