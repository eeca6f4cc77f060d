#include "settings/catalogue.h"

#include <iterator>

#include "runtime/text.h"

namespace qb {

namespace {

using enum Setting;
using enum SettingKind;

constexpr SettingRow kRows[] = {
    {AutoRun, "AutoRun", Number, "1", true, FirstRun::StoreOne},
    {AK_InternetExplorer, "AK_InternetExplorer", Number, "1", true},
    {AK_MozillaFirefox, "AK_MozillaFirefox", Number, "1", true},
    {AK_GoogleChrome, "AK_GoogleChrome", Number, "1", true},
    {AK_AppleSafari, "AK_AppleSafari", Number, "1", true},
    {AK_AOL, "AK_AOL", Number, "1", true},
    {AK_UseTimer, "AK_UseTimer", Number, "0", true},
    {AK_Timer, "AK_Timer", Number, "0", true},
    {AK_WinStart, "AK_WinStart", Number, "1", true, FirstRun::StoreOne},
    {Disable_AK, "Disable_AK", Number, "0", true},
    {Stealth, "Stealth", Number, "0", true},
    {HideIcon, "HideIcon", Number, "0", true},
    {BK_IE, "BK_IE", Number, "1", true},
    {BK_AOL, "BK_AOL", Number, "1", true},
    {BK_MSN, "BK_MSN", Number, "1", true},
    {BK_Netscape, "BK_Netscape", Number, "1", true},
    {BK_AOLIM, "BK_AOLIM", Number, "1", true},
    {BK_YahooIM, "BK_YahooIM", Number, "1", true},
    {BK_MSNIM, "BK_MSNIM", Number, "1", true},
    {BK_Chrome, "BK_Chrome", Number, "1", true},
    {BK_Safari, "BK_Safari", Number, "1", true},
    {BK_PartyPoker, "BK_PartyPoker", Number, "1", true},
    {BK_GoldenPalace, "BK_GoldenPalace", Number, "1", true},
    {BK_HotKey, "BK_HotKey", Number, "0", true},
    // Deliberate: the text box on the File Shredder tab reads the same key with the default 7.
    {HistoryOW, "HistoryOW", Number, "21", true},
    {HistoryRemoved, "HistoryRemoved", Double, "0", true},
    {ThumbsKilled, "ThumbsKilled", Long, "0", true},
    {ThumbPicsCountTotal, "ThumbPicsCountTotal", Long, "0", true},
    {SaveCookieCount, "SaveCookieCount", Long, "0", false},
    {HomePageProt, "HomePageProt", Number, "0", true},
    {CloseQB, "CloseQB", Number, "", false},
    {QBBuild, "QBBuild", Text, "", false},
    {WinVer, "WinVer", Number, "3", true},
    {IEVer, "IEVer", Number, "0", true},
    {NetscapeDir, "NetscapeDir", Text, "", true},
    {NetscapeVer, "NetscapeVer", Number, "0", true, FirstRun::StoreZero},
    {NoNS, "NoNS", Number, "0", true, FirstRun::StoreZero},
    {AutoClear, "AutoClear", Number, "0", true, FirstRun::StoreZero},
    {NoAOL, "NoAOL", Number, "0", true, FirstRun::StoreZero},
    // Deliberate: without a stored folder the load takes the text "0", General Setup the empty one.
    {AOLdir, "AOLdir", Text, "0", true},
    {MSN8Profile, "MSN8Profile", Text, "", true},
    {REGindexdatCookies, "REGindexdatCookies", Number, "0", true},
    {REGindexdatCache, "REGindexdatCache", Number, "0", true},
};
static_assert(std::size(kRows) == kSettingCount);

constexpr bool InTheOrderOfSetting() {
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    if (kRows[i].setting != static_cast<Setting>(i)) return false;
  }
  return true;
}
static_assert(InTheOrderOfSetting(), "a setting is an index of its row");

}  // namespace

std::span<const SettingRow> SettingsCatalogue() {
  return kRows;
}

const SettingRow& RowOf(Setting setting) {
  return kRows[static_cast<std::size_t>(setting)];
}

const SettingRow* FindSetting(std::string_view name) {
  for (const SettingRow& row : kRows) {
    if (SameText(row.name, name)) return &row;
  }
  return nullptr;
}

}  // namespace qb
