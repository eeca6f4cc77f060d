// Files and folders.
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/values.h"

namespace qb::rehearse {
namespace {

Reply NoSuchPath(const std::string& path) {
  return Reply::Problem("no such path: " + path);
}

Reply Exists(Console& console, const Arguments& words) {
  return console.machine().Exists(words[0]);
}

Reply Attributes(Console& console, const Arguments& words) {
  if (console.machine().Exists(words[0]) == "no") return NoSuchPath(words[0]);
  return console.machine().Attributes(words[0]);
}

Reply Files(Console& console, const Arguments& words) {
  auto files = console.machine().ListBelow(words[0]);
  return files ? Reply(*files) : NoSuchPath(words[0]);
}

Reply Text(Console& console, const Arguments& words) {
  auto content = console.machine().Content(words[0]);
  return content ? Reply(SplitLines(FromWindows1252(*content))) : NoSuchPath(words[0]);
}

Reply Hex(Console& console, const Arguments& words) {
  auto content = console.machine().Content(words[0]);
  return content ? Reply(HexText(*content)) : NoSuchPath(words[0]);
}

Reply Size(Console& console, const Arguments& words) {
  auto size = console.machine().Size(words[0]);
  return size ? Reply(std::to_string(*size)) : NoSuchPath(words[0]);
}

constexpr std::array kQuestions = std::to_array<Command>({
    {"exists", 1, 1, Exists},
    {"attributes", 1, 1, Attributes},
    {"files", 1, 1, Files},
    {"text", 1, 1, Text},
    {"hex", 1, 1, Hex},
    {"size", 1, 1, Size},
});

}  // namespace

namespace questions {

std::span<const Command> Files() {
  return kQuestions;
}

}  // namespace questions

}  // namespace qb::rehearse
