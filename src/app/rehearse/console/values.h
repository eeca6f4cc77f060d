// The forms of values in a script and in answers: numbers, bytes, durations, and texts of files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qb::rehearse {

// An unsigned number of nothing but digits, in decimal or after "0x" in hexadecimal; at most `max`.
std::optional<std::uint64_t> ParseNumber(std::string_view text, std::uint64_t max = UINT64_MAX);
// Hexadecimal digits with or without a leading "0x".
std::optional<std::uint64_t> ParseHex(std::string_view text, std::uint64_t max);
// An even number of hexadecimal digits as bytes.
std::optional<std::string> ParseBytes(std::string_view digits);
// Capital digits, two a byte.
std::string HexText(std::string_view bytes);
// A whole number with "ms", "s", "m" or "h", as milliseconds; at most 100 years.
std::optional<std::uint64_t> ParseDuration(std::string_view text);

// Bytes of Windows-1252 as UTF-8; the five bytes that it leaves undefined become the control
// characters of the same number, as Windows itself converts them.
std::string FromWindows1252(std::string_view bytes);
// The reverse. A text that is no UTF-8, or holds a character that Windows-1252 lacks, comes back as it is.
std::string ToWindows1252(std::string_view text);

// Parts at CR LF or LF; a line end at the very end begins no further line.
std::vector<std::string> SplitLines(std::string_view text);
// With "{nl}" for each line end.
std::string OnOneLine(std::string_view text);

}  // namespace qb::rehearse
