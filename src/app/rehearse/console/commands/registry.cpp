// What others do to the registry.
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/replies.h"
#include "app/rehearse/console/values.h"

namespace qb::rehearse {
namespace {

Reply RegistryAdd(Console& console, const Arguments& words) {
  if (words.size() == 1) return DoneOr(console.machine().RegistryAddKey(words[0]), "cannot make the key", words[0]);
  if (words.size() != 4) return Reply::Problem("wrong number of words for reg add");
  machine::RegistryValue value;
  value.name = words[1];
  if (words[2] == "sz" || words[2] == "expand_sz") {
    value.type = words[2] == "sz" ? kRegSz : kRegExpandSz;
    value.data = words[3];
  } else if (words[2] == "dword") {
    auto number = ParseNumber(words[3], kMostNumber);
    if (!number) return Bad("no dword", words[3]);
    value.type = kRegDword;
    for (int shift = 0; shift < 32; shift += 8) value.data += static_cast<char>((*number >> shift) & 0xFF);
  } else if (words[2] == "binary") {
    auto bytes = ParseBytes(words[3]);
    if (!bytes) return Bad("no bytes", words[3]);
    value.type = kRegBinary;
    value.data = *bytes;
  } else {
    return Bad("no registry type", words[2]);
  }
  return DoneOr(console.machine().RegistrySetValue(words[0], value), "cannot set the value", words[0]);
}

Reply RegistryDelete(Console& console, const Arguments& words) {
  bool done = words.size() == 1 ? console.machine().RegistryDeleteKey(words[0])
                                : console.machine().RegistryDeleteValue(words[0], words[1]);
  return DoneOr(done, "no such key or value", words.Raw());
}

using machine::Machine;

constexpr std::array kCommands = std::to_array<Command>({
    {"reg add", 1, 4, RegistryAdd},
    {"reg delete", 1, 2, RegistryDelete},
    {"reg deny", 1, 1, OnPath<&Machine::RegistryDeny>},
    {"reg allow", 1, 1, OnPath<&Machine::RegistryAllow>},
});

}  // namespace

namespace commands {

std::span<const Command> Registry() {
  return kCommands;
}

}  // namespace commands

}  // namespace qb::rehearse
