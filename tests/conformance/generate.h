// Random sequences, from the table of operations and the words of words.txt.
#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "tests/conformance/player.h"

namespace qb::conformance {

inline constexpr std::size_t kRandomCalls = 30;

class Generator {
 public:
  explicit Generator(const std::string& words);
  // The same for the same seed and number.
  Sequence RandomSequence(std::uint32_t seed, std::uint32_t number);

 private:
  std::uint32_t Below(std::uint32_t bound);
  const std::string& OneOf(const std::vector<std::string>& words);

  std::mt19937_64 random_;
  std::map<std::string, std::vector<std::string>> usual_, odd_;
};

}  // namespace qb::conformance
