// The mouse on the tray icon, and hot keys.
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/replies.h"
#include "app/rehearse/console/values.h"

namespace qb::rehearse {
namespace {

constexpr std::uint32_t kLeftDown = 513, kLeftDoubleClick = 515, kRightUp = 517;

// Each does nothing where there is no icon, or nobody was granted the key.
Reply TrayMouse(Console& console, const Arguments& words) {
  auto message = ParseNumber(words[0]);
  if (message != kLeftDown && message != kLeftDoubleClick && message != kRightUp)
    return NoSuch("mouse message", words[0]);
  console.machine().TrayMouse(static_cast<std::uint32_t>(*message));
  return {};
}

Reply HotKey(Console& console, const Arguments& words) {
  auto id = ParseNumber(words[0], 0xBFFF);  // the highest that a program may use
  if (!id) return NoSuch("hot key", words[0]);
  console.machine().HotKey(static_cast<std::int32_t>(*id));
  return {};
}

Reply Chord(Console& console, const Arguments& words) {
  auto modifiers = ParseNumber(words[0], 0xFFFF);
  auto key = ParseNumber(words[1], 0xFFFF);
  if (!modifiers || !key) return NoSuch("chord", words.Raw());
  console.machine().Chord(static_cast<std::uint32_t>(*modifiers), static_cast<std::uint32_t>(*key));
  return {};
}

Reply RestartShell(Console& console, const Arguments&) {
  console.machine().RestartShell();
  return {};
}

constexpr std::array kCommands = std::to_array<Command>({
    {"tray", 1, 1, TrayMouse},
    {"hotkey", 1, 1, HotKey},
    {"chord", 2, 2, Chord},
    {"restart-shell", 0, 0, RestartShell},
});

}  // namespace

namespace commands {

std::span<const Command> Tray() {
  return kCommands;
}

}  // namespace commands

}  // namespace qb::rehearse
