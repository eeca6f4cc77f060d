#include "app/rehearse/console/values.h"

#include <gtest/gtest.h>

namespace qb::rehearse {
namespace {

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
