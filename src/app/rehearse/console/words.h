// A line of a script as words.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qb::rehearse {

struct Word {
  std::string text;
  std::size_t begin = 0, end = 0;  // where it stands in its line, quotes included
  bool quoted = false;
};

// Parts a line at blanks; a word in double quotes may hold blanks, and a double quote written twice.
// Nothing if a quote stands where none may: inside a bare word, unclosed, or closed before more letters.
std::optional<std::vector<Word>> SplitWords(std::string_view line);

// The words behind a command's name, and the line that they stand in.
class Arguments {
 public:
  Arguments(std::span<const Word> words, std::string_view line) : words_(words), line_(line), end_(line.size()) {}
  std::size_t size() const { return words_.size(); }
  bool empty() const { return words_.empty(); }
  const std::string& operator[](std::size_t i) const { return words_[i].text; }
  const Word& word(std::size_t i) const { return words_[i]; }
  std::span<const Word> words() const { return words_; }
  std::string_view line() const { return line_; }
  Arguments From(std::size_t first) const;
  Arguments Until(std::size_t end) const;
  std::vector<std::string> Texts() const;
  // All words as they stand in the line, quotes and blanks between them included.
  std::string Raw() const;
  // The same with the blanks behind the last word, if the line ends there.
  std::string RawToTheEnd() const;
  // What stands behind the word before the first and one blank.
  std::string_view Behind() const;

 private:
  std::span<const Word> words_;
  std::string_view line_;
  std::size_t begin_ = 0, end_ = 0;  // where the text that these words are parted from stands in the line
};

}  // namespace qb::rehearse
