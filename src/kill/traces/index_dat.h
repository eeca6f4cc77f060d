// The index.dat files are in use as long as Windows runs: these routines arrange for them to go at its
// next start, by a call or by WININIT.INI, and take the latter arrangement back.
#pragma once

#include <string>
#include <vector>

#include "kill/kill_needs.h"
#include "kill/run_display.h"
#include "runtime/routine.h"

namespace qb {

class IndexDat {
 public:
  IndexDat(const KillNeeds& needs, const RunDisplay& display) : needs_(needs), display_(display) {}

  // What the run of a ticked index.dat box does: Clear_Auto_Exec2(kind), unless the other one is ticked too.
  void TakeBackUnlessTicked(std::string_view other_box, std::int16_t kind);
  // By the Windows version: the file way for the Windows 95 family, the call way for all others.
  void Schedule();
  // Asks the system to rename each file away at its next start. Once in a program run; the argument is ignored.
  void Schedule_Index_Dat_NT(std::int16_t flag);
  // Adds the lines that are missing to WININIT.INI.
  void Schedule_Index_Dat_WinInit();
  // Takes lines out of WININIT.INI: those for cookies (0) or those for the cache (1).
  void Clear_Auto_Exec2(std::int16_t kind);

  bool IndexDatScheduled() const { return scheduled_; }

  static std::span<const NamedRoutine<IndexDat>> Routines();

 private:
  std::vector<std::string> ReadLines(const std::string& path) const;
  bool LacksClosingLineEnd(const std::string& path) const;

  const KillNeeds needs_;
  const RunDisplay& display_;
  bool scheduled_ = false;
};

}  // namespace qb
