// The state of the kill runs. The run driver owns and changes it.
#pragma once

#include <cstdint>

namespace qb {

struct RunState {
  std::int16_t ClassesDone = 0;   // classes handled by this manual run
  bool ManualRun = false;         // lets the log write even in Stealth mode
  bool UnattendedRun = false;     // sets the length of the bar
  bool RunStopped = false;        // a latch: a sequencer could not go on
  bool AOLSetupPending = false;   // General Setup was opened because the AOL folder is missing
  bool MainWindowHidden = false;  // a close request that finds this true is a real end
  bool StartedAtBoot = false;
};

// What the thumbnail audit found and removed last, for its two log lines. The audit changes them.
struct ThumbTotals {
  std::int32_t Thumbnails_Found = 0;  // pictures
  std::int32_t Thumbs_Located = 0;    // files
  std::int32_t Thumbs_Deleted = 0;    // files
};

}  // namespace qb
