// Random sequences, from the table of operations.
#pragma once

#include <cstdint>
#include <string>

#include "tests/conformance/player.h"

namespace qb::conformance {

inline constexpr std::size_t kRandomCalls = 30;

// The same for the same seed and number.
Sequence RandomSequence(std::uint32_t seed, std::uint32_t number);

}  // namespace qb::conformance
