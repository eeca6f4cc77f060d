// One command or question of the language: its name, how many words it takes, and what it does.
#pragma once

#include <cstddef>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/rehearse/console/words.h"

namespace qb::rehearse {

class Console;

// What a command printed, or why it could not be understood.
struct Reply {
  std::vector<std::string> lines;
  std::optional<std::string> problem;

  Reply() = default;
  Reply(std::string line) { lines.push_back(std::move(line)); }         // NOLINT(google-explicit-constructor)
  Reply(std::vector<std::string> answer) : lines(std::move(answer)) {}  // NOLINT(google-explicit-constructor)
  static Reply Problem(std::string text) {
    Reply reply;
    reply.problem = std::move(text);
    return reply;
  }
};

inline constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

struct Command {
  std::string_view name;            // two words with a blank between for a command such as "reg add"
  std::size_t least = 0, most = 0;  // words behind the name
  Reply (*run)(Console& console, const Arguments& arguments) = nullptr;
};

// The tables of all commands and questions: one for each file of commands/ and questions/, found by the build.
std::span<const std::span<const Command>> CommandTables();

// The command that a line begins with and its arguments; else null and the reason.
struct FoundCommand {
  const Command* command = nullptr;
  std::size_t name_words = 0;
  std::string problem;
};
FoundCommand FindCommand(std::span<const Word> words);

}  // namespace qb::rehearse
