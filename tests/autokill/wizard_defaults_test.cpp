// What the wizard recommends, with each browser there and not there, and where its boxes are stored.
#include <gtest/gtest.h>

#include "kill/class_table.h"
#include "tests/support/rehearsal.h"

namespace qb {
namespace {

struct Browser {
  TraceGroup group;
  std::string_view here, absent;  // commands before the start
};
constexpr std::string_view kStore = "reg add \"HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData\" ";
constexpr std::array<Browser, 4> kBrowsers{
    {{TraceGroup::Chrome, "file C:\\Users\\user\\AppData\\Local\\Google\\Chrome\\Application\\chrome.exe MZ\n", ""},
     {TraceGroup::Safari, "file \"C:\\Program Files\\Safari\\Safari.exe\" MZ\n", ""},
     // A path counts from its fourth character on.
     {TraceGroup::Firefox, "NetscapeDir sz C:\\F\n", "NetscapeDir sz C:\\\n"},
     {TraceGroup::AOL, "AOLdir sz C:\\A\n", "AOLdir sz C:\\\n"}}};
constexpr std::string_view kWindowsOn[] = {"WIN_StartRun", "WIN_RecentDoc", "REGMediaPlayer", "REGrecyclebin"};
constexpr std::string_view kLeftAlone = "MSOfficeRecent", kLeftAloneWithoutChrome = "Chrome_FlashCookies";

bool IsOn(const TraceClass& row, unsigned here, bool before) {
  if (row.key == kLeftAlone) return before;
  if (row.group == TraceGroup::InternetExplorer) return true;
  if (row.group == TraceGroup::Windows) {
    return std::find(std::begin(kWindowsOn), std::end(kWindowsOn), row.key) != std::end(kWindowsOn);
  }
  for (std::size_t i = 0; i < kBrowsers.size(); ++i) {
    if (kBrowsers[i].group != row.group) continue;
    const bool present = (here >> i & 1) != 0;
    return !present && row.key == kLeftAloneWithoutChrome ? before : present;
  }
  return false;
}

// `here` has a bit for each browser; all boxes stand at `before` when the defaults come, but one that is always ticked.
void Check(unsigned here, bool before) {
  std::string script = std::string(kStore) + "QBBuild sz 1\n" + std::string(kStore) + "IE_history sz 1\n";
  for (std::size_t i = 0; i < kBrowsers.size(); ++i) {
    const std::string_view commands = (here >> i & 1) != 0 ? kBrowsers[i].here : kBrowsers[i].absent;
    if (commands.find(" sz ") != std::string_view::npos) script += kStore;
    script += commands;
  }
  std::string expected;
  for (const TraceClass& row : TraceClasses()) {
    if (row.key.empty()) continue;
    if (before) script += std::string(kStore) + std::string(row.key) + " sz 1\n";
    const std::string_view box = row.key == "REGAOLCache" ? "chkWin_AOLcache" : row.box;
    expected += "expect get frmAutoKill." + std::string(box) + ".Value is " + (IsOn(row, here, before) ? "1\n" : "0\n");
  }
  test::Rehearsal rehearsal;
  // The start finds a folder of Firefox by itself; what is read behind it counts.
  rehearsal.Hold(script + "start\ndo Get_Quillbarrow_Settings\ndo autoKill_Click\nclick cmd_Default\n" + expected +
                     "expect setting MSEdge is " + (before ? "1" : "(absent)") + "\n",
                 "here " + std::to_string(here) + (before ? ", before" : ""));
}

TEST(Wizard, RecommendsWhatIsHere) {
  for (unsigned here = 0; here < 1U << kBrowsers.size(); ++here) {
    Check(here, false);
    Check(here, true);
  }
}

// Opened with a selection, turned round box by box, saved. In each round the keys differ by a bit of their place, so no
// two of them are alike throughout.
TEST(Wizard, StoresEachBoxUnderItsOwnKey) {
  constexpr TraceGroup kPages[] = {TraceGroup::InternetExplorer, TraceGroup::Chrome, TraceGroup::Firefox,
                                   TraceGroup::Safari,           TraceGroup::AOL,    TraceGroup::Windows};
  for (unsigned bit = 0; bit < 6; ++bit) {
    std::string stored = std::string(kStore) + "QBBuild sz 1\n", shown, turned, saved;
    unsigned place = 0;
    for (std::size_t page = 0; page < std::size(kPages); ++page) {
      turned += "choose SftTabs2 " + std::to_string(page) + "\n";
      for (const TraceClass& row : ClassesOf(kPages[page])) {
        if (row.key.empty()) continue;
        const bool on = (++place >> bit & 1) != 0;
        std::string box(row.box);
        // Deliberate: each of these two stands for the key of the other.
        if (row.key == "REGAOLCookies") box = "chkWin_AOLcache";
        if (row.key == "REGAOLCache") box = "chkWin_AOLcookies";
        stored += std::string(kStore) + std::string(row.key) + (on ? " sz 1\n" : " sz 0\n");
        shown += "expect get frmAutoKill." + box + ".Value is " + (on ? "1\n" : "0\n");
        turned += (on ? "untick frmAutoKill." : "tick frmAutoKill.") + box + "\n";
        saved += "expect setting " + std::string(row.key) + (on ? " is 0\n" : " is 1\n");
      }
    }
    turned += "choose frmAutoKill.SftTabs1 2\n";
    for (const char* key :
         {"AK_InternetExplorer", "AK_MozillaFirefox", "AK_GoogleChrome", "AK_AppleSafari", "AK_AOL"}) {
      const bool on = (++place >> bit & 1) != 0;
      stored.append(kStore).append(key).append(on ? " sz 1\n" : " sz 0\n");
      shown.append("expect get chk").append(key).append(on ? ".Value is 1\n" : ".Value is 0\n");
      turned.append(on ? "untick chk" : "tick chk").append(key).append("\n");
      for (const char* question : {"expect setting ", "expect get "})
        saved.append(question).append(key).append(on ? " is 0\n" : " is 1\n");
    }
    stored.append("start\nclick autoKillsetup\n").append(shown).append(turned).append("click cmd_OK\n").append(saved);
    test::Rehearsal rehearsal;
    EXPECT_TRUE(rehearsal.Hold(stored).empty()) << bit;
  }
}

}  // namespace
}  // namespace qb
