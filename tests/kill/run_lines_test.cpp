// The order and the text of every log line of the three kinds of run, and what the runs count.
#include <gtest/gtest.h>

#include "kill/class_table.h"
#include "kill/log_step.h"
#include "tests/support/rehearsal.h"

namespace qb {
namespace {

using test::Rehearsal;
using Lines = std::vector<std::string>;

// A machine on which every group has what its sequencer asks for.
constexpr const char* kEverythingInstalled =
    "reg add \"HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData\" AOLdir sz C:\\AOL\\\n"
    "file \"C:\\Program Files\\Safari\\Safari.exe\" MZ\n"
    "file \"C:\\Program Files\\Google\\Chrome\\Application\\chrome.exe\" MZ\n"
    "reg add \"HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData\" QBBuild sz 1.0.0\n";

// Ticks boxes of a tab that has to be in front for it.
std::string Tick(int tab, const Lines& boxes) {
  std::string script = "choose SftTabs1 " + std::to_string(tab) + "\n";
  for (const std::string& box : boxes) script += "tick " + box + "\n";
  return script;
}

constexpr TraceGroup kTabs[] = {TraceGroup::InternetExplorer, TraceGroup::Firefox, TraceGroup::Chrome,
                                TraceGroup::Safari,           TraceGroup::Windows, TraceGroup::AOL};

Lines BoxesOf(TraceGroup group) {
  Lines boxes;
  for (const TraceClass& row : ClassesOf(group)) boxes.emplace_back(row.box);
  return boxes;
}

const Lines kIndexDat = {" - Killing INDEX.DAT files... in use!  All the INDEX.DAT files will be killed on reboot!"};

Lines Join(std::initializer_list<Lines> parts) {
  Lines all;
  for (const Lines& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

const Lines kFirefoxLines = {
    " - Killing Mozilla FireFox URL address droplist box... success!",
    " - Killing Mozilla FireFox history file... success!",
    " - Killing Mozilla FireFox cache...(please wait)",
    " - Killing Mozilla FireFox cookies... success!",
    " - Killing Mozilla FireFox AutoComplete... success!",
    " - Killing Mozilla FireFox Download List... success!",
    " - Killing Mozilla Firefox Jump List Icons/Cache files... success!",
    " - Killing Mozilla Firefox Session data files... success!",
};
const Lines kChromeLines = {
    " - Killing Google Chrome Visited Sites history... success!",
    " - Killing Google Chrome History files... success!",
    " - Killing Google Chrome Cache files... success!",
    " - Killing Google Chrome Cookie files... success!",
    " - Killing Google Chrome AutoComplete files... success!",
    " - Killing Google Chrome Archived History file... success!",
    " - Killing Google Chrome Thumbnail files... success!",
    " - Killing Google Chrome HTML5 LocalStorage files... success!",
    " - Killing Google Chrome Jump List Icons files... success!",
    " - Killing Google Chrome Session data files... success!",
    " - Killing Google Chrome flash cookie data files files... success!",
};
Lines SafariLines(const char* top_sites) {
  return {
      " - Killing Apple Safari History files... success!",
      " - Killing Apple Safari Cache files... success!",
      " - Killing Apple Safari Cookie files... success!",
      " - Killing Apple Safari Download files... success!",
      " - Killing Apple Safari AutoComplete files... success!",
      " - Killing Apple Safari Thumbnail files... success!",
      top_sites,
      " - Killing Apple Safari HTML5 LocalStorage files... success!",
      " - Killing Apple Safari Session data files files... success!",
  };
}
constexpr const char* kTopSites = " - Killing Apple Safari Top Sites files... success!";
constexpr const char* kThumbnailsAgain = " - Killing Apple Safari Thumbnail files... success!";
const Lines kIeStart = {
    " - Killing Internet Explorer's URL address droplist box... success!",
    " - Killing Internet Explorer's history file... success!",
    " - Killing Internet Explorer's temp files...(please wait)",
    " - Killing Internet Explorer's cookies... success!",
};
const Lines kIeAutoComplete = {" - Killing Internet Explorer AutoComplete database... success!"};
const Lines kIeGoogleAndSearch = {
    " - Killing Google Bar history list... success!",
    " - Killing Internet Explorer's Search History droplist... success!",
};
const Lines kIeRecovery = {" - Killing Internet Explorer crash recovery data files... success!"};
const Lines kEdge = {" - Killing MS Edge browser history, cache, cookies and Web Cache... success!"};
const Lines kWindowsStart = {
    " - Killing Windows Start button, Run droplist box... success!",
    " - Killing Windows Recent Documents list... success!",
};
const Lines kWindowsRest = {
    " - Killing Windows Media Player recent lists... success!", " - Killing Windows Recycle Bin... success!",
    " - Killing Windows Fragmented Files (*.CHK)... success!",  " - Killing Windows TEMP folder... success!",
    " - Killing MS Office recent file lists... success!",
};
const Lines kSearching = {" - Searching..."};
const Lines kProtected = {" - Successful!  Your privacy is protected."};
constexpr const char* kAolDroplist = " - Killing AOL's droplist... success!";
constexpr const char* kAolCache = " - Killing AOL's Cache... success!";
constexpr const char* kAolCookies = " - Killing AOL's Cookies... success!";
constexpr const char* kAolHistory = " - Killing AOL's History files... success!";

TEST(RunLines, AManualRunOfEveryAllBox) {
  Rehearsal rehearsal;
  const Lines lines = rehearsal.Play(
      std::string(kEverythingInstalled) + "start\n" + Tick(0, {"chkIE_all"}) + Tick(1, {"chkNS_all"}) +
      Tick(2, {"chkChrome_All"}) + Tick(3, {"chkSafari_All"}) + Tick(4, {"chkWin_All"}) + Tick(5, {"chkWin_AOLall"}) +
      "click cmdKILLALL\nexpect get ClassesDone is 0\nexpect get SftTabs1.Tab is 9\nlog\n");
  EXPECT_EQ(lines, Join({kSearching,
                         kFirefoxLines,
                         kChromeLines,
                         SafariLines(kTopSites),
                         {kAolCache, kAolCookies, kAolDroplist, kAolHistory},
                         kIeStart,
                         kIeGoogleAndSearch,
                         kIeRecovery,
                         kIeAutoComplete,
                         kEdge,
                         kIndexDat,
                         kWindowsStart,
                         kIndexDat,
                         kIndexDat,
                         kWindowsRest,
                         kProtected}));
}

TEST(RunLines, AManualRunOfEverySingleBox) {
  Rehearsal rehearsal;
  std::string script = std::string(kEverythingInstalled) + "start\n";
  for (int tab = 0; tab < 6; ++tab) script += Tick(tab, BoxesOf(kTabs[tab]));
  const Lines lines = rehearsal.Play(script + "click cmdKILLALL\nlog\n");
  EXPECT_EQ(lines, Join({kSearching,
                         kFirefoxLines,
                         kChromeLines,
                         SafariLines(kThumbnailsAgain),
                         {kAolHistory, kAolCache, kAolCookies, kAolDroplist},
                         kIeStart,
                         kIeAutoComplete,
                         kIndexDat,
                         kIeRecovery,
                         kIeGoogleAndSearch,
                         kEdge,
                         kWindowsStart,
                         kIndexDat,
                         kIndexDat,
                         kWindowsRest,
                         kProtected}));
}

TEST(RunLines, AnUnattendedRunOfEveryKey) {
  Rehearsal rehearsal;
  std::string script = kEverythingInstalled;
  for (const TraceClass& row : TraceClasses()) {
    if (row.key.empty()) continue;
    script +=
        "reg add \"HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData\" " + std::string(row.key) + " sz 1\n";
  }
  const Lines lines = rehearsal.Play(script + "start\ndo Do_Start_Up 2\nexpect get pBar.Max is 30\nlog\n");
  const Lines firefox(kFirefoxLines.begin() + 1, kFirefoxLines.end());  // the droplist goes without a line
  EXPECT_EQ(lines, Join({kSearching,
                         firefox,
                         kChromeLines,
                         SafariLines(kTopSites),
                         kWindowsStart,
                         kWindowsRest,
                         kIeStart,
                         kIeAutoComplete,
                         kIeGoogleAndSearch,
                         kIeRecovery,
                         kEdge,
                         kIndexDat,
                         // The lines of cookies and cache stand the other way round than their keys.
                         {kAolDroplist, kAolCache, kAolCookies, kAolHistory},
                         kProtected}));
}

TEST(RunLines, EveryCodeHasItsLine) {
  const ThumbTotals none, some{7, 3, 2};
  for (int code = 1; code <= 54; ++code) EXPECT_EQ(LogText(code, none).substr(0, 3), " - ") << code;
  for (int code : {-1, 0, 55, 32767}) EXPECT_EQ(LogText(code, none), "") << code;
  EXPECT_EQ(LogText(29, some), " - Killed and Shredded 7 images in 2 hidden Thumbs.db files!");
  EXPECT_EQ(LogText(30, some), " - Found 7 images in 3 hidden Thumbs.db files!  NONE REMOVED!");
  EXPECT_EQ(LogText(30, none), " - Found 0 images in 0 hidden Thumbs.db files.");
}

}  // namespace
}  // namespace qb
