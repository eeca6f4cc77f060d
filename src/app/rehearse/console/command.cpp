#include "app/rehearse/console/command.h"

namespace qb::rehearse {

FoundCommand FindCommand(std::span<const Word> words) {
  FoundCommand found;
  if (words.empty()) {
    found.problem = "a command is missing";
    return found;
  }
  const std::string& first = words[0].text;
  std::string both = words.size() > 1 ? first + " " + words[1].text : first;
  bool name_known = false;
  for (std::span<const Command> table : CommandTables()) {
    for (const Command& command : table) {
      bool two = command.name.find(' ') != std::string_view::npos;
      if (command.name != (two ? both : first)) continue;
      name_known = true;
      std::size_t name_words = two ? 2 : 1;
      std::size_t count = words.size() - name_words;
      if (count < command.least || count > command.most) continue;
      // The longer name wins: "cache clear" is no question with an argument.
      if (name_words > found.name_words) found = {&command, name_words, {}};
    }
  }
  if (found.command == nullptr) {
    found.problem = name_known ? "wrong number of words for " + first : "not understood: " + first;
  }
  return found;
}

}  // namespace qb::rehearse
