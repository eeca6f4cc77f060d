#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/rehearsal.h"

namespace qb {
namespace {

// The setting that keeps a window on the screen when it is off; the words below for none.
constexpr std::string_view kAlways = "always", kNever = "never";

constexpr struct {
  std::string_view class_name, title, setting;
} kWindows[] = {
    {"IEFrame", "News", "BK_IE"},
    {"ApplicationFrameWindow", "Mail", "BK_IE"},
    {"AOL Frame25", "", "BK_AOL"},
    {"MSN6 Window", "MS", "BK_MSN"},
    {"MSN6 Window", "M", kNever},
    {"MozillaWindowClass", "Fx", "BK_Netscape"},
    {"MozillaWindowClass", "\xC3\x84", kNever},  // one character, two bytes
    {"MozillaWindowClass", "", kNever},
    {"MozillaUIWindowClass", "", "BK_Netscape"},
    {"Chrome_XPFrame", "", "BK_Chrome"},
    {"Chrome_WidgetWin_1", "", "BK_Chrome"},
    {"Chat View", "", "BK_Chrome"},
    {"Main View", "", "BK_Chrome"},
    {"{1C03B488-D53B-4a81-97F8-754559640193}", "", "BK_Safari"},
    {"__oxFrame.class__", "", "BK_AOLIM"},
    {"YSearchMenuWndClass", "", "BK_YahooIM"},
    {"MSNMSBLClass", "", "BK_MSNIM"},
    {"MSBLWindowClass", "", "BK_MSNIM"},
    {"IMWindowClass", "", "BK_MSNIM"},
    {"PageWindowClass", "", "BK_MSNIM"},
    {"CabinetWClass", "Documents", kAlways},
    {"YahooBuddyMain", "", kAlways},
    {"IMClass", "", kAlways},
    {"AIM_IMessage", "", kAlways},
    {"Yahoo! BrMain class", "", kAlways},
    {"MSBLClass", "", kAlways},
    {"Chrome_WidgetWin_0", "", kAlways},
    {"Windows.UI.Core.CoreWindow", "", kAlways},
    {"YahooBuddyfrmMain", "", kNever},
    {"c", "", kNever},
    {"iexplore", "News", kNever},
    {"ieframe", "News", kNever},  // the case counts
    {"Notepad", "Buddy - ICQ", kNever},
    {"#32770", "my bUddy list", kAlways},
    {"#32770", "Message Session with a friend", kAlways},
    {"#32770", "Save - as", kAlways},
    {"#32770", "icq", kAlways},
    {"#32770", "Welcome to the table", "BK_PartyPoker"},
    {"#32770", "PartyPoker.com: lobby", "BK_PartyPoker"},
    {"#32770", "Welcome to ICQ - chat", "BK_PartyPoker"},  // the messengers' marks do not save it
    {"#32770", "Welcome", kNever},
    {"#32770", "Print", kNever},
    {"#32770", "", kNever},
};

constexpr std::string_view kSettings[] = {"BK_IE",     "BK_AOL",        "BK_MSN",         "BK_Netscape",
                                          "BK_AOLIM",  "BK_YahooIM",    "BK_MSNIM",       "BK_Chrome",
                                          "BK_Safari", "BK_PartyPoker", "BK_GoldenPalace"};

std::string Quoted(std::string_view word) {
  return " \"" + std::string(word) + "\"";
}

// One round for each setting that is off, and one with all of them on.
TEST(BossKey, HidesEachWindowByItsOwnSettingAlone) {
  std::string script = "start\n";
  for (const auto& row : kWindows) {
    script += "window open" + Quoted(row.class_name) + Quoted(row.title) + "\n";
  }
  std::vector<std::string_view> off(std::begin(kSettings), std::end(kSettings));
  off.push_back("");
  for (std::string_view setting : off) {
    const std::string value =
        "reg add \"HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData\" " + std::string(setting) + " sz ";
    const std::string read = "do Get_Quillbarrow_Settings\n";
    if (!setting.empty()) script.append(value).append("0\n").append(read);
    script += "do Hide_Boss_Windows\nwindows\ndo Show_Boss_Windows\nexpect windows lacks hidden\n";
    if (!setting.empty()) script.append(value).append("1\n").append(read);
  }
  test::Rehearsal rehearsal;
  const std::vector<std::string> lines = rehearsal.Hold(script);

  constexpr std::size_t kCount = std::size(kWindows);
  ASSERT_EQ(lines.size(), kCount * (1 + off.size()));  // the handles first
  for (std::size_t round = 0; round < off.size(); ++round) {
    for (std::size_t i = 0; i < kCount; ++i) {
      const auto& row = kWindows[i];
      const bool hidden = row.setting != kNever && row.setting != off[round];
      EXPECT_EQ(lines[kCount * (1 + round) + i].ends_with(" hidden"), hidden)
          << row.class_name << " \"" << row.title << "\" with " << off[round] << " off";
    }
  }
}

TEST(BossKey, HidesAndBringsBackThousandsOfWindows) {
  constexpr int kPairs = 1000;
  std::string script = "start\n";
  for (int i = 0; i < kPairs; ++i) script += "window open Chrome_WidgetWin_1 Page\nwindow open Notepad Text\n";
  test::Rehearsal rehearsal;
  const std::vector<std::string> lines =
      rehearsal.Play(script + "chord 1 32\nwindows\nwindow close #1\nwindow close #1001\nchord 1 32\nwindows\n");
  ASSERT_EQ(lines.size(), 6U * kPairs - 2);  // the handles first
  const auto hidden = [&](int from, int to) {
    return std::count_if(lines.begin() + from, lines.begin() + to,
                         [](const std::string& line) { return line.ends_with(" hidden"); });
  };
  EXPECT_EQ(hidden(2 * kPairs, 4 * kPairs), kPairs);
  EXPECT_EQ(hidden(4 * kPairs, 6 * kPairs - 2), 0) << "two of them were closed meanwhile";
}

}  // namespace
}  // namespace qb
