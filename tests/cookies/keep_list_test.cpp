// The keep list from its file through the Cookie Manager to the passes that spare what it names.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include "cookies/keep_matcher.h"
#include "tests/support/rehearsal.h"

namespace qb {
namespace {

using test::Rehearsal;

const std::string kFile = "C:\\Users\\user\\AppData\\Local\\Quillbarrow\\qb.dat";
const std::string kCookies = "C:\\Users\\user\\AppData\\Roaming\\Microsoft\\Windows\\Cookies";

using Lines = std::vector<std::string>;

std::string CookieFiles(std::initializer_list<const char*> names) {
  std::string script;
  for (const char* name : names) script += "file " + kCookies + "\\" + name + " x\n";
  return script;
}

// Rows and texts of few letters, so that rows begin and end with parts of each other.
TEST(KeepMatcher, FindsWhatALoopOverTheRowsFinds) {
  std::mt19937 random(7);
  auto word = [&](std::size_t longest) {
    std::string text(random() % longest + 1, 'a');
    for (char& c : text) c = static_cast<char>('a' + random() % 3);
    return text;
  };
  for (int round = 0; round < 300; ++round) {
    std::vector<std::string> rows(random() % 5 + 1);
    for (std::string& row : rows) row = word(7);
    const KeepMatcher matcher(rows);
    for (int texts = 0; texts < 30; ++texts) {
      const std::string text = word(14);
      const bool hit = std::any_of(rows.begin(), rows.end(),
                                   [&](const std::string& row) { return text.find(row) != std::string::npos; });
      EXPECT_EQ(matcher.HitIn(text), hit) << testing::PrintToString(rows) << " " << text;
    }
  }
}

struct KeepFile {
  const char* what;
  std::string bytes;
  Lines rows;   // as the window lists them
  Lines files;  // the cookie files that a pass leaves
};

TEST(KeepList, AnyFileGivesItsRowsAndTheyAreKept) {
  const std::string long_row(1 << 20, 'x');
  const KeepFile cases[] = {
      {"no row", "", {}, {}},
      {"one row", "shop\r\n", {"shop"}, {"me@shop[1].txt"}},
      {"LF alone", "shop\nbank\n", {"shop", "bank"}, {"me@bank[2].txt", "me@shop[1].txt"}},
      {"CR alone", "shop\rbank\r", {"shop", "bank"}, {"me@bank[2].txt", "me@shop[1].txt"}},
      {"no closing line end", "bank\r\nshop", {"bank", "shop"}, {"me@bank[2].txt", "me@shop[1].txt"}},
      {"rows of one and two characters",
       "[\r\nws\r\n",
       {"[", "ws"},
       {"me@bank[2].txt", "Me@NEWS[1].TXT.txt", "me@shop[1].txt"}},
      {"a row of three, in other case", "NeW\r\n", {"NeW"}, {"Me@NEWS[1].TXT.txt"}},
      {"a bracket", "bank[2]\r\n", {"bank[2]"}, {"me@bank[2].txt"}},
      {"commas part", "shop,bank\r\n", {"shop", "bank"}, {"me@bank[2].txt", "me@shop[1].txt"}},
      {"quotes go, blanks before too", "  \"bank\"\r\n", {"bank"}, {"me@bank[2].txt"}},
      {"a lone quote stays", "\"\r\n", {"\""}, {}},
      {"a blank behind stays", "bank \r\n", {"bank "}, {}},
      {"an empty row stands in every path", "\r\n", {""}, {"me@bank[2].txt", "Me@NEWS[1].TXT.txt", "me@shop[1].txt"}},
      {"a zero byte is one like any",
       std::string("ba\0nk\r\nshop\r\n", 13),
       {std::string("ba\0nk", 5), "shop"},
       {"me@shop[1].txt"}},
      {"bytes above 0x7F", "caf\xe9\r\n\xff\xfe\r\n", {"caf\u00e9", "\u00ff\u00fe"}, {}},
      {"a megabyte without a line end", long_row, {long_row}, {}},
  };
  for (const KeepFile& test : cases) {
    Rehearsal rehearsal;
    rehearsal.Play(CookieFiles({"me@shop[1].txt", "me@bank[2].txt", "Me@NEWS[1].TXT.txt"}));
    ASSERT_TRUE(rehearsal.machine().MakeFile(kFile, test.bytes)) << test.what;
    EXPECT_EQ(rehearsal.Play("start\nclick cmdSetCookies\nlist frmCookieManager.List2\n"), test.rows) << test.what;
    EXPECT_EQ(rehearsal.Play("start\ndo Kill_Cookie_Files\nfiles " + kCookies + "\n"), test.files) << test.what;
  }
}

// An error prints nothing, not even an empty line.
TEST(KeepList, ARowWithoutABracketCannotBeCut) {
  Rehearsal rehearsal;
  EXPECT_EQ(rehearsal.Play("start\ndo Strip_Cookie_Suffix shop\ndo Strip_Cookie_Suffix shop[1]\n"
                           "do Strip_Cookie_Suffix [1]\n"),
            (Lines{"shop", ""}));
}

TEST(KeepList, ItsStoredCountIsTheNumberOfRowsWhateverTheirNumber) {
  std::string bytes;
  for (int i = 0; i < 40000; ++i) bytes += "row" + std::to_string(i) + "\r\n";
  Rehearsal rehearsal;
  ASSERT_TRUE(rehearsal.machine().MakeFile(kFile, bytes));
  EXPECT_EQ(rehearsal.Play("start\nclick cmdSetCookies\nclick cmdDonecookies\nsetting SaveCookieCount\n"),
            Lines{"40000"});
}

}  // namespace
}  // namespace qb
