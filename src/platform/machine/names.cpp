#include "platform/machine/names.h"

#include <algorithm>
#include <clocale>
#include <cwctype>

namespace qb::machine {

namespace {

constexpr std::size_t kMaxPath = 260;  // with the closing zero
constexpr char32_t kLoneLow = 0xDC00;  // + byte, for a byte that is no UTF-8

// A locale of its own, so that upper case does not depend on the one of the process.
class UnicodeLocale {
 public:
  UnicodeLocale() : locale_(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {}
  ~UnicodeLocale() {
    if (locale_ != nullptr) freelocale(locale_);
  }
  UnicodeLocale(const UnicodeLocale&) = delete;
  UnicodeLocale& operator=(const UnicodeLocale&) = delete;
  char32_t Upper(char32_t c) const {
    return locale_ == nullptr ? c : static_cast<char32_t>(towupper_l(static_cast<wint_t>(c), locale_));
  }

 private:
  locale_t locale_;
};

// Takes one character off the front; a byte that begins none comes as kLoneLow + byte.
char32_t TakeCharacter(std::string_view& text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const std::size_t length = lead < 0x80                   ? 1
                             : lead >= 0xC2 && lead < 0xE0 ? 2
                             : lead >= 0xE0 && lead < 0xF0 ? 3
                             : lead >= 0xF0 && lead < 0xF5 ? 4
                                                           : 0;
  auto broken = [&] {
    text.remove_prefix(1);
    return kLoneLow + lead;
  };
  if (length == 0 || length > text.size()) return broken();
  char32_t c = length == 1 ? lead : lead & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(text[i]);
    if ((next & 0xC0) != 0x80) return broken();
    c = (c << 6) | (next & 0x3F);
  }
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  if (c < kSmallest[length] || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) return broken();
  text.remove_prefix(length);
  return c;
}

void PutCharacter(char32_t c, std::string& text) {
  if (c >= kLoneLow + 0x80 && c <= kLoneLow + 0xFF) {
    text += static_cast<char>(c - kLoneLow);
  } else if (c < 0x80) {
    text += static_cast<char>(c);
  } else if (c < 0x800) {
    text += static_cast<char>(0xC0 | (c >> 6));
    text += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    text += static_cast<char>(0xE0 | (c >> 12));
    text += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    text += static_cast<char>(0xF0 | (c >> 18));
    text += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    text += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (c & 0x3F));
  }
}

bool Letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool ShortCharacter(char c) {
  return Letter(c) || (c >= '0' && c <= '9') || (static_cast<unsigned char>(c) >= 0x80);
}
char Capital(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

std::string FoldName(std::string_view name) {
  std::string folded;
  folded.reserve(name.size());
  const bool ascii = std::all_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  if (ascii) {
    for (char c : name) folded += Capital(c);
    return folded;
  }
  static const UnicodeLocale locale;
  while (!name.empty()) PutCharacter(locale.Upper(TakeCharacter(name)), folded);
  return folded;
}

bool SameName(std::string_view a, std::string_view b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    // From the first character on that is not ASCII, capitals may differ in length.
    if (static_cast<unsigned char>(a[i]) >= 0x80 || static_cast<unsigned char>(b[i]) >= 0x80) {
      return FoldName(a.substr(i)) == FoldName(b.substr(i));
    }
    if (Capital(a[i]) != Capital(b[i])) return false;
  }
  return a.size() == b.size();
}

std::string ToUtf16(std::string_view utf8) {
  std::string bytes;
  auto put = [&bytes](char32_t unit) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>((unit >> 8) & 0xFF);
  };
  while (!utf8.empty()) {
    const char32_t c = TakeCharacter(utf8);
    if (c < 0x10000) {
      put(c);
    } else {
      put(0xD800 + ((c - 0x10000) >> 10));
      put(0xDC00 + ((c - 0x10000) & 0x3FF));
    }
  }
  return bytes;
}

