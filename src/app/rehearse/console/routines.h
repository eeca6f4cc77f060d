// The public routines of the running program by name: the tables behind `do`.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/rehearse/console/binding.h"
#include "core/program.h"

namespace qb::rehearse {

using ProgramRoutine = Routine<Program>;

// One table for each file of routines/, found by the build; the lambdas in them are made once.
std::span<const std::span<const ProgramRoutine>> RoutineTables();

// By name without regard to case.
CallOutcome CallRoutine(Program& program, std::string_view name, const std::vector<std::string>& arguments);

}  // namespace qb::rehearse
