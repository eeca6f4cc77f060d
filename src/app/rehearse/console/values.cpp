#include "app/rehearse/console/values.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace qb::rehearse {
namespace {

// What 0x80 to 0x9F stand for in Windows-1252.
constexpr std::array<char16_t, 32> kHighControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendUtf8(std::string& text, char32_t c) {
  if (c < 0x80) {
    text += static_cast<char>(c);
  } else if (c < 0x800) {
    text += static_cast<char>(0xC0 | (c >> 6));
    text += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    text += static_cast<char>(0xE0 | (c >> 12));
    text += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (c & 0x3F));
  }
}

// Takes one character of two or three bytes off the front; every character of Windows-1252 is at most
// that long. Nothing for anything else.
std::optional<char32_t> TakeWide(std::string_view& text) {
  auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
  auto follows = [&](std::size_t i) { return (byte(i) & 0xC0) == 0x80; };
  char32_t c = 0;
  if ((byte(0) & 0xE0) == 0xC0 && follows(1)) {
    c = ((byte(0) & 0x1F) << 6) | (byte(1) & 0x3F);
    if (c < 0x80) return std::nullopt;
    text.remove_prefix(2);
  } else if ((byte(0) & 0xF0) == 0xE0 && follows(1) && follows(2)) {
    c = ((byte(0) & 0x0F) << 12) | ((byte(1) & 0x3F) << 6) | (byte(2) & 0x3F);
    if (c < 0x800) return std::nullopt;
    text.remove_prefix(3);
  } else {
    return std::nullopt;
  }
  return c;
}

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
  std::string text;
  text.reserve(bytes.size());
  for (char c : bytes) {
    auto byte = static_cast<unsigned char>(c);
    AppendUtf8(text, byte >= 0x80 && byte < 0xA0 ? char32_t{kHighControls[byte - 0x80u]} : char32_t{byte});
  }
  return text;
}

std::string ToWindows1252(std::string_view text) {
  std::string bytes;
  for (std::string_view rest = text; !rest.empty();) {
    if (static_cast<unsigned char>(rest.front()) < 0x80) {
      bytes += rest.front();
      rest.remove_prefix(1);
      continue;
    }
    auto wide = TakeWide(rest);
    if (!wide) return std::string(text);
    const auto* high = std::find(kHighControls.begin(), kHighControls.end(), *wide);
    if (high != kHighControls.end()) {
      bytes += static_cast<char>(0x80 + (high - kHighControls.begin()));
    } else if (*wide >= 0xA0 && *wide <= 0xFF) {
      bytes += static_cast<char>(*wide);
    } else {
      return std::string(text);
    }
  }
  return bytes;
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