std::string FromUtf16(std::string_view utf16) {
  std::string text;
  auto unit = [&utf16](std::size_t i) {
    return static_cast<char32_t>(static_cast<unsigned char>(utf16[i]) |
                                 (static_cast<unsigned char>(utf16[i + 1]) << 8));
  };
  for (std::size_t i = 0; i + 1 < utf16.size(); i += 2) {
    char32_t c = unit(i);
    if (c >= 0xD800 && c < 0xDC00 && i + 3 < utf16.size() && unit(i + 2) >= 0xDC00 && unit(i + 2) < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10) + (unit(i + 2) - 0xDC00);
      i += 2;
    }
    PutCharacter(c, text);
  }
  return text;
}

Result<ParsedPath> ParsePath(std::string_view path, const ParsedPath& current, bool pattern) {
  if (path.empty()) return Error::PathNotFound;
  if (path.size() >= kMaxPath) return Error::PathNotFound;
  std::string text(path);
  std::replace(text.begin(), text.end(), '/', '\\');
  std::string_view rest = text;
  if (rest.substr(0, 4) == "\\\\?\\") rest.remove_prefix(4);
  if (rest.substr(0, 2) == "\\\\") return Error::PathNotFound;  // a machine has no network

  ParsedPath parsed;
  parsed.drive = current.drive;
  if (rest.size() >= 2 && Letter(rest[0]) && rest[1] == ':') {
    parsed.drive = Capital(rest[0]);
    rest.remove_prefix(2);
  }
  if (!rest.empty() && rest[0] == '\\')
    rest.remove_prefix(1);
  else if (parsed.drive == current.drive)
    parsed.parts = current.parts;  // relative to the current folder
  parsed.closing_backslash = !rest.empty() && rest.back() == '\\';

  while (!rest.empty()) {
    const std::size_t cut = rest.find('\\');
    std::string_view part = rest.substr(0, cut);
    rest.remove_prefix(cut == std::string_view::npos ? rest.size() : cut + 1);
    if (part.empty() || part == ".") continue;
    if (part == "..") {
      if (!parsed.parts.empty()) parsed.parts.pop_back();
      continue;
    }
    // Closing dots and blanks are dropped from every part.
    const std::size_t kept = part.find_last_not_of(". ");
    if (kept == std::string_view::npos) continue;
    const bool wild = pattern && rest.empty();
    const std::string_view refused = wild ? "<>:\"|" : "<>:\"|*?";
    if (part.find_first_of(refused) != std::string_view::npos) return Error::InvalidName;
    if (std::any_of(part.begin(), part.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; })) {
      return Error::InvalidName;
    }
    // In a pattern a dot at the end has a meaning of its own.
    parsed.parts.emplace_back(wild ? part : part.substr(0, kept + 1));
  }
  return parsed;
}

std::string PathText(const ParsedPath& path) {
  std::string text{path.drive, ':'};
  if (path.parts.empty()) text += '\\';
  for (const std::string& part : path.parts) text += '\\' + part;
  return text;
}

std::string OwnShortName(std::string_view name) {
  const std::size_t dot = name.find('.');
  const std::string_view stem = name.substr(0, dot);
  const std::string_view extension = dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
  auto short_enough = [](std::string_view part, std::size_t most) {
    return part.size() <= most && std::all_of(part.begin(), part.end(), [](char c) {
             return static_cast<unsigned char>(c) < 0x80 &&
                    (ShortCharacter(c) || std::string_view("!#$%&'()-@^_`{}~").find(c) != std::string_view::npos);
           });
  };
  if (stem.empty() || !short_enough(stem, 8) || !short_enough(extension, 3)) return {};
  return FoldName(name);
}

ShortParts ShortPartsOf(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  auto letters = [](std::string_view part, std::size_t most) {
    std::string kept;
    for (char c : part) {
      if (kept.size() < most && ShortCharacter(c) && static_cast<unsigned char>(c) < 0x80) kept += Capital(c);
    }
    return kept;
  };
  ShortParts parts;
  parts.stem = letters(name.substr(0, dot), 6);
  const std::string extension = dot == std::string_view::npos ? std::string() : letters(name.substr(dot + 1), 3);
  if (!extension.empty()) parts.extension = '.' + extension;
  return parts;
}

}  // namespace qb::machine
