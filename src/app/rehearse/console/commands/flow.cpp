// What steers the rehearsal itself: starting the program and Windows, and moments.
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/replies.h"
#include "app/rehearse/console/values.h"

namespace qb::rehearse {
namespace {

Reply Start(Console& console, const Arguments& words) {
  if (console.Current() != nullptr) return Reply::Problem("the program runs already");
  console.Start(std::string(words.Behind()));
  return {};
}

Reply StartAgain(Console& console, const Arguments&) {
  if (console.Current() == nullptr) return NotRunning();
  console.Start("");
  return {};
}

Reply Reboot(Console& console, const Arguments&) {
  console.Reboot();
  return {};
}

Reply During(Console& console, const Arguments& words) {
  constexpr std::uint64_t kMostPumps = 1ULL << 40;
  constexpr std::size_t kMostDepth = 512;
  auto pumps = ParseNumber(words[0], kMostPumps);
  if (!pumps || *pumps == 0) return Reply::Problem("no number of pumps: " + words[0]);
  Arguments command = words.From(1);
  // What is misspelt shall be heard of now, not at a pump that may never come.
  Arguments checked = command;
  std::size_t depth = 1;
  while (checked.size() > 2 && checked[0] == "during") {
    checked = checked.From(2);
    if (++depth > kMostDepth) return Reply::Problem("too many moments inside each other");
  }
  FoundCommand found = FindCommand(checked.words());
  if (found.command == nullptr) return Reply::Problem(found.problem);
  console.Schedule(*pumps, command);
  return {};
}

Reply Advance(Console& console, const Arguments& words) {
  auto duration = ParseDuration(words[0]);
  if (!duration) return Bad("no duration", words[0]);
  console.machine().Advance(*duration);
  return {};
}

constexpr std::array kCommands = std::to_array<Command>({
    {"start", 0, kAnyNumber, Start},
    {"start-again", 0, 0, StartAgain},
    {"reboot", 0, 0, Reboot},
    {"during", 2, kAnyNumber, During},
    {"advance", 1, 1, Advance},
});

}  // namespace

namespace commands {

std::span<const Command> Flow() {
  return kCommands;
}

}  // namespace commands

}  // namespace qb::rehearse
