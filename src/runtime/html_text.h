// Texts as pages hold them that are in the system's code page.
#pragma once

#include <string>
#include <string_view>

#include "platform/system.h"

namespace qb {

// The text with a numeric character reference for each character that the page lacks. Nothing else is escaped. A byte
// that is no UTF-8 becomes a question mark.
std::string HtmlText(System& system, std::string_view text);

}  // namespace qb
