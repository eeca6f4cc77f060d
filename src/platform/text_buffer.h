// A buffer for a text that the callee fills, with a size in characters.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/utf16.h"

namespace qb {

// Room for `size` characters, the closing zero included. A character is a UTF-16 unit, as Windows counts; the text
// itself is UTF-8, of whatever length in bytes. Made anew for each call.
class TextBuffer {
 public:
  explicit TextBuffer(std::size_t size) : size_(size) {}

  std::size_t size() const { return size_; }
  // What was filled in, up to its first zero character.
  const std::string& text() const { return text_; }

  // As Windows fills a buffer: gives the length without the zero. A text that does not fit is not taken: gives the size
  // that is needed then, with the zero.
  std::uint32_t Fill(std::string_view text) {
    const std::size_t length = Utf16Length(text);
    if (length >= size_) return static_cast<std::uint32_t>(length + 1);
    text_ = text.substr(0, text.find('\0'));
    return static_cast<std::uint32_t>(length);
  }
  bool Takes(std::string_view text) { return Fill(text) < size_; }
  // As much of the text as fits, in whole characters. Gives the length.
  std::uint32_t FillCut(std::string_view text) {
    std::string_view rest = text;
    std::size_t fits = 0;
    for (std::size_t length = 0; !rest.empty(); fits = text.size() - rest.size()) {
      const std::string_view before = rest;
      TakeCharacter(rest);
      length += Utf16Length(before.substr(0, before.size() - rest.size()));
      if (length >= size_) break;
    }
    return size_ == 0 ? 0 : Fill(text.substr(0, fits));
  }

 private:
  std::size_t size_;
  std::string text_;
};

}  // namespace qb
