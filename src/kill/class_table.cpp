#include "kill/class_table.h"

#include <algorithm>
#include <iterator>

#include "kill/traces/trace_units.h"
#include "runtime/folders.h"
#include "runtime/text.h"

namespace qb {

namespace {

// Sentences that several boxes share.
constexpr std::string_view kTipDroplist = "Clear the Internet Explorer's address bar drop-down box";
constexpr std::string_view kTipHistory =
    "Clear the Internet Explorer's History file which shows all your previous sites you've visted";
constexpr std::string_view kTipCache =
    "Clear the Temporary Internet Files, which stores temp web site files on your hard drive and shows everyone where "
    "you have been surfing, as well as takes up precious hard drive space";
constexpr std::string_view kTipCookies =
    "Clear the Internet Explorer's cookies file, web sites send you cookies to store your personal information on your "
    "computer at which they can access at any time";
constexpr std::string_view kTipAutoComplete =
    "Clears the AutoComplete feature in Internet Explorer, which automatically completes the box when you enter in "
    "forms or addresses";
constexpr std::string_view kTipFirefoxHistory =
    "Clear the Netscape History file which shows all your previous sites you've visted";

using enum TraceGroup;

// clang-format off
constexpr TraceClass kClasses[] = {
    {Firefox, "NS_droplist", "chkNS_droplist", "URL address drop-list box",
     "Clear the Netscape address bar drop-down box", 16,
     [](TraceUnits& units) { units.firefox.Kill_Firefox_Droplist(); }},
    {Firefox, "NS_history", "chkNS_history", "Internet History database / Search history", kTipFirefoxHistory, 17,
     [](TraceUnits& units) { units.firefox.Kill_Firefox_History(); }},
    {Firefox, "NS_cache", "chkNS_cache", "Cache (Temporary Files)",
     "Putting a check here will kill Mozilla Firefox's Temporary Internet Files, which stores temp web site files on "
     "your hard drive and shows everyone where you have been surfing, as well as takes up precious hard drive space", 18,
     [](TraceUnits& units) { units.firefox.Kill_Firefox_Cache(); }},
    {Firefox, "NS_cookies", "chkNS_cookies", "Cookies",
     "Putting a check here will kill Mozilla Firefox's cookies files, web sites send you cookies to store your personal "
     "information on your computer at which they can access at any time", 19,
     [](TraceUnits& units) { units.firefox.Kill_Firefox_Cookies(); }},
    {Firefox, "NS_AutoComplete", "chkNS_AutoComplete", "AutoComplete",
     "Putting a check here will kill Mozilla Firefox's AutoComplete login/form data, which automatically completes the "
     "box when you enter in forms or addresses", 27,
     [](TraceUnits& units) { units.firefox.Kill_Firefox_AutoComplete(); }},
    {Firefox, "NS_DownloadList", "chkNS_DownloadList", "Download List", kTipFirefoxHistory, 28,
     [](TraceUnits& units) { units.firefox.Kill_Firefox_Downloads(); }},
    {Firefox, "NS_JumpListIcons", "chkNS_JumpListIcons", "Jump List Icons / Caches",
     "Putting a check here will kill your Windows 7 Jump List Icons data for Mozilla Firefox.", 48,
     [](TraceUnits& units) { units.firefox.Kill_Firefox_Jump_List(); }},
    {Firefox, "NS_SessionData", "chkNS_SessionData", "Session data", kTipFirefoxHistory, 49,
     [](TraceUnits& units) { units.firefox.Kill_Firefox_Session(); }},

    {Chrome, "Chrome_VisitedLinks", "chkChrome_VisitedLinks", "Visited Links / URL addresses", kTipDroplist, 31,
     [](TraceUnits& units) { units.chrome.Kill_Chrome_Visited_Links(); }},
    {Chrome, "Chrome_HistoryFiles", "chkChrome_HistoryFiles", "Internet history files", kTipHistory, 32,
     [](TraceUnits& units) { units.chrome.Kill_Chrome_History(); }},
    {Chrome, "Chrome_Cache", "chkChrome_Cache", "Cache (Temp Internet Files)", kTipCache, 33,
     [](TraceUnits& units) { units.chrome.Kill_Chrome_Cache(); }},
    {Chrome, "Chrome_Cookies", "chkChrome_Cookies", "Cookies", kTipCookies, 34,
     [](TraceUnits& units) { units.chrome.Kill_Chrome_Cookies(); }},
    {Chrome, "Chrome_AutoComplete", "chkChrome_AutoComplete", "AutoComplete", kTipAutoComplete, 35,
     [](TraceUnits& units) { units.chrome.Kill_Chrome_AutoComplete(); }},
    {Chrome, "Chrome_ArchivedHistoryFile", "chkChrome_ArchivedHistoryFile", "Archived history file", kTipHistory, 36,
     [](TraceUnits& units) { units.chrome.Kill_Chrome_Archived_History(); }},
    {Chrome, "Chrome_Thumbnails", "chkChrome_Thumbnails", "Thumbnails / Favicon.ico",
     "Checking this will kill Google Chrome's stored Favicons of websites you've visited.", 37,
     [](TraceUnits& units) { units.chrome.Kill_Chrome_Thumbnails(); }},
    {Chrome, "Chrome_HTML5", "chkChrome_HTML5", "HTML5 LocalStorage", kTipCookies, 45,
     [](TraceUnits& units) { units.chrome.Kill_Chrome_Local_Storage(); }},
    {Chrome, "Chrome_JumpListIcons", "chkChrome_JumpListIcons", "Jump List Icons", kTipHistory, 46,
     [](TraceUnits& units) { units.chrome.Kill_Chrome_Jump_List(); }},
    {Chrome, "Chrome_SessionData", "chkChrome_SessionData", "Session data", kTipHistory, 47,
     [](TraceUnits& units) { units.chrome.Kill_Chrome_Session(); }},
    {Chrome, "Chrome_FlashCookies", "chkChrome_FlashCookies", "Flash cookies", kTipCookies, 52,
     [](TraceUnits& units) { units.chrome.Kill_Chrome_Flash_Cookies(); }},

    {Safari, "Safari_HistoryFiles", "chkSafari_HistoryFiles", "Internet history files", kTipHistory, 38,
     [](TraceUnits& units) { units.safari.Kill_Safari_History(); }},
    {Safari, "Safari_Cache", "chkSafari_Cache", "Cache (Temp Internet Files)", kTipCache, 39,
     [](TraceUnits& units) { units.safari.Kill_Safari_Cache(); }},
    {Safari, "Safari_Cookies", "chkSafari_Cookies", "Cookies", kTipCookies, 40,
     [](TraceUnits& units) { units.safari.Kill_Safari_Cookies(); }},
    {Safari, "Safari_Downloads", "chkSafari_Downloads", "Downloads", kTipHistory, 41,
     [](TraceUnits& units) { units.safari.Kill_Safari_Downloads(); }},
    {Safari, "Safari_AutoComplete", "chkSafari_AutoComplete", "AutoComplete", kTipAutoComplete, 42,
     [](TraceUnits& units) { units.safari.Kill_Safari_AutoComplete(); }},
    {Safari, "Safari_Thumbnails", "chkSafari_Thumbnails", "Thumbnails / Favicon.ico", kTipCache, 43,
     [](TraceUnits& units) { units.safari.Kill_Safari_Thumbnails(); }},
    // Deliberate: by itself this class writes the line of the one before it.
    {Safari, "Safari_TopSites", "chkSafari_TopSites", "Top Sites", kTipHistory, 43,
     [](TraceUnits& units) { units.safari.Kill_Safari_Top_Sites(); }},
    {Safari, "Safari_HTML5", "chkSafari_HTML5", "HTML5 LocalStorage", kTipCookies, 50,
     [](TraceUnits& units) { units.safari.Kill_Safari_Local_Storage(); }},
    {Safari, "Safari_SessionData", "chkSafari_SessionData", "Session data", kTipHistory, 51,
     [](TraceUnits& units) { units.safari.Kill_Safari_Session(); }},

    // Deliberate: two of these four write their line and remove nothing.
    {AOL, "REGAOLhistory", "chkWin_AOLhistory", "AOL Internet History file", "", 23},
    {AOL, "REGAOLCache", "chkWin_AOLdatabase", "AOL Cache (Temporary files)",
     "Clear the Temporary Internet Files used by AOL, which stores temp web site files on your hard drive and shows "
     "everyone where you have been surfing, as well as takes up precious hard drive space", 10,
     [](TraceUnits& units) { units.aol.Kill_AOL_Cache(); }, true},
    {AOL, "REGAOLCookies", "chkWin_AOLcookies", "AOL Cookies",
     "Clear the AOL cookies file, web sites send you cookies to store your personal information on your computer at "
     "which they can access at any time", 11},
    {AOL, "WIN_AOL", "chkWin_AOL", "URL address drop-list box", "AOL address URL drop-list", 8,
     [](TraceUnits& units) { units.aol.Kill_AOL_Droplist(); }, true},

    {InternetExplorer, "IE_droplist", "chkIE_droplist", "URL address drop-list box", kTipDroplist, 2,
     [](TraceUnits& units) { units.ie.Kill_Typed_URLs(); }, true},
    {InternetExplorer, "IE_history", "chkIE_history", "Internet History file", kTipHistory, 3,
     [](TraceUnits& units) {
       units.ie.Kill_History_Store();
       units.ie.Kill_History_Helper();
     }},
    {InternetExplorer, "IE_cache", "chkIE_cache", "Temp Internet Files", kTipCache, 4,
     [](TraceUnits& units) {
       units.ie.Kill_Cache_Entries(CachePass::Pages);
       units.ie.Kill_Temp_Helper();
     }},
    {InternetExplorer, "IE_cookies", "chkIE_cookies", "Cookies", kTipCookies, 5,
     [](TraceUnits& units) {
       units.ie.Kill_Cookie_Files();
       units.ie.Kill_Cache_Entries(CachePass::Cookies);
       units.ie.Kill_Cookies_Helper();
     }, true},
    // Deliberate: by itself this class does its work and counts as nothing selected.
    {InternetExplorer, "IE_autocomplete", "chkIE_AutoComplete", "AutoComplete", kTipAutoComplete, 9,
     [](TraceUnits& units) { units.auto_complete.Kill_IE_AutoComplete(); }, true, false},
    {InternetExplorer, "IE_indexdat", "chkIE_IndexDat", "index.dat files",
     "Clear the index.dat files at Windows boot-up, click on the more info link to the right for more information", 12,
     [](TraceUnits& units) { units.index_dat.Schedule(); }},
    {InternetExplorer, "IE_Recovery", "chkIE_Recovery", "IE crash recovery data", kTipHistory, 53,
     [](TraceUnits& units) { units.ie.Kill_IE_Recovery(); }},
    {InternetExplorer, "IE_Google", "chkIE_Google", "Google Toolbar history",
     "Checking this will kill the Google Bar history list in Internet Explorer.  You must close all Internet Explorer "
     "windows to see the effect.", 25,
     [](TraceUnits& units) { units.ie.Kill_Google_Bar(); }},
    {InternetExplorer, "IE_SearchHistory", "chkIE_SearchHistory", "Search Button history", kTipDroplist, 26,
     [](TraceUnits& units) { units.ie.Kill_Search_History(); }},
    {InternetExplorer, "MSEdge", "chkIE_MSEdge", "MS Edge Browser / WebCache", kTipCache, 54,
     [](TraceUnits& units) { units.ie.Kill_Edge_Cache(); }},

    {Windows, "WIN_StartRun", "chkWin_StartRun", "Windows Start, Run drop-list",
     "Clear the Windows run drop-list bar (Start button, Run, click drop-list)", 6,
     [](TraceUnits& units) { units.windows.Kill_Run_MRU(); }},
    {Windows, "WIN_RecentDoc", "chkWin_RecentDoc", "Windows Recent Documents list",
     "Clear your Windows recent documents list (Start button, then Documents)", 7,
     [](TraceUnits& units) { units.windows.Kill_Recent_Docs(); }},
    {Windows, "", "chkWin_CacheIndexDat", "Wipe index.dat in Temp Internet Files folder",
     "Delete the index.dat database in your Windows Temp Internet Files folder at Windows startup, to disable this, "
     "simply uncheck it (you do not need to press the Kill Button) (click the more info link above for more info on "
     "this)", 12, [](TraceUnits& units) { units.index_dat.TakeBackUnlessTicked("chkWin_CookiesIndexDat", 0); }},
    {Windows, "", "chkWin_CookiesIndexDat", "Wipe index.dat in Cookies folder",
     "Delete the index.dat database in your Windows cookies folder at Windows startup, to disable this, simply uncheck "
     "it (you do not need to press the Kill Button) (click the more info link above for more info on this)", 13,
     [](TraceUnits& units) { units.index_dat.TakeBackUnlessTicked("chkWin_CacheIndexDat", 1); }},
    {Windows, "REGMediaPlayer", "chkWin_MediaPlayer", "Windows Media player recent URL/file list",
     "Clear the Windows Media Player recent URL and file lists", 14,
     [](TraceUnits& units) { units.windows.Kill_Media_Player(); }},
    {Windows, "REGrecyclebin", "chkWin_RecycleBin", "Windows Recycle Bin", "Clear Windows Recycle Bin", 15,
     [](TraceUnits& units) { units.windows.Kill_Recycle_Bin(); }},
    {Windows, "REGFileFrag", "chkWin_FileFrag", "Windows File Fragments (*.CHK)",
     "Delete the Windows Fragmented files in your root drive, their file names are FILE*.CHK and take up a LOT of "
     "space", 20, [](TraceUnits& units) { units.windows.Kill_File_Fragments(); }},
    {Windows, "REGWindowsTemp", "chkWin_WindowsTemp", "Windows Temp Folder",
     "Delete the Windows TEMP folder, typically in C:\\Windows\\TEMP, these are temp files that take up a lot of space",
     21, [](TraceUnits& units) { units.windows.Kill_Windows_Temp(); }},
    {Windows, "MSOfficeRecent", "chkWin_MSOfficeRecent", "MS Office Recent File List",
     "Delets the recent file lists in the file menu of Word, Excel, Access, Outlook and Frontpage", 24,
     [](TraceUnits& units) { units.windows.Kill_Office_Recent(); }},
};

// The class of a key. One that is in no row does not compile.
consteval const TraceClass* Class(std::string_view key) {
  const TraceClass* row = std::begin(kClasses);
  while (row->key != key) ++row;
  return row;
}

constexpr WalkStep kFirefoxAll[] = {{16, Class("NS_droplist")}, {17, Class("NS_history")}, {18, Class("NS_cache")}, {19, Class("NS_cookies")},
    {27, Class("NS_AutoComplete")}, {28, Class("NS_DownloadList")}, {48, Class("NS_JumpListIcons")}, {49, Class("NS_SessionData")}};
// Deliberate: the first class runs without a line when nobody watches.
constexpr WalkStep kFirefoxUnattended[] = {{0, Class("NS_droplist")}, {17, Class("NS_history")}, {18, Class("NS_cache")},
    {19, Class("NS_cookies")}, {27, Class("NS_AutoComplete")}, {28, Class("NS_DownloadList")}, {48, Class("NS_JumpListIcons")},
    {49, Class("NS_SessionData")}};
constexpr WalkStep kChromeWalk[] = {{31, Class("Chrome_VisitedLinks")}, {32, Class("Chrome_HistoryFiles")}, {33, Class("Chrome_Cache")},
    {34, Class("Chrome_Cookies")}, {35, Class("Chrome_AutoComplete")}, {36, Class("Chrome_ArchivedHistoryFile")}, {37, Class("Chrome_Thumbnails")},
    {45, Class("Chrome_HTML5")}, {46, Class("Chrome_JumpListIcons")}, {47, Class("Chrome_SessionData")}, {52, Class("Chrome_FlashCookies")}};
constexpr WalkStep kSafariWalk[] = {{38, Class("Safari_HistoryFiles")}, {39, Class("Safari_Cache")}, {40, Class("Safari_Cookies")},
    {41, Class("Safari_Downloads")}, {42, Class("Safari_AutoComplete")}, {43, Class("Safari_Thumbnails")}, {44, Class("Safari_TopSites")},
    {50, Class("Safari_HTML5")}, {51, Class("Safari_SessionData")}};
// Deliberate: the droplist goes between the lines of two other classes.
constexpr WalkStep kAolAll[] = {{10, Class("REGAOLCache")}, {11, Class("WIN_AOL")}, {8}, {23}};
// Deliberate: the lines of cookies and cache stand the other way round here.
constexpr WalkStep kAolUnattended[] = {{8, Class("WIN_AOL")}, {10, Class("REGAOLCookies")}, {11, Class("REGAOLCache")},
    {23, Class("REGAOLhistory")}};
constexpr WalkStep kIeAll[] = {{2, Class("IE_droplist")}, {3, Class("IE_history")}, {4, Class("IE_cache")}, {5, Class("IE_cookies")},
    {25, Class("IE_Google")}, {26, Class("IE_SearchHistory")}, {53, Class("IE_Recovery")}, {9, Class("IE_autocomplete")}, {54, Class("MSEdge")},
    {12, Class("IE_indexdat")}};
constexpr WalkStep kIeUnattended[] = {{2, Class("IE_droplist")}, {3, Class("IE_history")}, {4, Class("IE_cache")}, {5, Class("IE_cookies")},
    {9, Class("IE_autocomplete")}, {25, Class("IE_Google")}, {26, Class("IE_SearchHistory")}, {53, Class("IE_Recovery")}, {54, Class("MSEdge")},
    {12, Class("IE_indexdat")}};
// Deliberate: the two index.dat lines stand here and nothing is done for them.
constexpr WalkStep kWindowsAll[] = {{6, Class("WIN_StartRun")}, {7, Class("WIN_RecentDoc")}, {12}, {13},
    {14, Class("REGMediaPlayer")}, {15, Class("REGrecyclebin")}, {20, Class("REGFileFrag")}, {21, Class("REGWindowsTemp")}, {24, Class("MSOfficeRecent")}};
constexpr WalkStep kWindowsUnattended[] = {{6, Class("WIN_StartRun")}, {7, Class("WIN_RecentDoc")}, {14, Class("REGMediaPlayer")},
    {15, Class("REGrecyclebin")}, {20, Class("REGFileFrag")}, {21, Class("REGWindowsTemp")}, {24, Class("MSOfficeRecent")}};

bool FirefoxIsHere(const KillNeeds& needs) {
  return LongEnoughPath(needs.profiles.FirefoxProfilePath()) && needs.settings.Number(Setting::NoNS) == 0;
}
bool ChromeIsHere(const KillNeeds& needs) {
  return needs.profiles.Check_Chrome_Installed();
}
bool SafariIsHere(const KillNeeds& needs) {
  return needs.profiles.Check_Safari_Installed();
}

constexpr TraceGroupRow kGroups[] = {
    {Firefox, "chkNS_all", "All of the above",
     "Use all of the above Quillbarrow Netscape privacy features on your Netscape web browser", 8, kFirefoxAll,
     kFirefoxUnattended,
     "&Firefox", "Mozila Firefox Tab - Select what to kill from the Firefox history when Quillbarrow runs.",
     "Mozilla &Firefox", "Mozilla Firefox", FirefoxIsHere},
    {Chrome, "chkChrome_All", "All of the above",
     "Use all of the above Quillbarrow Google Chrome privacy features on your Google Chrome web browser", 11,
     kChromeWalk, kChromeWalk,
     "&Chrome", "Google Chrome Tab - Select what to kill from the Google Chrome history when Quillbarrow runs.",
     "Google &Chrome", "Google Chrome", ChromeIsHere},
    {Safari, "chkSafari_All", "All of the above",
     "Use all of the above Quillbarrow Apple Safari privacy features on your Apple Safari web browser", 9, kSafariWalk,
     kSafariWalk,
     "Safa&ri", "Apple Safari Tab - Select what to kill from the Apple Safari history when Quillbarrow runs.",
     "Apple &Safari", "Apple Safari", SafariIsHere},
    {AOL, "chkWin_AOLall", "All of the above", "Use all of the above Quillbarrow AOL privacy features on AOL", 4,
     kAolAll, kAolUnattended,
     "A&OL", "AOL Tab - Select what to kill from the AOL history when Quillbarrow runs.",
     "&AOL", "AOL", nullptr},
    // Deliberate: ten classes add eleven.
    {InternetExplorer, "chkIE_all", "All of the above",
     "Use all of the above Quillbarrow Internet Explorer privacy features on your Internet Explorer web browser", 11,
     kIeAll, kIeUnattended,
     "Edge/IE", "Internet Explorer Tab - Select what to kill from the Internet Explorer history when Quillbarrow runs.",
     "Edge/Int. Explorer", "Internet Explorer", nullptr},
    {Windows, "chkWin_All", "All of the above ",
     "Use all of the above Quillbarrow Windows privacy features on your Windows operating system", 9, kWindowsAll,
     kWindowsUnattended,
     "&Windows", "Windows Tab - Select what to kill from the Windows history when Quillbarrow runs.",
     "&Windows", "Windows", nullptr},
};
// clang-format on

constexpr TraceGroup kTabOrder[] = {InternetExplorer, Firefox, Chrome, Safari, Windows, AOL};
constexpr TraceGroup kWizardOrder[] = {InternetExplorer, Chrome, Firefox, Safari, AOL, Windows};
constexpr TraceGroup kUnattendedOrder[] = {Firefox, Chrome, Safari, Windows, InternetExplorer, AOL};

// --- what the tables promise one another ---

constexpr bool EachGroupStandsTogether() {
  for (std::size_t i = 1; i < std::size(kClasses); ++i) {
    if (kClasses[i].group < kClasses[i - 1].group) return false;
  }
  return true;
}

constexpr bool KeysAndBoxesStandOnce() {
  for (const TraceClass& a : kClasses) {
    for (const TraceClass& b : kClasses) {
      if (&a != &b && (a.box == b.box || (a.key == b.key && !a.key.empty()))) return false;
    }
  }
  return true;
}

constexpr bool WalksOwnClasses(std::span<const WalkStep> walk, TraceGroup group) {
  for (const WalkStep& step : walk) {
    if (step.code < 0 || step.code > kLastLogCode || (step.trace != nullptr && step.trace->group != group))
      return false;
  }
  return true;
}

constexpr bool GroupsFollowTheEnumeration() {
  for (std::size_t i = 0; i < std::size(kGroups); ++i) {
    const TraceGroupRow& row = kGroups[i];
    if (row.group != static_cast<TraceGroup>(i)) return false;
    if (!WalksOwnClasses(row.all_walk, row.group) || !WalksOwnClasses(row.unattended_walk, row.group)) return false;
  }
  return std::size(kGroups) == kTraceGroups;
}

// Every class with a key is taken by an unattended run, once, and no other is.
constexpr bool UnattendedWalksTakeEachKeyOnce() {
  for (const TraceClass& row : kClasses) {
    int taken = 0;
    for (const TraceGroupRow& group : kGroups) {
      for (const WalkStep& step : group.unattended_walk) taken += step.trace == &row ? 1 : 0;
    }
    if (taken != (row.key.empty() ? 0 : 1)) return false;
  }
  return true;
}

constexpr bool HasEachGroup(std::span<const TraceGroup> order) {
  int seen = 0;
  for (TraceGroup group : order) seen |= 1 << static_cast<int>(group);
  return order.size() == kTraceGroups && seen == (1 << kTraceGroups) - 1;
}

static_assert(EachGroupStandsTogether() && KeysAndBoxesStandOnce());
static_assert(GroupsFollowTheEnumeration());
static_assert(UnattendedWalksTakeEachKeyOnce());
static_assert(HasEachGroup(kTabOrder) && HasEachGroup(kWizardOrder) && HasEachGroup(kUnattendedOrder));

}  // namespace

std::span<const TraceClass> TraceClasses() {
  return kClasses;
}

std::span<const TraceClass> ClassesOf(TraceGroup group) {
  auto in_group = [group](const TraceClass& row) { return row.group == group; };
  const auto* first = std::find_if(std::begin(kClasses), std::end(kClasses), in_group);
  const auto* last = std::find_if_not(first, std::end(kClasses), in_group);
  return {first, last};
}

const TraceGroupRow& RowOf(TraceGroup group) {
  return kGroups[static_cast<std::size_t>(group)];
}

std::span<const TraceGroup> TabOrder() {
  return kTabOrder;
}

std::span<const TraceGroup> WizardOrder() {
  return kWizardOrder;
}

std::span<const TraceGroup> UnattendedOrder() {
  return kUnattendedOrder;
}

const TraceClass* FindClass(std::string_view key) {
  for (const TraceClass& row : kClasses) {
    if (!row.key.empty() && SameText(row.key, key)) return &row;
  }
  return nullptr;
}

}  // namespace qb
