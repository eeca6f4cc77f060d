// What an answer is held against.
#include <algorithm>
#include <array>

#include "app/rehearse/console/console.h"

namespace qb::rehearse {
namespace {

std::string Joined(const std::vector<std::string>& lines, std::string_view between) {
  std::string text;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i > 0) text += between;
    text += lines[i];
  }
  return text;
}

// No line and one empty line are the same answer.
std::vector<std::string> Normal(std::vector<std::string> lines) {
  if (lines.size() == 1 && lines[0].empty()) lines.clear();
  return lines;
}

bool Is(const std::vector<std::string>& answer, const std::vector<std::string>& texts) {
  return Normal(answer) == Normal(texts);
}

bool Occurs(const std::vector<std::string>& answer, const std::string& text) {
  return Joined(answer, "\n").find(text) != std::string::npos;
}

bool Has(const std::vector<std::string>& answer, const std::vector<std::string>& texts) {
  return std::all_of(texts.begin(), texts.end(), [&](const std::string& text) { return Occurs(answer, text); });
}

bool Lacks(const std::vector<std::string>& answer, const std::vector<std::string>& texts) {
  return std::none_of(texts.begin(), texts.end(), [&](const std::string& text) { return Occurs(answer, text); });
}

struct Comparison {
  std::string_view word;
  std::size_t least_texts;
  bool (*holds)(const std::vector<std::string>& answer, const std::vector<std::string>& texts);
};
constexpr std::array kComparisons = std::to_array<Comparison>({{"is", 0, Is}, {"has", 1, Has}, {"lacks", 1, Lacks}});

const Comparison* ComparisonOf(const Word& word) {
  if (word.quoted) return nullptr;
  const auto* found = std::find_if(kComparisons.begin(), kComparisons.end(),
                                   [&](const Comparison& comparison) { return comparison.word == word.text; });
  return found == kComparisons.end() ? nullptr : found;
}

Reply Expect(Console& console, const Arguments& words) {
  std::size_t at = 1;
  while (at < words.size() && ComparisonOf(words.word(at)) == nullptr) ++at;
  if (at >= words.size()) return Reply::Problem("expect wants a question, then is, has or lacks");
  const Comparison& comparison = *ComparisonOf(words.word(at));
  std::vector<std::string> texts = words.From(at + 1).Texts();
  if (texts.size() < comparison.least_texts) return Reply::Problem("wrong number of words for expect");
  Reply reply = console.Ask(words.Until(at));
  if (reply.problem) return reply;
  if (!comparison.holds(reply.lines, texts)) {
    console.ReportMissed("expected " + std::string(comparison.word) + " \"" + Joined(texts, "\" \"") + "\", got \"" +
                         Joined(reply.lines, "{nl}") + "\"");
  }
  return {};
}

constexpr std::array kCommands = std::to_array<Command>({
    {"expect", 2, kAnyNumber, Expect},
});

}  // namespace

namespace commands {

std::span<const Command> Expectations() {
  return kCommands;
}

}  // namespace commands

}  // namespace qb::rehearse
