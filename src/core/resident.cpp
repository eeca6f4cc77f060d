#include "core/resident.h"

namespace qb {

Resident::Resident(Services& services, frmMain& main_window, KillRun& kill_run, ResidentHost& host)
    : auto_kill(services.platform.desktop, services.settings, main_window.interval(), services.life, *this),
      boss_key(services.platform, services.settings, *this,
               [&main_window](bool active) { main_window.menus().MarkBossKey(active); }),
      guards(services.reg_settings, services.store, main_window.HomePageTimer()),
      tray(main_window, main_window.menus().Popup(), services.settings, services.run,
           [&host] { host.ShowMainWindow(); }),
      main_window_(main_window),
      kill_run_(kill_run),
      host_(host) {}

void Resident::Leave() {
  if (boss_key.hider.Active()) boss_key.hider.UnmarkAndShow();
  boss_key.hot_keys.Unregister(main_window_.Window());
  tray.Remove_Tray_Icon();
}

}  // namespace qb
