#include "platform/utf16.h"

#include <gtest/gtest.h>

#include "platform/text_buffer.h"

namespace qb {
namespace {

TEST(Utf16, EveryRunOfUnitsSurvivesTheWayThereAndBack) {
  // Alone, in front of each other and twice: ends of all ranges, both kinds of surrogates, pairs.
  const char16_t units[] = {1,      0x7F,   0x80,   0x7FF,  0x800,  0xD7FF, 0xD800,
                            0xDBFF, 0xDC00, 0xDFFF, 0xE000, 0xFF0E, 0xFFFF};
  for (char16_t a : units) {
    for (char16_t b : units) {
      for (char16_t c : units) {
        const std::u16string name{a, b, c};
        const std::string utf8 = ToUtf8(name);
        EXPECT_EQ(ToUtf16(utf8), name);
        EXPECT_EQ(Utf16Length(utf8), name.size());
      }
    }
  }
}

TEST(Utf16, OnlyTheShortestFormIsACharacter) {
  // Else a dot or a backslash could pass every check of the text and be one in the path.
  const struct {
    const char* utf8;
    std::u16string utf16;
  } rows[] = {
      {"\xC0\xAE\xC1\x9C", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xE0\x80\xAE", u"\uFFFD\uFFFD\uFFFD"},
      {"\xF0\x80\x81\x9C"
       "a",
       u"\uFFFD\uFFFD\uFFFD\uFFFDa"},
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"a\xE2\x82", u"a\uFFFD\uFFFD"},
      {"\xF0\x9F\x97\x91\xFF", u"\U0001F5D1\uFFFD"},
  };
  for (const auto& row : rows) EXPECT_EQ(ToUtf16(row.utf8), row.utf16) << row.utf8;
}

TEST(TextBuffers, CountCharactersAndCutBetweenThem) {
  const std::string text = "a\xC3\xBC\xF0\x9F\x97\x91z";  // 1 + 1 + 2 + 1 characters
  const std::pair<std::size_t, std::string> cut[] = {
      {0, ""}, {1, ""}, {3, text.substr(0, 3)}, {4, text.substr(0, 3)}, {5, text.substr(0, 7)}, {6, text}};
  for (const auto& [size, kept] : cut) {
    TextBuffer whole(size), part(size);
    EXPECT_EQ(whole.Fill(text), size == 6 ? 5u : 6u) << size;
    EXPECT_EQ(whole.text(), size == 6 ? text : "") << size;
    EXPECT_EQ(part.FillCut(text), Utf16Length(kept)) << size;
    EXPECT_EQ(part.text(), kept) << size;
  }
}

}  // namespace
}  // namespace qb
