// Operations of the platform that fail.
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/replies.h"
#include "app/rehearse/console/values.h"

namespace qb::rehearse {
namespace {

Reply FailOperation(Console& console, const Arguments& words) {
  machine::Gate& gate = console.machine().gate();
  if (words[0] == "none" && words.size() == 1) {
    gate.ClearFaults();
    return {};
  }
  if (!machine::KnownOperation(words[0])) return Bad("no such operation", words[0]);
  bool every = words.size() > 1 && words[1] == "every";
  auto nth = every ? 0 : ParseNumber(words.size() > 1 ? words[1] : "1", kMostNumber);
  auto code = ParseNumber(words.size() > 2 ? words[2] : "5", kMostNumber);
  if (!nth || !code || (*nth == 0 && !every)) return Bad("no count or code", words.Raw());
  gate.SetFault(words[0], static_cast<std::uint32_t>(*nth), static_cast<std::uint32_t>(*code));
  return {};
}

constexpr std::array kCommands = std::to_array<Command>({
    {"fail", 1, 3, FailOperation},
});

}  // namespace

namespace commands {

std::span<const Command> Faults() {
  return kCommands;
}

}  // namespace commands

}  // namespace qb::rehearse
