// The general pseudo-random generator. It is no source of secrets.
#pragma once

#include <cstdint>

namespace qb {

class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(static_cast<std::uint32_t>(seed) & 0xFFFFFF) {}
  // The next value, from 0 up to but not including 1.
  double Next() {
    state_ = (state_ * 0x43FD43FDu + 0xC39EC3u) & 0xFFFFFFu;
    return state_ / 16777216.0;
  }
  // Seeds anew without forgetting where the generator stands, so that seeds taken at one instant of a
  // slow clock do not give the same values.
  void Stir(std::uint64_t seed) { state_ ^= static_cast<std::uint32_t>(seed * 0x9E3779u) & 0xFFFFFFu; }

 private:
  std::uint32_t state_;
};

}  // namespace qb
