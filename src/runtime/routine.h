// A routine without arguments or a result that can be called by its name, as scripts and support do. The table of
// those of a class stands beside the class.
#pragma once

#include <span>
#include <string_view>

#include "runtime/text.h"

namespace qb {

template <typename Unit>
struct NamedRoutine {
  std::string_view name;
  void (Unit::*call)();
};

// Runs the unit's routine of that name, without regard to case. False if it has none.
template <typename Unit>
bool CallByName(Unit& unit, std::string_view name) {
  for (const NamedRoutine<Unit>& routine : Unit::Routines()) {
    if (!SameText(routine.name, name)) continue;
    (unit.*routine.call)();
    return true;
  }
  return false;
}

}  // namespace qb
