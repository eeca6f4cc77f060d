#include "core/resident.h"

namespace qb {

Resident::Resident(Services& services, frmMain& main_window, KillRun& kill_run, ProgramLife& life)
    : auto_kill(services.platform.desktop, services.settings, main_window.auto_kill_interval, services.life, *this),
      boss_key(services.platform, services.settings, *this,
               [&main_window](bool active) { main_window.menus().MarkBossKey(active); }),
      guards(services.reg_settings, services.store, main_window.Timer_HomePage),
      tray(main_window, main_window.menus().Popup(), services.settings, services.run, life),
      main_window_(main_window),
      kill_run_(kill_run),
      life_(life) {
  main_window.Timer1.Click = [this] { auto_kill.Timer1_Timer(); };
  main_window.auto_kill_interval.SetTick([this] { auto_kill.Timer_AutoKill_Timer(); });
  main_window.Timer_HomePage.Click = [this] { guards.Timer_HomePage_Timer(); };
  main_window.Timer_DisableScriptDebug.Click = [this] { guards.Timer_DisableScriptDebug_Timer(); };
}

void Resident::Leave() {
  if (boss_key.hider.Active()) boss_key.hider.UnmarkAndShow();
  boss_key.hot_keys.Unregister(main_window_.Window());
  tray.Remove_Tray_Icon();
}

}  // namespace qb
