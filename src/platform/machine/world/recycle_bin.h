// The Recycle Bin of a machine: its items lie in a folder of the host outside of all drives.
#pragma once

#include "platform/machine/world/machine_state.h"
#include "platform/shell.h"

namespace qb::machine {

Error DiscardEntry(MachineState& state, Entry& entry);
RecycleBinInfo BinContents(const MachineState& state);
void EmptyBin(const MachineState& state);

}  // namespace qb::machine
