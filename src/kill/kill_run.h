// The two kinds of kill run: the one of the button, which takes the check boxes, and the unattended
// one, which takes the stored selection.
#pragma once

#include <array>
#include <vector>

#include "environment/browser_profiles.h"
#include "kill/class_table.h"
#include "kill/log_step.h"
#include "kill/run_state.h"
#include "kill/run_window.h"
#include "kill/trace_units.h"
#include "runtime/lifetime.h"
#include "runtime/trace_counter.h"

namespace qb {

class KillRun {
 public:
  KillRun(Platform& platform, Settings& settings, const BrowserProfiles& profiles, RunState& state,
          const Lifetime& life, RunWindow& window, RunLog& log, TraceUnits& units, TraceCounter& history_removed);

  void cmdKILLALL_Click();
  // Mode 0 is the run at boot, 2 the one asked for by the user (the window then stays as it is), 3 the
  // one after a browser was closed.
  void Do_Start_Up(std::int16_t mode);

  // The sequencers of the manual run.
  void Kill_Firefox_Traces() { Sequence(TraceGroup::Firefox); }
  void Kill_Chrome_Traces() { Sequence(TraceGroup::Chrome); }
  void Kill_Safari_Traces() { Sequence(TraceGroup::Safari); }
  void Kill_AOL_Traces() { Sequence(TraceGroup::AOL); }
  void Kill_IE_Traces() { Sequence(TraceGroup::InternetExplorer); }
  void Kill_Windows_Traces() { Sequence(TraceGroup::Windows); }

  // The stored selection as the last unattended run read it, by the key's class; 0 before the first.
  std::int16_t Selected(const TraceClass& row) const;

 private:
  void Sequence(TraceGroup group);
  // False if the group cannot be worked on and stops the run.
  bool MayGoOn(TraceGroup group);
  void WalkAll(const TraceGroupRow& row);
  void WalkBoxes(std::span<const TraceClass> classes, const std::vector<bool>& ticked);
  void EndManualRun(double starting_value);
  void ReadSelection();
  bool AnythingSelected() const;
  bool GroupIsHere(TraceGroup group) const;
  void WalkUnattended(const TraceGroupRow& row);
  void RunWork(const TraceClass* row);

  Platform& platform_;
  Settings& settings_;
  const BrowserProfiles& profiles_;
  RunState& state_;
  const Lifetime& life_;
  RunWindow& window_;
  RunLog& log_;
  TraceUnits& units_;
  TraceCounter& history_removed_;
  std::vector<std::int16_t> selection_;  // by the class's place in the table
};

}  // namespace qb
