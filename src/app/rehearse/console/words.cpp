#include "app/rehearse/console/words.h"

namespace qb::rehearse {
namespace {

bool Blank(char c) {
  return c == ' ' || c == '\t';
}

}  // namespace

std::optional<std::vector<Word>> SplitWords(std::string_view line) {
  std::vector<Word> words;
  std::size_t i = 0;
  while (true) {
    while (i < line.size() && Blank(line[i])) ++i;
    if (i == line.size()) return words;
    Word word;
    word.begin = i;
    word.quoted = line[i] == '"';
    if (word.quoted) {
      for (++i;; ++i) {
        if (i == line.size()) return std::nullopt;
        if (line[i] == '"') {
          if (i + 1 == line.size() || line[i + 1] != '"') break;
          ++i;
        }
        word.text += line[i];
      }
      ++i;
      if (i < line.size() && !Blank(line[i])) return std::nullopt;
    } else {
      for (; i < line.size() && !Blank(line[i]); ++i) {
        if (line[i] == '"') return std::nullopt;
        word.text += line[i];
      }
    }
    word.end = i;
    words.push_back(std::move(word));
  }
}

std::vector<std::string> Arguments::Texts() const {
  std::vector<std::string> texts;
  for (const Word& word : words_) texts.push_back(word.text);
  return texts;
}

std::string Arguments::Raw() const {
  if (words_.empty()) return {};
  return std::string(line_.substr(words_.front().begin, words_.back().end - words_.front().begin));
}

}  // namespace qb::rehearse
