// What the windows ask of the life of the program.
#pragma once

#include <cstdint>

#include "autokill/auto_kill_host.h"
#include "widgets/form.h"

namespace qb {

class ProgramLife : public AutoKillPageHost {
 public:
  // The main window is loaded: the start sequence is to run.
  virtual void MainWindowLoaded() = 0;
  // A close request reached the main window. `cancel` becomes true if it is only hidden.
  virtual void MainWindowCloseRequest(bool& cancel, UnloadMode mode) = 0;
  virtual void MainWindowUnload(bool& cancel) = 0;

  virtual void KillNow() = 0;
  // The Cookie Manager with both lists built afresh.
  virtual void ShowCookieManager() = 0;
  // Takes lines of one kind back out of what is arranged for the next start of Windows.
  virtual void TakeBackIndexDat(std::int16_t kind) = 0;
  virtual void ShowGeneralSetup() = 0;
  // Hides the windows that the Boss Key hides, or brings them back.
  virtual void InvokeBossKey() = 0;
  // The Auto-Kill wizard, shown without waiting for it.
  virtual void ShowWizard() = 0;
  virtual void ShowThumbnailScan() = 0;
  virtual void ShowAbout() = 0;
  virtual void OpenSupportSite() = 0;
  virtual void ShowMainWindow() = 0;
  // Asks, and ends the program on Yes.
  virtual void ShutDown() = 0;
};

}  // namespace qb
