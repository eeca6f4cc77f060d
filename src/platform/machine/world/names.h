// Names as Windows compares and checks them: without regard to case, in paths with a drive, and as 8.3 names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/types.h"
#include "platform/utf16.h"
#include "runtime/text.h"

namespace qb::machine {

// What names that Windows takes for the same have in common.
inline std::string FoldName(std::string_view name) {
  return UpperCase(name);
}
inline bool SameName(std::string_view a, std::string_view b) {
  return SameText(a, b);
}

// UTF-16LE bytes of a UTF-8 text and back. Bytes that are no UTF-8 become lone surrogates, so that every
// byte string survives the way there and back.
std::string ToUtf16Bytes(std::string_view utf8);
std::string FromUtf16Bytes(std::string_view bytes);

struct ParsedPath {
  char drive = 'C';
  std::vector<std::string> parts;  // without "." and ".."
  bool closing_backslash = false;
  bool device = false;  // the last part names a device, as "nul.txt": no file can have the name
};

// "C:\…", with or without the prefix of an extended path.
bool FromRoot(std::string_view path);

// Resolves a path against the current drive and folder. As Windows does, it drops all closing dots and blanks of the
// whole path, and one closing dot of a part in the middle; an extended path is taken as it is. InvalidName for
// characters that no name may hold (wildcards pass in the last part if `pattern`), for a zero character, and for a part
// of more than 255 characters; PathNotFound for a relative path of 260 characters or more, FilenameTooLong for any of
// 32,767.
Result<ParsedPath> ParsePath(std::string_view path, const ParsedPath& current, bool pattern);

// "C:\a\b"; a root is "C:\".
std::string PathText(const ParsedPath& path);

// The 8.3 name if the name is one already, in capitals; else empty.
std::string OwnShortName(std::string_view name);
// The parts that a made 8.3 name is put together from: up to six letters and digits, and the extension
// with its dot, both in capitals.
struct ShortParts {
  std::string stem, extension;
};
ShortParts ShortPartsOf(std::string_view name);

}  // namespace qb::machine
