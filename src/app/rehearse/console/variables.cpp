#include "app/rehearse/console/variables.h"

#include <array>

#include "runtime/text.h"
#include "widgets/control.h"

namespace qb::rehearse {
namespace {

struct Variable {
  std::string_view name;
  std::string (*text)(Program& program);
};

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
    {"AutoKillMinutes", [](Program& p) { return std::to_string(p.main_window().AutoKillMinutes()); }},
    {"IndexDatScheduled", [](Program& p) { return BooleanText(p.trace_units().index_dat.IndexDatScheduled()); }},
    {"StrictMode", [](Program& p) { return BooleanText(p.guards().StrictMode()); }},
    {"TanglegateON", [](Program& p) { return BooleanText(p.guards().TanglegateOn()); }},
    {"FirefoxProfileName", [](Program& p) { return p.services().profiles.FirefoxProfileName(); }},
    {"FirefoxProfilePath", [](Program& p) { return p.services().profiles.FirefoxProfilePath(); }},
    {"FirefoxLocalProfilePath", [](Program& p) { return p.services().profiles.FirefoxLocalProfilePath(); }},
    {"NetscapeProfilePath", [](Program& p) { return p.services().profiles.NetscapeProfilePath(); }},
});

}  // namespace

std::optional<std::string> VariableText(Program& program, std::string_view name) {
  for (const Variable& variable : kVariables) {
    if (SameText(variable.name, name)) return variable.text(program);
  }
  if (const SettingRow* row = FindSetting(name)) return program.services().settings.TextForm(row->setting);
  if (const TraceClass* row = FindClass(name)) return std::to_string(program.kill_run().Selected(*row));
  return std::nullopt;
}

}  // namespace qb::rehearse
