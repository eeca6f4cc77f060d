// The code page that a machine keeps its text files in.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qb::machine {

class CodePage {
 public:
  static constexpr std::uint32_t kWestern = 1252, kUtf8 = 65001;

  // Windows-1252.
  CodePage();
  // UTF-8 or a page of one byte a character; nothing for any other.
  static std::optional<CodePage> Of(std::uint32_t number);

  std::uint32_t number() const { return number_; }
  // A character that the page lacks becomes "?"; a byte that begins none stays.
  std::string ToBytes(std::string_view utf8) const;
  // A byte that the page leaves open is the control character of that number, as to Windows.
  std::string ToText(std::string_view bytes) const;

 private:
  std::uint32_t number_ = kWestern;
  std::array<char32_t, 128> high_{};  // what 0x80 to 0xFF stand for
};

}  // namespace qb::machine
