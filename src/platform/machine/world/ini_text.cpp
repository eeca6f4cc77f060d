#include "platform/machine/world/ini_text.h"

#include <algorithm>

namespace qb::machine {

namespace {

// "%XX" stands for a byte that would end a name, a value or a line.
bool Plain(char c, bool in_name) {
  return static_cast<unsigned char>(c) >= 0x20 && c != '%' && !(in_name && (c == '=' || c == '[' || c == ';'));
}

std::string Encode(std::string_view text, bool in_name) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string encoded;
  for (char c : text) {
    if (Plain(c, in_name)) {
      encoded += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      encoded += '%';
      encoded += kDigits[byte >> 4];
      encoded += kDigits[byte & 15];
    }
  }
  return encoded;
}

int Digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

bool Decode(std::string_view text, std::string& decoded) {
  decoded.clear();
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      decoded += text[i];
      continue;
    }
    if (i + 2 >= text.size() || Digit(text[i + 1]) < 0 || Digit(text[i + 2]) < 0) return false;
    decoded += static_cast<char>(Digit(text[i + 1]) * 16 + Digit(text[i + 2]));
    i += 2;
  }
  return true;
}

}  // namespace

bool ReadIni(std::string_view text, std::vector<IniSection>& sections, std::string& problem) {
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::size_t cut = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, cut);
    text.remove_prefix(std::min(cut + 1, text.size()));
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (line.empty() || line.front() == ';') continue;
    auto fail = [&](const char* what) {
      problem = "line " + std::to_string(number) + ": " + what;
      return false;
    };
    if (line.front() == '[') {
      if (line.back() != ']') return fail("the name of a section does not end");
      sections.push_back({std::string(line.substr(1, line.size() - 2)), {}});
      continue;
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || sections.empty()) return fail("neither a section nor a name and a value");
    std::string name, value;
    if (!Decode(line.substr(0, equals), name) || !Decode(line.substr(equals + 1), value)) {
      return fail("a % without two hexadecimal digits");
    }
    sections.back().lines.emplace_back(std::move(name), std::move(value));
  }
  return true;
}

std::string WriteIni(const std::vector<IniSection>& sections) {
  std::string text;
  for (const IniSection& section : sections) {
    if (!text.empty()) text += '\n';
    text += '[' + section.name + "]\n";
    for (const auto& [name, value] : section.lines) text += Encode(name, true) + '=' + Encode(value, false) + '\n';
  }
  return text;
}

}  // namespace qb::machine
