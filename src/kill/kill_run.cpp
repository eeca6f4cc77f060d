#include "kill/kill_run.h"

#include <algorithm>

#include "runtime/folders.h"
#include "runtime/text.h"

namespace qb {

namespace {

constexpr std::int16_t kModeRunNow = 2;

}  // namespace

void KillRun::cmdKILLALL_Click() {
  state_.ClassesDone = 0;
  const double starting_value = needs_.history_removed.Value();
  display_.EnableKill(false);
  state_.ManualRun = true;
  log_.Log_Step(kLogSearching);
  display_.ShowLog();

  for (int group = 0; group < kTraceGroups && !needs_.life.Over(); ++group) {
    Sequence(static_cast<TraceGroup>(group));
    const bool tested = static_cast<TraceGroup>(group) <= TraceGroup::AOL;
    if (tested && state_.RunStopped) {
      display_.EnableKill(true);
      return;
    }
  }
  if (needs_.life.Over()) return;
  EndManualRun(starting_value);
}

void KillRun::EndManualRun(double starting_value) {
  display_.EnableKill(true);
  if (state_.ClassesDone != 0) {
    log_.Log_Step(kLogProtected);
    state_.ClassesDone = 0;
  } else {
    display_.ShowBoxes();
    StepOver(needs_.platform.desktop.MessageBoxA(
        display_.Owner(),
        "You must first select which traces to kill!\r\n\r\nPut checkmarks next to the traces you wish to securely "
        "delete then press this button again.",
        "Quillbarrow - Please select what to Kill...", kBoxOk | kBoxInformation));
    if (needs_.life.Over()) return;
    log_.AddLine(" - ERROR: You must select which history traces you wish to kill!");
  }
  state_.ManualRun = false;
  display_.ShowJustKilled("History Traces Killed: " + NumberText(needs_.history_removed.Value() - starting_value));
}

void KillRun::Sequence(TraceGroup group) {
  const TraceGroupRow& row = RowOf(group);
  const std::span<const TraceClass> classes = ClassesOf(group);
  const bool all = display_.Ticked(row.all_box);
  std::vector<bool> ticked(classes.size());
  std::transform(classes.begin(), classes.end(), ticked.begin(),
                 [this](const TraceClass& trace) { return display_.Ticked(trace.box); });
  if (!all && std::find(ticked.begin(), ticked.end(), true) == ticked.end()) return;
  if (!MayGoOn(group)) return;
  if (all)
    WalkAll(row);
  else
    WalkBoxes(classes, ticked);
}

bool KillRun::MayGoOn(TraceGroup group) {
  // The profile's path is kept there as well, until the settings are read again.
  if (group == TraceGroup::Firefox && !LongEnoughPath(needs_.settings.Text(Setting::NetscapeDir))) {
    state_.RunStopped = true;
    return false;
  }
  if (group == TraceGroup::AOL && !LongEnoughPath(needs_.settings.Text(Setting::AOLdir))) {
    state_.RunStopped = true;
    state_.AOLSetupPending = true;
    StepOver(needs_.platform.desktop.MessageBoxA(
        display_.Owner(), "You must set up your AOL folder.  You can do this in the next screen.",
        "AOL Folder NOT setup", kBoxOk | kBoxInformation));
    if (needs_.life.Over()) return false;
    host_.AskForAolFolder();
    return false;
  }
  return true;
}

void KillRun::RunWork(const TraceClass* row) {
  if (row != nullptr && row->work != nullptr && !needs_.life.Over()) row->work(units_);
}

void KillRun::WalkAll(const TraceGroupRow& row) {
  for (const WalkStep& step : row.all_walk) {
    if (needs_.life.Over()) return;
    log_.Log_Step(static_cast<std::int16_t>(step.code));
    RunWork(step.trace);
  }
  state_.ClassesDone = static_cast<std::int16_t>(state_.ClassesDone + row.all_adds);
}

void KillRun::WalkBoxes(std::span<const TraceClass> classes, const std::vector<bool>& ticked) {
  for (std::size_t i = 0; i < classes.size() && !needs_.life.Over(); ++i) {
    if (!ticked[i]) continue;
    const TraceClass& row = classes[i];
    if (row.work_first) RunWork(&row);
    if (needs_.life.Over()) return;
    log_.Log_Step(static_cast<std::int16_t>(row.code));
    if (!row.work_first) RunWork(&row);
    if (row.counts) ++state_.ClassesDone;
  }
}

void KillRun::WalkUnattended(const TraceGroupRow& row) {
  for (const WalkStep& step : row.unattended_walk) {
    if (needs_.life.Over()) return;
    if (step.trace == nullptr || selection_.Of(*step.trace) != 1) continue;
    if (step.code != 0) log_.Log_Step(static_cast<std::int16_t>(step.code));
    RunWork(step.trace);
  }
}

void KillRun::Do_Start_Up(std::int16_t mode) {
  if (needs_.settings.Number(Setting::Stealth) == 0) {
    display_.ShowLog();
    host_.ShowForRun();
  }
  state_.MainWindowHidden = false;
  log_.Log_Step(kLogSearching);
  if (needs_.life.Over()) return;
  selection_.Load();
  if (needs_.settings.Number(Setting::Disable_AK) == 1) return;
  if (!selection_.Anything()) {
    state_.StartedAtBoot = true;
    host_.AskForSelection();
    return;
  }
  display_.EnableKill(false);
  state_.UnattendedRun = true;
  for (TraceGroup group : UnattendedOrder()) {
    const TraceGroupRow& row = RowOf(group);
    if (row.is_here == nullptr || row.is_here(needs_)) WalkUnattended(row);
  }
  if (needs_.life.Over()) return;
  log_.Log_Step(kLogProtected);
  if (mode != kModeRunNow) {
    host_.Pause_Seconds(2);
    if (needs_.life.Over()) return;
    host_.HideAfterRun();
    state_.StartedAtBoot = false;
    state_.MainWindowHidden = true;
  }
  display_.EnableKill(true);
  state_.UnattendedRun = false;
}

}  // namespace qb
