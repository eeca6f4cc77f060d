#include "runtime/html_text.h"

#include <cstdint>

#include "platform/utf16.h"

namespace qb {

std::string HtmlText(System& system, std::string_view text) {
  std::string html;
  html.reserve(text.size());
  while (!text.empty()) {
    std::string_view rest = text;
    const char32_t c = TakeCharacter(rest);
    const std::string_view character = text.substr(0, text.size() - rest.size());
    text = rest;
    const auto survives_the_page = [&] {
      return system.MultiByteToWideChar(system.WideCharToMultiByte(character).value_or({})).value_or({}) == character;
    };
    if (c < 0x80 || (c < kStrayByte && survives_the_page())) {
      html += character;
    } else if (c >= kStrayByte) {
      html += '?';
    } else {
      html += "&#" + std::to_string(static_cast<std::uint32_t>(c)) + ";";
    }
  }
  return html;
}

}  // namespace qb
