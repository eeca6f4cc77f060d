// The program-wide variables by name: the table behind `get`.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/program.h"

namespace qb::rehearse {

// As text: booleans "true" or "false", numbers in their shortest form. A setting and a key of the
// selection give what is held in memory. Nothing if there is no such variable.
std::optional<std::string> VariableText(Program& program, std::string_view name);

}  // namespace qb::rehearse
