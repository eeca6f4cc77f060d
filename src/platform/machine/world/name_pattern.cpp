#include "platform/machine/world/name_pattern.h"

#include <utility>
#include <vector>

#include "platform/machine/world/names.h"

namespace qb::machine {

namespace {

std::u32string Characters(std::string_view utf8) {
  std::u32string characters;
  while (!utf8.empty()) characters += TakeCharacter(utf8);
  return characters;
}

}  // namespace

std::u32string NtPattern(std::string_view pattern) {
  std::u32string nt = Characters(FoldName(pattern == "*.*" ? "*" : pattern));
  for (std::size_t i = 0; i < nt.size(); ++i) {
    const char32_t next = i + 1 < nt.size() ? nt[i + 1] : 0;
    if (nt[i] == '?')
      nt[i] = '>';
    else if (nt[i] == '*' && next == '.')
      nt[i] = '<';
    else if (nt[i] == '.' && (next == '?' || next == '*' || next == '<'))
      nt[i] = '"';
  }
  return nt;
}

bool HasWildcards(std::u32string_view nt_pattern) {
  return nt_pattern.find_first_of(U"*<>\"") != std::u32string_view::npos;
}

bool MatchesNtPattern(std::u32string_view nt_pattern, std::string_view name) {
  if (nt_pattern == U"*") return true;
  const std::u32string text = Characters(name);
  const std::size_t last_dot = text.rfind('.');
  // here[i]: the rest of the name is matched by the pattern from i on; next[i]: so is the rest without its first.
  std::vector<char> here(nt_pattern.size() + 1), next(nt_pattern.size() + 1);
  for (std::size_t at = text.size() + 1; at-- > 0;) {
    std::swap(here, next);
    const bool end = at == text.size();
    here.back() = end ? 1 : 0;
    for (std::size_t i = nt_pattern.size(); i-- > 0;) {
      bool matched = false;
      const bool none = here[i + 1] != 0, one = !end && next[i + 1] != 0, more = !end && next[i] != 0;
      switch (nt_pattern[i]) {
        case '*':
          matched = none || more;
          break;
        case '<':
          matched = none || (more && at != last_dot);
          break;
        case '>':
          matched = one || (none && (end || text[at] == '.'));
          break;
        case '"':
          matched = end ? none : one && text[at] == '.';
          break;
        default:
          matched = one && text[at] == nt_pattern[i];
      }
      here[i] = matched ? 1 : 0;
    }
  }
  return here[0] != 0;
}

}  // namespace qb::machine
