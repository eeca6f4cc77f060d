// The program-wide variables by name: the table behind `get`.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/program.h"

namespace qb::rehearse {

struct Variable {
  std::string_view name;
  std::string (*text)(Program& program);
};

// One table for each file of variables/, found by the build.
std::span<const std::span<const Variable>> VariableTables();

// As text: booleans "true" or "false", numbers in their shortest form. A setting and a key of the
// selection give what is held in memory. Nothing if there is no such variable.
std::optional<std::string> VariableText(Program& program, std::string_view name);

}  // namespace qb::rehearse
