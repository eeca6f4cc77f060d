#include "runtime/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

#include "platform/utf16.h"
#include "runtime/letter_case.h"

namespace qb {

namespace {

constexpr bool Ascii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}
constexpr char Upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
constexpr char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Each letter by one of the two tables; most texts are ASCII from end to end.
std::string WithLetters(std::string_view text, char (*ascii)(char), char32_t (*other)(char32_t)) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    if (Ascii(text[0])) {
      result += ascii(text[0]);
      text.remove_prefix(1);
    } else {
      PutCharacter(other(TakeCharacter(text)), result);
    }
  }
  return result;
}
constexpr bool Blank(char c) {
  return c == ' ' || c == '\t';
}

// Reads a decimal number at `text`'s start. `used` is how many characters it took, 0 for none.
double ParseNumber(std::string_view text, std::size_t& used) {
  used = 0;
  std::size_t sign = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  if (sign == text.size() || (text[sign] != '.' && (text[sign] < '0' || text[sign] > '9'))) return 0;
  double number = 0;
  auto [end, error] = std::from_chars(text.data() + sign, text.data() + text.size(), number);
  if (error == std::errc::invalid_argument) return 0;
  used = static_cast<std::size_t>(end - text.data());
  if (error == std::errc::result_out_of_range) number = std::numeric_limits<double>::infinity();
  return text[0] == '-' ? -number : number;
}

template <typename Int>
std::optional<Int> RoundTo(double number) {
  // nearbyint rounds half to even in the default rounding mode.
  double rounded = std::nearbyint(number);
  if (!(rounded >= std::numeric_limits<Int>::min() && rounded <= std::numeric_limits<Int>::max())) return std::nullopt;
  return static_cast<Int>(rounded);
}

template <typename... Args>
std::string Format(const char* format, Args... args) {
  std::array<char, 64> buffer{};
  int length = std::snprintf(buffer.data(), buffer.size(), format, args...);
  return std::string(buffer.data(), static_cast<std::size_t>(std::max(length, 0)));
}

}  // namespace

std::string UpperCase(std::string_view text) {
  return WithLetters(text, Upper, Capital);
}

std::string LowerCase(std::string_view text) {
  return WithLetters(text, Lower, SmallLetter);
}

bool SameText(std::string_view a, std::string_view b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    // From the first character on that is not ASCII, capitals may differ in length.
    if (!Ascii(a[i]) || !Ascii(b[i])) return UpperCase(a.substr(i)) == UpperCase(b.substr(i));
    if (Upper(a[i]) != Upper(b[i])) return false;
  }
  return a.size() == b.size();
}

std::string Trim(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return std::string(text);
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = std::min(text.find_first_not_of(" \t"), text.size());
  return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

std::string WithoutLast(std::string_view text, std::size_t count) {
  return std::string(text.substr(0, text.size() - std::min(count, text.size())));
}

std::string Add_Backslash(std::string_view path) {
  std::string result(path);
  if (result.empty() || result.back() != '\\') result += '\\';
  return result;
}

std::string WithoutBackslash(std::string_view path) {
  return WithoutLast(path, !path.empty() && path.back() == '\\' ? 1 : 0);
}

double LeadingNumber(std::string_view text) {
  while (!text.empty() && Blank(text.front())) text.remove_prefix(1);
  std::size_t used = 0;
  return ParseNumber(text, used);
}

std::optional<double> WholeNumber(std::string_view text) {
  while (!text.empty() && Blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && Blank(text.back())) text.remove_suffix(1);
  std::size_t used = 0;
  double number = ParseNumber(text, used);
  if (used == 0 || used != text.size() || !std::isfinite(number)) return std::nullopt;
  return number;
}

std::optional<std::int16_t> RoundToInt16(double number) {
  return RoundTo<std::int16_t>(number);
}
std::optional<std::int32_t> RoundToInt32(double number) {
  return RoundTo<std::int32_t>(number);
}

std::string NumberText(double number) {
  std::array<char, 64> buffer{};
  bool plain = number == 0 || (std::fabs(number) >= 1e-4 && std::fabs(number) < 1e15);
  auto [end, error] =
      plain ? std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed)
            : std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  return error == std::errc() ? std::string(buffer.data(), end) : std::string();
}

std::string DateText(const SystemTime& time) {
  return Format("%04d-%02d-%02d", time.year, time.month, time.day);
}
std::string TimeText(const SystemTime& time) {
  return Format("%02d:%02d:%02d", time.hour, time.minute, time.second);
}

}  // namespace qb
