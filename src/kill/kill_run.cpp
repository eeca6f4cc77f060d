#include "kill/kill_run.h"

#include <algorithm>
#include <numeric>

#include "runtime/text.h"

namespace qb {

namespace {

constexpr int kFirstTab = 0;
constexpr int kLogTab = 9;
// A path of fewer characters is none.
constexpr std::size_t kShortestPath = 4;
constexpr std::int16_t kModeRunNow = 2;

// These are read strictly in the unattended run: a bad text leaves the value of the run before.
constexpr std::string_view kStrictlyRead[] = {"REGWindowsTemp", "REGFileFrag", "MSOfficeRecent"};

bool ReadStrictly(std::string_view key) {
  return std::find(std::begin(kStrictlyRead), std::end(kStrictlyRead), key) != std::end(kStrictlyRead);
}

std::size_t PlaceOf(const TraceClass& row) {
  return static_cast<std::size_t>(&row - TraceClasses().data());
}

}  // namespace

KillRun::KillRun(Platform& platform, Settings& settings, const BrowserProfiles& profiles, RunState& state,
                 const Lifetime& life, RunWindow& window, RunLog& log, TraceUnits& units, TraceCounter& history_removed)
    : platform_(platform),
      settings_(settings),
      profiles_(profiles),
      state_(state),
      life_(life),
      window_(window),
      log_(log),
      units_(units),
      history_removed_(history_removed),
      selection_(TraceClasses().size(), 0) {}

std::int16_t KillRun::Selected(const TraceClass& row) const {
  return selection_[PlaceOf(row)];
}

void KillRun::cmdKILLALL_Click() {
  state_.ClassesDone = 0;
  const double starting_value = history_removed_.Value();
  window_.EnableKillButton(false);
  state_.ManualRun = true;
  log_.Log_Step(kLogSearching);
  window_.SelectTab(kLogTab);

  for (int group = 0; group < kTraceGroups && !life_.Over(); ++group) {
    Sequence(static_cast<TraceGroup>(group));
    const bool tested = static_cast<TraceGroup>(group) <= TraceGroup::AOL;
    if (tested && state_.RunStopped) {
      window_.EnableKillButton(true);
      return;
    }
  }
  if (life_.Over()) return;
  EndManualRun(starting_value);
}

void KillRun::EndManualRun(double starting_value) {
  window_.EnableKillButton(true);
  if (state_.ClassesDone != 0) {
    log_.Log_Step(kLogProtected);
    state_.ClassesDone = 0;
  } else {
    window_.SelectTab(kFirstTab);
    StepOver(platform_.desktop.MessageBoxA(
        window_.MainForm().Window(),
        "You must first select which traces to kill!\r\n\r\nPut checkmarks next to the traces you wish to securely "
        "delete then press this button again.",
        "Quillbarrow - Please select what to Kill...", kBoxOk | kBoxInformation));
    if (life_.Over()) return;
    log_.AddLine(" - ERROR: You must select which history traces you wish to kill!");
  }
  state_.ManualRun = false;
  window_.SetJustKilled("History Traces Killed: " + NumberText(history_removed_.Value() - starting_value));
}

void KillRun::Sequence(TraceGroup group) {
  const TraceGroupRow& row = RowOf(group);
  const std::span<const TraceClass> classes = ClassesOf(group);
  const bool all = window_.BoxTicked(row.all_box);
  std::vector<bool> ticked(classes.size());
  std::transform(classes.begin(), classes.end(), ticked.begin(),
                 [this](const TraceClass& trace) { return window_.BoxTicked(trace.box); });
  if (!all && std::find(ticked.begin(), ticked.end(), true) == ticked.end()) return;
  if (!MayGoOn(group)) return;
  if (all)
    WalkAll(row);
  else
    WalkBoxes(classes, ticked);
}

bool KillRun::MayGoOn(TraceGroup group) {
  if (group == TraceGroup::Firefox && profiles_.FirefoxProfilePath().size() < kShortestPath) {
    state_.RunStopped = true;
    return false;
  }
  if (group == TraceGroup::AOL && settings_.Text(Setting::AOLdir).size() < kShortestPath) {
    state_.RunStopped = true;
    state_.AOLSetupPending = true;
    StepOver(platform_.desktop.MessageBoxA(window_.MainForm().Window(),
                                           "You must set up your AOL folder.  You can do this in the next screen.",
                                           "AOL Folder NOT setup", kBoxOk | kBoxInformation));
    if (life_.Over()) return false;
    window_.ShowGeneralSetup();
    return false;
  }
  return true;
}

void KillRun::RunWork(const TraceClass* row) {
  if (row != nullptr && row->work != nullptr && !life_.Over()) row->work(units_);
}

void KillRun::WalkAll(const TraceGroupRow& row) {
  for (const WalkStep& step : row.all_walk) {
    if (life_.Over()) return;
    log_.Log_Step(static_cast<std::int16_t>(step.code));
    RunWork(FindClass(step.key));
  }
  state_.ClassesDone = static_cast<std::int16_t>(state_.ClassesDone + row.all_adds);
}

void KillRun::WalkBoxes(std::span<const TraceClass> classes, const std::vector<bool>& ticked) {
  for (std::size_t i = 0; i < classes.size() && !life_.Over(); ++i) {
    if (!ticked[i]) continue;
    const TraceClass& row = classes[i];
    if (row.work_first) RunWork(&row);
    if (life_.Over()) return;
    log_.Log_Step(static_cast<std::int16_t>(row.code));
    if (!row.work_first) RunWork(&row);
    if (row.counts) ++state_.ClassesDone;
  }
}

void KillRun::ReadSelection() {
  for (const TraceClass& row : TraceClasses()) {
    if (row.key.empty()) continue;
    const std::string text = settings_.store().Get(row.key, "0");
    std::int16_t& selected = selection_[PlaceOf(row)];
    selected = ReadStrictly(row.key) ? StrictNumber(text).value_or(selected) : TolerantNumber(text);
  }
}

bool KillRun::AnythingSelected() const {
  return std::accumulate(selection_.begin(), selection_.end(), std::int32_t{0}) != 0;
}

bool KillRun::GroupIsHere(TraceGroup group) const {
  switch (group) {
    case TraceGroup::Firefox:
      return profiles_.FirefoxProfilePath().size() >= kShortestPath && settings_.Number(Setting::NoNS) == 0;
    case TraceGroup::Chrome:
      return profiles_.Check_Chrome_Installed();
    case TraceGroup::Safari:
      return profiles_.Check_Safari_Installed();
    default:
      return true;
  }
}

void KillRun::WalkUnattended(const TraceGroupRow& row) {
  for (const WalkStep& step : row.unattended_walk) {
    if (life_.Over()) return;
    const TraceClass* trace = FindClass(step.key);
    if (trace == nullptr || Selected(*trace) != 1) continue;
    if (step.code != 0) log_.Log_Step(static_cast<std::int16_t>(step.code));
    RunWork(trace);
  }
}

void KillRun::Do_Start_Up(std::int16_t mode) {
  Form& window = window_.MainForm();
  if (settings_.Number(Setting::Stealth) == 0) {
    window_.SelectTab(kLogTab);
    window.Show();
    window.SetState(WindowState::Normal);
  }
  state_.MainWindowHidden = false;
  log_.Log_Step(kLogSearching);
  if (life_.Over()) return;
  ReadSelection();
  if (settings_.Number(Setting::Disable_AK) == 1) return;
  if (!AnythingSelected()) {
    state_.StartedAtBoot = true;
    window_.AskForSelection();
    return;
  }
  window_.EnableKillButton(false);
  state_.UnattendedRun = true;
  for (TraceGroup group : UnattendedOrder()) {
    if (GroupIsHere(group)) WalkUnattended(RowOf(group));
  }
  if (life_.Over()) return;
  log_.Log_Step(kLogProtected);
  if (mode != kModeRunNow) {
    window_.Pause_Seconds(2);
    if (life_.Over()) return;
    window.Hide();
    window.SetState(WindowState::Minimised);
    state_.StartedAtBoot = false;
    state_.MainWindowHidden = true;
  }
  window_.EnableKillButton(true);
  state_.UnattendedRun = false;
}

}  // namespace qb
