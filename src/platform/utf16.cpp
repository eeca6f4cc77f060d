#include "platform/utf16.h"

namespace qb {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstLead = 0xD800, kFirstTrail = 0xDC00, kPastSurrogates = 0xE000;
constexpr char32_t kFirstOfTwoUnits = 0x10000, kLastCharacter = 0x10FFFF;

}  // namespace

char32_t TakeCharacter(std::string_view& utf8) {
  const auto lead = static_cast<unsigned char>(utf8[0]);
  const std::size_t length = lead < 0x80                   ? 1
                             : lead >= 0xC2 && lead < 0xE0 ? 2
                             : lead >= 0xE0 && lead < 0xF0 ? 3
                             : lead >= 0xF0 && lead < 0xF5 ? 4
                                                           : 0;
  auto stray = [&] {
    utf8.remove_prefix(1);
    return kStrayByte + lead;
  };
  if (length == 0 || length > utf8.size()) return stray();
  char32_t c = length == 1 ? lead : lead & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(utf8[i]);
    if ((next & 0xC0) != 0x80) return stray();
    c = (c << 6) | (next & 0x3F);
  }
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, kFirstOfTwoUnits};
  if (c < kSmallest[length] || c > kLastCharacter) return stray();
  utf8.remove_prefix(length);
  return c;
}

void PutCharacter(char32_t c, std::string& utf8) {
  auto put = [&utf8](char32_t byte) { utf8 += static_cast<char>(byte); };
  auto put_rest = [&put](char32_t bits) { put(0x80 | (bits & 0x3F)); };
  if (c >= kStrayByte) {
    put(c - kStrayByte);
  } else if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | (c >> 6));
    put_rest(c);
  } else if (c < kFirstOfTwoUnits) {
    put(0xE0 | (c >> 12));
    put_rest(c >> 6);
    put_rest(c);
  } else {
    put(0xF0 | (c >> 18));
    put_rest(c >> 12);
    put_rest(c >> 6);
    put_rest(c);
  }
}

std::u16string ToUtf16(std::string_view utf8) {
  std::u16string units;
  units.reserve(utf8.size());
  while (!utf8.empty()) {
    char32_t c = TakeCharacter(utf8);
    if (c >= kStrayByte) c = kReplacement;
    if (c < kFirstOfTwoUnits) {
      units += static_cast<char16_t>(c);
    } else {
      units += static_cast<char16_t>(kFirstLead + ((c - kFirstOfTwoUnits) >> 10));
      units += static_cast<char16_t>(kFirstTrail + (c & 0x3FF));
    }
  }
  return units;
}

std::string ToUtf8(std::u16string_view utf16) {
  std::string utf8;
  utf8.reserve(utf16.size());
  for (std::size_t i = 0; i < utf16.size(); ++i) {
    char32_t c = utf16[i];
    const char32_t next = i + 1 < utf16.size() ? utf16[i + 1] : 0;
    if (c >= kFirstLead && c < kFirstTrail && next >= kFirstTrail && next < kPastSurrogates) {
      c = kFirstOfTwoUnits + ((c - kFirstLead) << 10) + (next - kFirstTrail);
      ++i;
    }
    PutCharacter(c, utf8);
  }
  return utf8;
}

std::size_t Utf16Length(std::string_view utf8) {
  std::size_t units = 0;
  while (!utf8.empty()) {
    const char32_t c = TakeCharacter(utf8);
    units += c >= kFirstOfTwoUnits && c < kStrayByte ? 2 : 1;
  }
  return units;
}

}  // namespace qb
