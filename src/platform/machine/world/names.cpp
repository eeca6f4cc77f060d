#include "platform/machine/world/names.h"

#include <algorithm>

namespace qb::machine {

namespace {

// In characters, with the closing zero: of a relative path, and of one that begins at a root, which Windows is given in
// its extended form.
constexpr std::size_t kMaxPath = 260, kMaxExtendedPath = 32767;
constexpr std::size_t kLongestName = 255;
constexpr std::string_view kExtended = "\\\\?\\";
constexpr char32_t kStrayUnit = 0xDC00;  // + byte, for a byte that is no UTF-8

bool Letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool ShortCharacter(char c) {
  return Letter(c) || (c >= '0' && c <= '9') || (static_cast<unsigned char>(c) >= 0x80);
}
char Capital(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool IsName(std::string_view part, bool wild) {
  return part.find_first_of(wild ? ":|" : "<>:\"|*?") == std::string_view::npos && Utf16Length(part) <= kLongestName &&
         std::none_of(part.begin(), part.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

// Whatever stands behind a dot or a colon does not count.
bool IsDevice(std::string_view part) {
  constexpr std::string_view kDevices[] = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
  std::string name = FoldName(part.substr(0, part.find_first_of(".:")));
  name.resize(name.find_last_not_of(' ') + 1);
  const bool port =
      name.size() == 4 && (name.starts_with("COM") || name.starts_with("LPT")) && name[3] >= '1' && name[3] <= '9';
  return port || std::find(std::begin(kDevices), std::end(kDevices), name) != std::end(kDevices);
}

}  // namespace

std::string ToUtf16Bytes(std::string_view utf8) {
  std::string bytes;
  auto put = [&bytes](char32_t unit) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>((unit >> 8) & 0xFF);
  };
  while (!utf8.empty()) {
    const std::string_view before = utf8;
    const char32_t c = TakeCharacter(utf8);
    const std::string_view taken = before.substr(0, before.size() - utf8.size());
    if (c >= kStrayByte || (c >= kStrayUnit + 0x80 && c <= kStrayUnit + 0xFF)) {
      for (char byte : taken) put(kStrayUnit + static_cast<unsigned char>(byte));
    } else {
      for (char16_t unit : qb::ToUtf16(taken)) put(unit);
    }
  }
  return bytes;
}

std::string FromUtf16Bytes(std::string_view bytes) {
  std::string text;
  std::u16string run;
  auto end_run = [&] {
    text += ToUtf8(run);
    run.clear();
  };
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto unit =
        static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) | (static_cast<unsigned char>(bytes[i + 1]) << 8));
    const bool stray = unit >= kStrayUnit + 0x80 && unit <= kStrayUnit + 0xFF;
    const bool low = !run.empty() && run.back() >= 0xD800 && run.back() < 0xDC00;  // the second half of a pair
    if (stray && !low) {
      end_run();
      PutCharacter(kStrayByte + (unit - kStrayUnit), text);
    } else {
      run += unit;
    }
  }
  end_run();
  return text;
}

bool FromRoot(std::string_view path) {
  if (path.starts_with(kExtended)) path.remove_prefix(kExtended.size());
  return path.size() >= 3 && Letter(path[0]) && path[1] == ':' && (path[2] == '\\' || path[2] == '/');
}

Result<ParsedPath> ParsePath(std::string_view path, const ParsedPath& current, bool pattern) {
  if (path.find_first_not_of(' ') == std::string_view::npos) return Error::PathNotFound;
  if (path.find('\0') != std::string_view::npos) return Error::InvalidName;
  const bool extended = path.starts_with(kExtended);
  std::string text(path.substr(extended ? kExtended.size() : 0));
  if (!extended) std::replace(text.begin(), text.end(), '/', '\\');
  std::string_view rest = text;
  if (rest.starts_with("\\\\")) return Error::PathNotFound;  // a machine has no network

  const std::size_t length = Utf16Length(path);
  if (length >= kMaxExtendedPath) return Error::FilenameTooLong;
  if (length >= kMaxPath && !FromRoot(path)) return Error::PathNotFound;

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
  parsed.closing_backslash = rest.ends_with('\\');

  while (!rest.empty()) {
    const std::size_t cut = std::min(rest.find('\\'), rest.size());
    const bool last = cut == rest.size();
    std::string part(rest.substr(0, cut));
    rest.remove_prefix(std::min(cut + 1, rest.size()));
    if (!extended && (part.empty() || part == ".")) continue;
    if (!extended && part == "..") {
      if (!parsed.parts.empty()) parsed.parts.pop_back();
      continue;
    }
    if (part.empty()) continue;
    const bool wild = pattern && last;
    if (last && !extended) {
      const std::size_t kept = part.find_last_not_of(". ") + 1;
      // "*." asks for names without an extension.
      const bool no_extension = wild && part.back() == '.' && kept != 0 && part[kept - 1] == '*';
      part.resize(kept);
      if (no_extension) part.back() = '<';
      if (part.empty()) {
        parsed.closing_backslash = true;
        continue;
      }
      parsed.device = IsDevice(part);
      if (parsed.device)
        part.resize(part.find_first_of(".:") == std::string::npos ? part.size() : part.find_first_of(".:"));
    } else if (!extended && part.back() == '.') {
      part.pop_back();
    }
    if (part == "." || part == ".." || !IsName(part, wild)) return Error::InvalidName;
    parsed.parts.push_back(std::move(part));
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
