// The trace classes: one row each, and the walks over them. The main window's boxes, the stored
// selection, the log lines and both kinds of run all read these rows.
#pragma once

#include <span>
#include <string_view>

namespace qb {

struct KillNeeds;
struct TraceUnits;

// In the order of the manual run.
enum class TraceGroup { Firefox, Chrome, Safari, AOL, InternetExplorer, Windows };
inline constexpr int kTraceGroups = 6;

// The codes of the lines of a run are 1 to this one.
inline constexpr int kLastLogCode = 54;

// What a class removes; null where nothing belongs to it.
using Work = void (*)(TraceUnits& units);

struct TraceClass {
  TraceGroup group;
  std::string_view key;  // of the stored selection; empty for none
  std::string_view box;  // check box on the main window
  std::string_view caption;
  std::string_view tool_tip;
  int code;  // log code in the walk of single boxes
  Work work = nullptr;
  bool work_first = false;  // the work comes before the line in the walk of single boxes
  bool counts = true;       // adds to ClassesDone there
};

// One step of the other walks: the line (0 for none), then the work of the class, if any.
struct WalkStep {
  int code;
  const TraceClass* trace = nullptr;
};

struct TraceGroupRow {
  TraceGroup group;
  std::string_view all_box, all_caption, all_tool_tip;
  int all_adds;  // what the walk of the "All" box adds to ClassesDone
  std::span<const WalkStep> all_walk;
  std::span<const WalkStep> unattended_walk;
  std::string_view tab_caption, tab_tip;            // on the main window
  std::string_view wizard_caption, wizard_browser;  // on the wizard; the second in its tool tip
  // Whether an unattended run has anything to do for the group; null: always.
  bool (*is_here)(const KillNeeds& needs);
};

// All classes, those of a group together, in the order of the walk of single boxes.
std::span<const TraceClass> TraceClasses();
// Those of one group.
std::span<const TraceClass> ClassesOf(TraceGroup group);
const TraceGroupRow& RowOf(TraceGroup group);
// The groups in the order of the main window's tabs, and of the wizard's.
std::span<const TraceGroup> TabOrder();
std::span<const TraceGroup> WizardOrder();
// The groups in the order of the unattended run.
std::span<const TraceGroup> UnattendedOrder();
// By key without regard to case; null if there is none.
const TraceClass* FindClass(std::string_view key);

}  // namespace qb
