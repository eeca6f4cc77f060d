// What a start reads into memory.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/rehearsal.h"
#include "tests/support/tab_traces.h"

namespace qb {
namespace {

// Each key with what memory holds after a start that finds none of them, and that was not the first.
constexpr const char* kUnset =
    "AutoRun 1 AK_InternetExplorer 1 AK_MozillaFirefox 1 AK_GoogleChrome 1 AK_AppleSafari 1 AK_AOL 1 AK_UseTimer 0 "
    "AK_Timer 0 AK_WinStart 1 Disable_AK 0 Stealth 0 HideIcon 0 BK_IE 1 BK_AOL 1 BK_MSN 1 BK_Netscape 1 BK_AOLIM 1 "
    "BK_YahooIM 1 BK_MSNIM 1 BK_Chrome 1 BK_Safari 1 BK_PartyPoker 1 BK_GoldenPalace 1 BK_HotKey 0 HistoryOW 21 "
    "HistoryRemoved 0 ThumbsKilled 0 ThumbPicsCountTotal 0 HomePageProt 0 WinVer 3 NetscapeVer 0 NoNS 0 AutoClear 0 "
    "NoAOL 0 AOLdir 0 MSN8Profile \"\" REGindexdatCookies 0 REGindexdatCache 0";

TEST(Start, ReadsEachKeyIntoItsOwnVariable) {
  const std::string add = "reg add " + test::places::kStore + " ";
  std::string unset = add + "QBBuild sz 1\nstart\n", other_type, stored, expected;
  int number = 10;
  std::istringstream rows(kUnset);
  for (std::string key, value; rows >> key >> value;) {
    unset += "expect get " + key + " is " + value + "\n";
    other_type.append(add).append(key).append(" expand_sz 5\n");
    stored.append(add).append(key).append(" sz ").append(std::to_string(number)).append("\n");
    expected += "expect get " + key + " is " + std::to_string(number++) + "\n";
  }
  // What was not the first start stores no more than this.
  const std::string all =
      "expect reg show " + test::places::kStore + " is \"CloseQB sz 0\" \"IEVer sz 5\" \"QBBuild sz 2019.1.0\"\n";
  test::Rehearsal().Hold(unset + all + "reboot\n" + other_type + unset);
  test::Rehearsal().Hold(stored + unset.substr(0, unset.find("expect")) + expected);
}

}  // namespace
}  // namespace qb
