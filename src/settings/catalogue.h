// The one list of the program's settings, but for the selection of trace classes, whose keys stand in
// the table of the classes.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace qb {

enum class Setting {
  // Auto-Kill
  AutoRun,
  AK_InternetExplorer,
  AK_MozillaFirefox,
  AK_GoogleChrome,
  AK_AppleSafari,
  AK_AOL,
  AK_UseTimer,
  AK_Timer,
  AK_WinStart,
  Disable_AK,
  Stealth,
  HideIcon,
  // Boss Key
  BK_IE,
  BK_AOL,
  BK_MSN,
  BK_Netscape,
  BK_AOLIM,
  BK_YahooIM,
  BK_MSNIM,
  BK_Chrome,
  BK_Safari,
  BK_PartyPoker,
  BK_GoldenPalace,
  BK_HotKey,
  // everything else
  HistoryOW,
  HistoryRemoved,
  ThumbsKilled,
  ThumbPicsCountTotal,
  SaveCookieCount,
  HomePageProt,
  CloseQB,
  QBBuild,
  WinVer,
  IEVer,
  NetscapeDir,
  NetscapeVer,
  NoNS,
  AutoClear,
  NoAOL,
  AOLdir,
  MSN8Profile,
  REGindexdatCookies,
  REGindexdatCache,

  Count
};
inline constexpr std::size_t kSettingCount = static_cast<std::size_t>(Setting::Count);

enum class SettingKind {
  Number,  // a signed 16-bit number in decimal digits; switches are 1 for on
  Long,    // the same with 32 bits
  Double,
  Text
};

// What the very first run on an account stores, so that the key exists after it.
enum class FirstRun {
  Nothing,
  StoreOne,   // the value becomes 1 and is stored
  StoreZero,  // stored if its value is 0
};

struct SettingRow {
  Setting setting;
  std::string_view name;
  SettingKind kind;
  std::string_view load_default;  // what the load of the main window takes for a key that is absent
  bool loaded;                    // read by that load
  FirstRun first_run = FirstRun::Nothing;
};

// In the order of Setting, which is the order of reading.
std::span<const SettingRow> SettingsCatalogue();
const SettingRow& RowOf(Setting setting);
// By name without regard to case, as the store compares; null for none.
const SettingRow* FindSetting(std::string_view name);

}  // namespace qb
