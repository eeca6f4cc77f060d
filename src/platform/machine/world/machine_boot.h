// What Windows does with files when it starts, before any program runs.
#pragma once

#include "platform/machine/world/machine_state.h"

namespace qb::machine {

// The renames that MoveFileExA put off, each once, in order. An existing target makes one fail. Relative
// names hang on the folder that was the current one at the call.
void CarryOutPendingRenames(MachineState& state);

// The lines "NEW=OLD" below [RENAME] in WININIT.INI, with NUL as NEW for a deletion. The file is
// WININIT.BAK afterwards.
void CarryOutWininit(MachineState& state);

}  // namespace qb::machine
