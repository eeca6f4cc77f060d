// The replies that commands and questions have in common.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/rehearse/console/console.h"

namespace qb::rehearse {

inline constexpr std::uint32_t kMostNumber = 0xFFFFFFFF;

inline Reply Bad(std::string_view what, const std::string& word) {
  return Reply::Problem(std::string(what) + ": " + word);
}
inline Reply DoneOr(bool done, std::string_view what, const std::string& word) {
  return done ? Reply() : Bad(what, word);
}
inline Reply NoSuch(std::string_view what, const std::string& name) {
  return Bad("no such " + std::string(what), name);
}
inline Reply NotRunning() {
  return Reply::Problem("the program does not run");
}

// A command that names one path or key, and succeeds or not.
template <bool (machine::Machine::*action)(std::string_view)>
Reply OnPath(Console& console, const Arguments& words) {
  return DoneOr((console.machine().*action)(words[0]), "no such path, or it cannot be done", words[0]);
}

}  // namespace qb::rehearse
