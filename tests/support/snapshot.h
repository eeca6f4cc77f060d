// All files, folders and registry values of a machine, for comparing before and after.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/machine/machine.h"

namespace qb::test {

// "C:\path" with content and attributes, "HKCU\key\name" with type and data.
using Snapshot = std::map<std::string, std::string>;

Snapshot TakeSnapshot(const machine::Machine& machine);

// What differs, one line each, but for what lies at or below one of `expected` (compared without regard
// to ASCII case; a closing * takes any ending).
std::vector<std::string> Differences(const Snapshot& before, const Snapshot& after,
                                     const std::vector<std::string>& expected);

}  // namespace qb::test
