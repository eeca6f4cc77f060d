// The tray and the hot keys that the system has granted.
#include <array>

#include "app/rehearse/console/console.h"

namespace qb::rehearse {
namespace {

Reply TrayIcon(Console& console, const Arguments&) {
  return std::string(console.machine().TrayIcon() ? "icon" : "no icon");
}

Reply HotKeys(Console& console, const Arguments&) {
  Reply reply;
  for (const machine::GrantedHotKey& key : console.machine().HotKeys()) {
    reply.lines.push_back(std::to_string(key.id) + " " + std::to_string(key.modifiers) + " " + std::to_string(key.key));
  }
  return reply;
}

constexpr std::array kQuestions = std::to_array<Command>({
    {"tray", 0, 0, TrayIcon},
    {"hotkeys", 0, 0, HotKeys},
});

}  // namespace

namespace questions {

std::span<const Command> Tray() {
  return kQuestions;
}

}  // namespace questions

}  // namespace qb::rehearse
