// Other programs' windows.
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/replies.h"
#include "app/rehearse/console/values.h"

namespace qb::rehearse {
namespace {

std::optional<std::uint64_t> ParseHandle(const std::string& word) {
  if (!word.starts_with('#')) return std::nullopt;
  return ParseNumber(std::string_view(word).substr(1));
}

Reply WindowOpen(Console& console, const Arguments& words) {
  std::size_t left = words.size();
  std::uint64_t parent = 0;
  if (left >= 3 && words[left - 2] == "in" && !words.word(left - 2).quoted) {
    auto handle = ParseHandle(words[left - 1]);
    bool there = false;
    for (const machine::OtherWindow& window : console.machine().Windows()) there = there || window.handle == handle;
    if (!there) return Bad("no such window", words[left - 1]);
    parent = *handle;
    left -= 2;
  }
  if (left > 2) return Reply::Problem("wrong number of words for window open");
  std::uint64_t handle = console.machine().WindowOpen(words[0], left > 1 ? words[1] : "", parent);
  if (handle == 0) return Bad("cannot open the window", words.Raw());
  return "window #" + std::to_string(handle);
}

Reply WindowClose(Console& console, const Arguments& words) {
  bool done = false;
  if (words[0].starts_with('#')) {
    auto handle = ParseHandle(words[0]);
    done = handle && console.machine().WindowClose(*handle);
  } else {
    done = console.machine().WindowCloseClass(words[0]);
  }
  return DoneOr(done, "no such window", words[0]);
}

constexpr std::array kCommands = std::to_array<Command>({
    {"window open", 1, 4, WindowOpen},
    {"window close", 1, 1, WindowClose},
});

}  // namespace

namespace commands {

std::span<const Command> Windows() {
  return kCommands;
}

}  // namespace commands

}  // namespace qb::rehearse
