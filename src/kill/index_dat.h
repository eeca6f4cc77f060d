// The index.dat files are in use as long as Windows runs: these routines arrange for them to go at its
// next start, by a call or by WININIT.INI, and take the latter arrangement back.
#pragma once

#include <string>
#include <vector>

#include "delete/delete_path.h"
#include "environment/product_folders.h"
#include "kill/run_window.h"

namespace qb {

class IndexDat {
 public:
  // `folders_moved` tells whether the Cache or the Cookies folder lies elsewhere than below the Windows folder.
  IndexDat(Platform& platform, Channels& channels, const WindowsFolders& folders, const ProductFolders& products,
           const bool& folders_moved, TraceCounter& history_removed, const RunWindow& window)
      : platform_(platform),
        channels_(channels),
        folders_(folders),
        products_(products),
        folders_moved_(folders_moved),
        history_removed_(history_removed),
        window_(window) {}

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

 private:
  struct Moved {
    std::string cookies, cache;  // 8.3 forms in capitals, with a closing backslash
  };
  Moved MovedFolders() const;
  std::vector<std::string> ReadLines(const std::string& path) const;
  bool LacksClosingLineEnd(const std::string& path) const;

  Platform& platform_;
  Channels& channels_;
  const WindowsFolders& folders_;
  const ProductFolders& products_;
  const bool& folders_moved_;
  TraceCounter& history_removed_;
  const RunWindow& window_;
  bool scheduled_ = false;
};

}  // namespace qb
