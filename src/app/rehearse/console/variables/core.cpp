// What the parts of the program keep in memory.
#include "app/rehearse/console/variables.h"

#include <array>

#include "runtime/text.h"
#include "widgets/control.h"

namespace qb::rehearse {
namespace {

constexpr std::array kVariables = std::to_array<Variable>({
    {"HistoryRemoved", [](Program& p) { return NumberText(p.services().history_removed.Value()); }},
    {"ClassesDone", [](Program& p) { return std::to_string(p.services().run.ClassesDone); }},
    {"ManualRun", [](Program& p) { return BooleanText(p.services().run.ManualRun); }},
    {"UnattendedRun", [](Program& p) { return BooleanText(p.services().run.UnattendedRun); }},
    {"RunStopped", [](Program& p) { return BooleanText(p.services().run.RunStopped); }},
    {"AOLSetupPending", [](Program& p) { return BooleanText(p.services().run.AOLSetupPending); }},
    {"MainWindowHidden", [](Program& p) { return BooleanText(p.services().run.MainWindowHidden); }},
    {"StartedAtBoot", [](Program& p) { return BooleanText(p.services().run.StartedAtBoot); }},
    {"Data_Folder", [](Program& p) { return p.services().data_folder; }},
    {"IEFoldersMoved", [](Program& p) { return BooleanText(p.IEFoldersMoved()); }},
    {"IndexDatScheduled", [](Program& p) { return BooleanText(p.trace_units().index_dat.IndexDatScheduled()); }},
    {"FirefoxProfileName", [](Program& p) { return p.services().profiles.FirefoxProfileName(); }},
    {"FirefoxProfilePath", [](Program& p) { return p.services().profiles.FirefoxProfilePath(); }},
    {"FirefoxLocalProfilePath", [](Program& p) { return p.services().profiles.FirefoxLocalProfilePath(); }},
    {"NetscapeProfilePath", [](Program& p) { return p.services().profiles.NetscapeProfilePath(); }},
});

}  // namespace

namespace variables {

std::span<const Variable> Core() {
  return kVariables;
}

}  // namespace variables

}  // namespace qb::rehearse
