#include "runtime/windows_1252.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace qb {

namespace {

// What 0x80 to 0x9F stand for. The five that stand for nothing hold the control character of the same
// number, as Windows itself converts them.
constexpr std::array<char16_t, 32> kFrom0x80 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

constexpr char32_t kNoCharacter = 0xFFFFFFFF;

// Takes one character off the front of the text; kNoCharacter, and one byte, where it is no UTF-8.
char32_t TakeCharacter(std::string_view& text) {
  const auto byte_at = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte_at(0);
  std::size_t length = 1;
  char32_t character = lead;
  if (lead >= 0xF0 && lead < 0xF5) {
    length = 4;
    character = lead & 0x07u;
  } else if (lead >= 0xE0 && lead < 0xF0) {
    length = 3;
    character = lead & 0x0Fu;
  } else if (lead >= 0xC2 && lead < 0xE0) {
    length = 2;
    character = lead & 0x1Fu;
  } else if (lead >= 0x80) {
    character = kNoCharacter;
  }
  for (std::size_t i = 1; i < length; ++i) {
    if (i >= text.size() || (byte_at(i) & 0xC0) != 0x80) {
      character = kNoCharacter;
      length = 1;
      break;
    }
    character = character << 6 | (byte_at(i) & 0x3Fu);
  }
  text.remove_prefix(length);
  return character;
}

}  // namespace

std::optional<char> Windows1252Byte(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<char>(character);
  const auto* found = std::find(kFrom0x80.begin(), kFrom0x80.end(), character);
  if (found == kFrom0x80.end()) return std::nullopt;
  return static_cast<char>(0x80 + (found - kFrom0x80.begin()));
}

std::string HtmlText(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) {
    const char32_t character = TakeCharacter(text);
    if (character == kNoCharacter) {
      bytes += '?';
    } else if (auto byte = Windows1252Byte(character)) {
      bytes += *byte;
    } else {
      bytes += "&#" + std::to_string(static_cast<std::uint32_t>(character)) + ";";
    }
  }
  return bytes;
}

}  // namespace qb
