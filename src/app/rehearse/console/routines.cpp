#include "app/rehearse/console/routines.h"

namespace qb::rehearse {

CallOutcome CallRoutine(Program& program, std::string_view name, const std::vector<std::string>& arguments) {
  for (std::span<const ProgramRoutine> table : RoutineTables()) {
    for (const ProgramRoutine& routine : table) {
      if (SameText(routine.name, name)) return routine.call(program, arguments);
    }
  }
  // Those of the traces stand beside their units.
  if (arguments.empty() && program.trace_units().Call(name)) return {};
  return {CallOutcome::Kind::NoSuchRoutine, {}};
}

}  // namespace qb::rehearse
