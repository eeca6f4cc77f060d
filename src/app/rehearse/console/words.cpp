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

Arguments Arguments::From(std::size_t first) const {
  Arguments rest = *this;
  if (first > 0) rest.begin_ = words_[first - 1].end;
  rest.words_ = words_.subspan(first);
  return rest;
}

Arguments Arguments::Until(std::size_t end) const {
  Arguments head = *this;
  if (end < words_.size()) head.end_ = end > 0 ? words_[end - 1].end : begin_;
  head.words_ = words_.first(end);
  return head;
}

std::string Arguments::Raw() const {
  if (words_.empty()) return {};
  return std::string(line_.substr(words_.front().begin, words_.back().end - words_.front().begin));
}

std::string Arguments::RawToTheEnd() const {
  if (words_.empty()) return {};
  return std::string(line_.substr(words_.front().begin, end_ - words_.front().begin));
}

std::string_view Arguments::Behind() const {
  std::string_view text = line_.substr(begin_, end_ - begin_);
  if (!text.empty()) text.remove_prefix(1);
  return text;
}

}  // namespace qb::rehearse
