// What a start takes away, what it stores, and what it reads into memory.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/rehearsal.h"
#include "tests/support/tab_traces.h"

namespace qb {
namespace {

using test::Files;
using test::places::kStore;

void ExpectHeld(const std::string& script) {
  test::Rehearsal rehearsal;
  rehearsal.Play(script);
  EXPECT_EQ(rehearsal.status(), rehearse::Status::Held) << rehearsal.printed();
}

TEST(Start, TakesTheLeftoversOfItsDataFolderAlone) {
  const std::string data = "C:\\Users\\user\\AppData\\Local\\Quillbarrow";
  ExpectHeld(Files(data, {"INDEX.DAT",
                          "INDEX2.DAT",
                          "INDEX3.DAT",
                          "INDEX4.DAT",
                          "INDEX5.DAT",
                          "INDEX6.DAT",
                          "INDEX7.DAT",
                          "QBFernledger.html",
                          "QBFernledgerSuspect1.html",
                          "QBFernledgerSuspect2.html",
                          "QBFernledgerSuspect3.html",
                          "QBFernledgerSuspect4.html",
                          "QBFernledgerSuspect5.html",
                          "QBFernledgerSuspect6.html",
                          "QBFernledgerSuspect7.html",
                          "QBFernledger_InternetTempFiles.html",
                          "Fernledger_thumbnails.html",
                          "Fernledger_illegal.html",
                          "Fernledger_videos.html",
                          "Fernledger_teen.html",
                          "Fernledger_summary.html",
                          "Fernledger_sports.html",
                          "Fernledger_social.html",
                          "Fernledger_news.html",
                          "Fernledger_images.html",
                          "Fernledger_images2.html",
                          "Fernledger_history.html",
                          "Fernledger_gambling.html",
                          "Fernledger_cookies.html"}) +
             Files(data, {"INDEX1.DAT", "INDEX8.DAT", "QBFernledgerSuspect8.html", "Fernledger_thumbdb.html"}) +
             "start\nexpect files " + data +
             " is Fernledger_thumbdb.html INDEX1.DAT INDEX8.DAT logo.gif QBFernledgerSuspect8.html\n");
}

// Each key with what memory holds after a start that finds none of them, and that was not the first.
constexpr const char* kUnset =
    "AutoRun 1 AK_InternetExplorer 1 AK_MozillaFirefox 1 AK_GoogleChrome 1 AK_AppleSafari 1 AK_AOL 1 AK_UseTimer 0 "
    "AK_Timer 0 AK_WinStart 1 Disable_AK 0 Stealth 0 HideIcon 0 BK_IE 1 BK_AOL 1 BK_MSN 1 BK_Netscape 1 BK_AOLIM 1 "
    "BK_YahooIM 1 BK_MSNIM 1 BK_Chrome 1 BK_Safari 1 BK_PartyPoker 1 BK_GoldenPalace 1 BK_HotKey 0 HistoryOW 21 "
    "HistoryRemoved 0 ThumbsKilled 0 ThumbPicsCountTotal 0 HomePageProt 0 WinVer 3 NetscapeVer 0 NoNS 0 AutoClear 0 "
    "NoAOL 0 AOLdir 0 MSN8Profile \"\" REGindexdatCookies 0 REGindexdatCache 0";

TEST(Start, ReadsEachKeyIntoItsOwnVariable) {
  const std::string add = "reg add " + kStore + " ";
  std::string unset = add + "QBBuild sz 1\nstart\n", other_type, stored, expected;
  int number = 10;
  std::istringstream rows(kUnset);
  for (std::string key, value; rows >> key >> value;) {
    unset += "expect get " + key + " is " + value + "\n";
    other_type += add + key + " expand_sz 5\n";
    stored += add + key + " sz " + std::to_string(number) + "\n";
    expected += "expect get " + key + " is " + std::to_string(number++) + "\n";
  }
  // What was not the first start stores no more than this.
  const std::string all = "expect reg show " + kStore + " is \"CloseQB sz 0\" \"IEVer sz 5\" \"QBBuild sz 2019.1.0\"\n";
  ExpectHeld(unset + all + "reboot\n" + other_type + unset);
  ExpectHeld(stored + unset.substr(0, unset.find("expect")) + expected);
}

TEST(Start, StoresWhatTheFirstOneIsToStore) {
  const std::string first =
      "start\nexpect reg show " + kStore +
      " is \"AK_WinStart sz 1\" \"AOLdir sz C:\\AOL\\\" \"AutoClear sz 0\" \"AutoRun sz 1\" \"CloseQB sz 0\" "
      "\"IEVer sz 5\" \"NetscapeVer sz 0\" \"NoAOL sz 0\" \"NoNS sz 0\" \"QBBuild sz 2019.1.0\" \"WinVer sz 7\"\n"
      "expect timers is \"Timer1 1000 on\" \"Timer2 1000 on\" \"Timer_HomePage 5000 off\" \"Timer_AutoKill 60000 off\" "
      "\"Timer_DisableScriptDebug 60000 on\"\n";
  const std::string run =
      "expect reg show HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Run is \"Quillbarrow sz ";
  ExpectHeld(
      "reg add \"HKLM\\Software\\America Online\\America Online\\CurrentVersion\" AppPath sz C:\\AOL\n" + first + run +
      "\"\"C:\\Program Files\\Quillbarrow\\Quillbarrow.exe\"\" /STARTUP\"\n"
      // Each text with its closing zero.
      "expect calls RegSetValueExA has \"\"\"Quillbarrow\"\", 0, 1, <56 bytes>, 56)\" \"\"\"QBBuild\"\", 0, 1, <9 "
      "bytes>, 9)\"\nreboot\n"
      // The Run value stays as somebody made it; one that is no text is none.
      "reg add HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Run Quillbarrow sz mine\nstart\n" +
      run +
      "mine\"\nreboot\nreg add HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Run Quillbarrow dword 1\nstart\n" +
      run + "\"\"C:\\Program Files\\Quillbarrow\\Quillbarrow.exe\"\" /STARTUP\"\n");
}

// A logo that is there is not replaced; the old layout has the folder elsewhere.
TEST(Start, MakesItsDataFolder) {
  ExpectHeld(
      "file C:\\Users\\user\\AppData\\Local\\Quillbarrow\\logo.gif mine\nstart\n"
      "expect text C:\\Users\\user\\AppData\\Local\\Quillbarrow\\logo.gif is mine\nreboot\nwindows 6.3\n"
      "mkdir \"C:\\Users\\user\\Local Settings\\Application Data\"\nstart\n"
      "expect get Data_Folder is \"C:\\Users\\user\\Local Settings\\Application Data\\Quillbarrow\"\n"
      "expect files \"C:\\Users\\user\\Local Settings\" is \"Application Data\\\" \"Application Data\\Quillbarrow\\\" "
      "\"Application Data\\Quillbarrow\\logo.gif\"\n"
      // Moved are the folders of Internet Explorer that do not lie where the oldest Windows has them: one is enough.
      "expect get IEFoldersMoved is true\nreboot\n"
      "mkdir C:\\WINDOWS\\Cookies\nmkdir \"C:\\WINDOWS\\Temporary Internet Files\"\n"
      "reg add \"HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders\" Cookies sz "
      "C:\\Windows\\Cookies\n"
      "start\nexpect get IEFoldersMoved is true\nreboot\n"
      "reg add \"HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders\" Cache sz "
      "\"C:\\windows\\Temporary Internet Files\\\"\n"
      "start\nexpect get IEFoldersMoved is false\nreboot\n"
      "reg add \"HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders\" Cookies sz C:\\Users\n"
      "start\nexpect get IEFoldersMoved is true\n");
}

}  // namespace
}  // namespace qb
