// What the main window asks of the life of the program.
#pragma once

#include "widgets/form.h"

namespace qb {

class ProgramLife {
 public:
  virtual ~ProgramLife() = default;

  // The main window is loaded: the start sequence is to run.
  virtual void MainWindowLoaded() = 0;
  // A close request reached the main window. `cancel` becomes true if it is only hidden.
  virtual void MainWindowCloseRequest(bool& cancel, UnloadMode mode) = 0;
  virtual void MainWindowUnload(bool& cancel) = 0;
};

}  // namespace qb
