#include "app/rehearse/console/values.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/machine/world/code_page.h"

namespace qb::rehearse {
namespace {

std::optional<std::uint64_t> Digits(std::string_view text, int base, std::uint64_t max) {
  std::uint64_t number = 0;
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (error != std::errc() || end != text.data() + text.size() || number > max) return std::nullopt;
  return number;
}

bool HexPrefix(std::string_view text) {
  return text.starts_with("0x") || text.starts_with("0X");
}

}  // namespace

std::optional<std::uint64_t> ParseNumber(std::string_view text, std::uint64_t max) {
  return HexPrefix(text) ? Digits(text.substr(2), 16, max) : Digits(text, 10, max);
}

std::optional<std::uint64_t> ParseHex(std::string_view text, std::uint64_t max) {
  return Digits(HexPrefix(text) ? text.substr(2) : text, 16, max);
}

std::optional<std::string> ParseBytes(std::string_view digits) {
  if (digits.size() % 2 != 0) return std::nullopt;
  std::string bytes;
  bytes.reserve(digits.size() / 2);
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    auto byte = Digits(digits.substr(i, 2), 16, 0xFF);
    if (!byte) return std::nullopt;
    bytes += static_cast<char>(*byte);
  }
  return bytes;
}

std::string HexText(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  text.reserve(bytes.size() * 2);
  for (char c : bytes) {
    auto byte = static_cast<unsigned char>(c);
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xF];
  }
  return text;
}

std::optional<std::uint64_t> ParseDuration(std::string_view text) {
  struct Unit {
    std::string_view name;
    std::uint64_t ms;
  };
  static constexpr std::array<Unit, 4> kUnits = {{{"ms", 1}, {"s", 1000}, {"m", 60'000}, {"h", 3'600'000}}};
  constexpr std::uint64_t kMost = 100ULL * 366 * 24 * 3'600'000;
  std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
  for (const Unit& unit : kUnits) {
    if (text.substr(digits) != unit.name) continue;
    auto number = Digits(text.substr(0, digits), 10, kMost / unit.ms);
    if (!number) return std::nullopt;
    return *number * unit.ms;
  }
  return std::nullopt;
}

std::string FromWindows1252(std::string_view bytes) {
  return machine::CodePage().ToText(bytes);
}

std::string ToWindows1252(std::string_view text) {
  const machine::CodePage page;
  std::string bytes = page.ToBytes(text);
  return page.ToText(bytes) == text ? bytes : std::string(text);
}

std::vector<std::string> SplitLines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    if (end < text.size() && line.ends_with('\r')) line.remove_suffix(1);
    lines.emplace_back(line);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

std::string OnOneLine(std::string_view text) {
  std::string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    if (text[i] == '\r' || text[i] == '\n') {
      line += "{nl}";
    } else {
      line += text[i];
    }
  }
  return line;
}

}  // namespace qb::rehearse
