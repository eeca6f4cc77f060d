// The wizard.
#include "app/rehearse/console/routines.h"

namespace qb::rehearse::routines {

std::span<const ProgramRoutine> Wizard() {
  static const std::vector<ProgramRoutine> table = {
      {"Save_Cookies", Bind([](Program& p) { p.wizard().Save_Cookies(); })},
      {"cmd_Default_Click", Bind([](Program& p) { p.wizard().cmd_Default_Click(); })},
  };
  return table;
}

}  // namespace qb::rehearse::routines
