// Texts as the single-byte pages and lists of Western Windows hold them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qb {

// The byte of a character in Windows-1252; nothing for one that the page lacks.
std::optional<char> Windows1252Byte(char32_t character);

// UTF-8 as the bytes of an HTML page: Windows-1252, and a numeric character reference for what it lacks.
// Nothing else is escaped. A byte that is no UTF-8 becomes a question mark.
std::string HtmlText(std::string_view text);

}  // namespace qb
