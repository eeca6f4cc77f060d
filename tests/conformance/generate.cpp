#include "tests/conformance/generate.h"

#include <sstream>

namespace qb::conformance {

namespace {

// Of ten sequences so many are of files, and of so many arguments one is odd.
constexpr std::uint32_t kOfFiles = 6, kOddOneIn = 10;

}  // namespace

Generator::Generator(const std::string& words) {
  std::istringstream in(words);
  for (std::string line; std::getline(in, line);) {
    std::istringstream row(line);
    std::string name;
    row >> name;
    bool odd = false;
    for (std::string word; row >> word;) {
      if (word == "|" && !odd)
        odd = true;
      else
        (odd ? odd_ : usual_)[name].push_back(word);
    }
  }
}

std::uint32_t Generator::Below(std::uint32_t bound) {
  return static_cast<std::uint32_t>(random_() % bound);
}

const std::string& Generator::OneOf(const std::vector<std::string>& words) {
  return words[Below(static_cast<std::uint32_t>(words.size()))];
}

Sequence Generator::RandomSequence(std::uint32_t seed, std::uint32_t number) {
  random_.seed((static_cast<std::uint64_t>(seed) << 32) + number);
  const auto& calls = usual_.at(number % 10 < kOfFiles ? "files" : "registry");
  Sequence sequence;
  while (sequence.lines.size() < kRandomCalls) {
    std::string line = OneOf(calls);
    for (const char* kind = FindRow(line)->kinds; *kind != '\0'; ++kind) {
      const std::string name(1, *kind);
      line += ' ' + OneOf((Below(kOddOneIn) == 0 ? odd_ : usual_).at(name));
    }
    sequence.lines.push_back(line);
  }
  return sequence;
}

}  // namespace qb::conformance
