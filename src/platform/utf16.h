// Text as UTF-8, which the program speaks, and as UTF-16, which Windows keeps. Any sequence of UTF-16 units survives
// the way to UTF-8 and back: an unpaired surrogate stands there as three bytes.
#pragma once

#include <string>
#include <string_view>

namespace qb {

// What TakeCharacter gives for a byte that begins no character: this and the byte.
inline constexpr char32_t kStrayByte = 0x110000;

// Takes one character off the front of a text that is not empty: a code point, an unpaired surrogate, or a stray byte.
// Nothing but the shortest form of a character counts as one.
char32_t TakeCharacter(std::string_view& utf8);
// The other way; a stray byte is put as that byte.
void PutCharacter(char32_t c, std::string& utf8);

// A stray byte becomes U+FFFD.
std::u16string ToUtf16(std::string_view utf8);
std::string ToUtf8(std::u16string_view utf16);
// Units that a text takes as UTF-16: what Windows calls its characters.
std::size_t Utf16Length(std::string_view utf8);

}  // namespace qb
