// What others do to the URL cache.
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/replies.h"
#include "app/rehearse/console/values.h"

namespace qb::rehearse {
namespace {

Reply CacheAdd(Console& console, const Arguments& words) {
  auto type = ParseHex(words[1], kMostNumber);
  if (!type) return Bad("no hexadecimal bit set", words[1]);
  console.machine().CacheAdd({words[0], static_cast<std::uint32_t>(*type), words.size() > 2 ? words[2] : ""});
  return {};
}

Reply CacheClear(Console& console, const Arguments&) {
  console.machine().CacheClear();
  return {};
}

constexpr std::array kCommands = std::to_array<Command>({
    {"cache add", 2, 3, CacheAdd},
    {"cache clear", 0, 0, CacheClear},
});

}  // namespace

namespace commands {

std::span<const Command> Cache() {
  return kCommands;
}

}  // namespace commands

}  // namespace qb::rehearse
