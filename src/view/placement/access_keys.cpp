#include "view/placement/access_keys.h"

#include <cctype>
#include <optional>
#include <set>

namespace qb {

namespace {

bool IsKey(char c) {
  const auto letter = static_cast<unsigned char>(c);
  return letter < 0x80 && std::isalnum(letter) != 0;
}

char KeyOf(char c) {
  return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
}

// The key that a caption brings. Two ampersands are one that is shown.
std::optional<char> OwnKey(const std::string& caption) {
  for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != '&') continue;
    if (caption[i + 1] != '&') return KeyOf(caption[i + 1]);
    ++i;
  }
  return std::nullopt;
}

std::optional<std::size_t> FreeLetter(const std::string& caption, const std::set<char>& taken, bool first_of_word) {
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (!IsKey(caption[i]) || taken.count(KeyOf(caption[i])) != 0) continue;
    if (!first_of_word || i == 0 || caption[i - 1] == ' ') return i;
  }
  return std::nullopt;
}

}  // namespace

std::vector<std::string> WithAccessKeys(std::vector<std::string> captions) {
  std::set<char> taken;
  for (const std::string& caption : captions) {
    if (const auto key = OwnKey(caption)) taken.insert(*key);
  }
  for (std::string& caption : captions) {
    if (OwnKey(caption)) continue;
    auto place = FreeLetter(caption, taken, true);
    if (!place) place = FreeLetter(caption, taken, false);
    if (!place) continue;
    taken.insert(KeyOf(caption[*place]));
    caption.insert(*place, 1, '&');
  }
  return captions;
}

}  // namespace qb
