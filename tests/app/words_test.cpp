#include "app/rehearse/console/words.h"

#include <gtest/gtest.h>

#include "app/rehearse/console/values.h"

namespace qb::rehearse {
namespace {

std::optional<std::vector<std::string>> Texts(std::string_view line) {
  auto words = SplitWords(line);
  if (!words) return std::nullopt;
  return Arguments(*words, line).Texts();
}

TEST(Words, QuotesAndBlanks) {
  using List = std::vector<std::string>;
  struct Case {
    const char* line;
    std::optional<List> words;
  };
  const Case cases[] = {
      {"a  b\tc ", List{"a", "b", "c"}},
      {"say \"a b\" \"\"", List{"say", "a b", ""}},
      {"\"he said \"\"x\"\"\"", List{"he said \"x\""}},
      {"\"C:\\a b\\\" +r", List{"C:\\a b\\", "+r"}},
      {"", List{}},
      {"a\"b", std::nullopt},
      {"\"a", std::nullopt},
      {"\"a\"b", std::nullopt},
      {"\"\"\"", std::nullopt},
  };
  for (const Case& c : cases) EXPECT_EQ(Texts(c.line), c.words) << c.line;
}

TEST(Values, TextsOfFilesGoBothWays) {
  const std::pair<const char*, const char*> cases[] = {
      {"plain", "plain"}, {"na\xEFve", "na\u00EFve"}, {"\x80 \x9F", "\u20AC \u0178"}, {"\x81", "\u0081"}};
  for (const auto& [bytes, text] : cases) {
    EXPECT_EQ(FromWindows1252(bytes), text);
    EXPECT_EQ(ToWindows1252(text), bytes);
  }
  // What Windows-1252 cannot hold, and what is no UTF-8, stays.
  for (const char* text : {"\u4E2D", "\xFF\xFE", "\xC3", "\xE2\x82", "\xC0\x80", "\U0001F600"}) {
    EXPECT_EQ(ToWindows1252(text), text);
  }
}

TEST(Values, Durations) {
  EXPECT_EQ(ParseDuration("90s"), 90'000u);
  EXPECT_EQ(ParseDuration("5ms"), 5u);
  EXPECT_EQ(ParseDuration("2h"), 7'200'000u);
  for (const char* text : {"", "s", "5", "-5s", "5d", "5 s", "99999999999999999999ms", "9999999999h"}) {
    EXPECT_EQ(ParseDuration(text), std::nullopt) << text;
  }
}

TEST(Values, LinesPartAtBothKindsOfEnd) {
  using List = std::vector<std::string>;
  EXPECT_EQ(SplitLines("a\r\nb\n\nc"), (List{"a", "b", "", "c"}));
  EXPECT_EQ(SplitLines("\r\n"), (List{""}));
  EXPECT_EQ(SplitLines("a\r"), (List{"a\r"}));
  EXPECT_EQ(SplitLines(""), List{});
  EXPECT_EQ(OnOneLine("a\r\nb\nc\rd"), "a{nl}b{nl}c{nl}d");
}

}  // namespace
}  // namespace qb::rehearse
