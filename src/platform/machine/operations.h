// The families of operations of a machine, each over the state that all share and that must outlive them.
#pragma once

#include <functional>
#include <memory>

#include "platform/machine/machine_state.h"
#include "platform/machine/machine_system.h"
#include "platform/platform.h"

namespace qb::machine {

std::unique_ptr<Desktop> MakeDesktop(MachineState& state);
std::unique_ptr<HotKeysAndTray> MakeHotKeysAndTray(MachineState& state);
// The hooks are read at each call: whoever plays the machine sets them later.
std::unique_ptr<Pump> MakePump(MachineState& state, MachineProcesses& processes, std::function<void()>& on_pump,
                               std::function<bool()>& on_wait);
std::unique_ptr<RandomSource> MakeRandomSource(MachineState& state);

}  // namespace qb::machine
