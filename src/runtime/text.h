// Texts and numbers as the settings, lists and file names need them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/types.h"

namespace qb {

// Letters of all languages as Windows pairs them; bytes that are no UTF-8 stay as they are. The length in bytes may
// change.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);
bool SameText(std::string_view a, std::string_view b);  // the same in capitals

// Without blanks at either end.
std::string Trim(std::string_view text);
// Without blanks and tabs at either end.
std::string_view Trimmed(std::string_view text);
// `text` less its last `count` characters; empty if it has no more than that.
std::string WithoutLast(std::string_view text, std::size_t count);
// `path` with a backslash behind it if it has none.
std::string Add_Backslash(std::string_view path);
// `path` less one trailing backslash, if there is one.
std::string WithoutBackslash(std::string_view path);

// The number at the start of the text, leading blanks skipped; 0 if there is none.
double LeadingNumber(std::string_view text);
// The whole text, blanks at either end aside, as a number; nothing for any other text.
std::optional<double> WholeNumber(std::string_view text);
// Rounds half to even. Nothing if the result is no signed 16-bit or 32-bit number.
std::optional<std::int16_t> RoundToInt16(double number);
std::optional<std::int32_t> RoundToInt32(double number);

// The shortest decimal text that reads back as the same double; no exponent below 1E+15.
std::string NumberText(double number);

// "2019-06-01" and "12:00:00".
std::string DateText(const SystemTime& time);
std::string TimeText(const SystemTime& time);

}  // namespace qb
