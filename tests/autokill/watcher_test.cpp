#include <gtest/gtest.h>

#include "tests/support/rehearsal.h"

namespace qb {
namespace {

constexpr std::string_view kSettings[] = {"AK_InternetExplorer", "AK_MozillaFirefox", "AK_GoogleChrome",
                                          "AK_AppleSafari", "AK_AOL"};

constexpr struct {
  std::string_view class_name, flag, setting;  // no setting: always runs
} kClasses[] = {
    {"IEFrame", "IE_Open", "AK_InternetExplorer"},
    {"ApplicationFrameWindow", "IE_Open", "AK_InternetExplorer"},
    {"AOL Frame25", "AOL_Open", "AK_AOL"},
    {"MozillaUIWindowClass", "Firefox_Open", "AK_MozillaFirefox"},
    {"MozillaWindowClass", "Firefox_Open", "AK_MozillaFirefox"},
    {"Chrome_XPFrame", "Chrome_Open", "AK_GoogleChrome"},
    {"Chrome_WidgetWin_0", "Chrome_Open", "AK_GoogleChrome"},
    {"Chrome_WidgetWin_1", "Chrome_Open", "AK_GoogleChrome"},
    {"{1C03B488-D53B-4a81-97F8-754559640193}", "Safari_Open", "AK_AppleSafari"},
    {"MSN6 Window", "MSN_Open", ""},
    {"Yahoo! BrfrmMain class", "YahooBrowser_Open", ""},
    {"_AOL_CBROWSER", "AOLPane_Open", ""},
};

// Opens a window of the class and closes it again, with its own setting on and all others off or the
// other way round, and gives whether that started a run.
bool StartsRun(std::string_view class_name, std::string_view flag, std::string_view setting, bool on) {
  const std::string store = "reg add \"HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData\" ";
  std::string script = store + "QBBuild sz 1\n" + store + "WIN_StartRun sz 1\n";
  for (std::string_view other : kSettings) {
    script += store + std::string(other) + " sz " + ((other == setting) == on ? "1\n" : "0\n");
  }
  const std::string name(class_name), open_flag(flag);
  script += "start\nclose\nwindow open \"" + name + "\" Page\nadvance 1s\nexpect get " + open_flag +
            " is true\nexpect get AutoKillHoldCount is 0\nwindow close \"" + name + "\"\nadvance 1s\nexpect get " +
            open_flag + " is false\nexpect get AutoKillHoldCount is 1\nexpect get AutoKillHold is false\nlog\n";
  test::Rehearsal rehearsal;
  const std::vector<std::string> lines = rehearsal.Hold(script, name);
  return lines.size() > 1;  // the handle first
}

TEST(Watcher, RunsForEachClassByTheSettingOfItsFamily) {
  for (const auto& row : kClasses) {
    EXPECT_TRUE(StartsRun(row.class_name, row.flag, row.setting, true)) << row.class_name;
    EXPECT_EQ(StartsRun(row.class_name, row.flag, row.setting, false), row.setting.empty()) << row.class_name;
  }
}

}  // namespace
}  // namespace qb
