// The two kinds of kill run: the one of the button, which takes the check boxes, and the unattended
// one, which takes the stored selection.
#pragma once

#include <vector>

#include "kill/class_table.h"
#include "kill/kill_needs.h"
#include "kill/log_step.h"
#include "kill/run_host.h"
#include "kill/selection.h"
#include "kill/traces/trace_units.h"

namespace qb {

class KillRun {
 public:
  KillRun(const KillNeeds& needs, RunDisplay& display, RunHost& host, RunLog& log, Selection& selection,
          TraceUnits& units)
      : needs_(needs),
        state_(needs.state),
        display_(display),
        host_(host),
        log_(log),
        selection_(selection),
        units_(units) {}

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

 private:
  void Sequence(TraceGroup group);
  // False if the group cannot be worked on and stops the run.
  bool MayGoOn(TraceGroup group);
  void WalkAll(const TraceGroupRow& row);
  void WalkBoxes(std::span<const TraceClass> classes, const std::vector<bool>& ticked);
  void EndManualRun(double starting_value);
  void WalkUnattended(const TraceGroupRow& row);
  void RunWork(const TraceClass* row);

  const KillNeeds needs_;
  RunState& state_;
  RunDisplay& display_;
  RunHost& host_;
  RunLog& log_;
  Selection& selection_;
  TraceUnits& units_;
};

}  // namespace qb
