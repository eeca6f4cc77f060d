#include "tests/support/tab_traces.h"

#include <sstream>

#include "tests/support/rehearsal.h"

namespace qb::test {

namespace places {
const std::string kStore = "\"HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData\"";
const std::string kRoaming = "C:\\Users\\user\\AppData\\Roaming";
const std::string kLocal = "C:\\Users\\user\\AppData\\Local";
const std::string kFirefox = kRoaming + "\\Mozilla\\Firefox\\Profiles\\abc.default";
}  // namespace places

using namespace places;

const std::vector<std::string> kOwnPlaces = {
    "C:\\Users\\user\\AppData\\Local\\Quillbarrow", "C:\\Users\\user\\Local Settings\\Application Data\\Quillbarrow",
    "HKCU\\Software\\VB and VBA Program Settings\\", "HKCU\\Software\\VB and VBA Program Settings",
    "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Run"};

const std::string kInstalled =
    "file \"C:\\Program Files\\Safari\\Safari.exe\" MZ\n"
    "file \"C:\\Program Files\\Google\\Chrome\\Application\\chrome.exe\" MZ\n";

std::string Files(const std::string& folder, std::initializer_list<const char*> names) {
  std::string script;
  for (const char* name : names) script += "file \"" + folder + "\\" + name + "\" content\n";
  return script;
}

namespace {

const std::string kFirefoxLocal = kLocal + "\\Mozilla\\Firefox\\Profiles\\abc.default";
const std::string kChrome = kLocal + "\\Google\\Chrome\\User Data\\";
const std::string kSafari = kRoaming + "\\Apple Computer\\Safari";
const std::string kCookies = kRoaming + "\\Microsoft\\Windows\\Cookies";

// "[Profile0] Path=Profiles/abc.default" as a file.
const std::string kProfilesIni = "file " + kRoaming +
                                 "\\Mozilla\\Firefox\\profiles.ini hex "
                                 "5B50726F66696C65305D0D0A506174683D50726F66696C65732F6162632E64656661756C740D0A\n";

const std::map<std::string, Parts> kTracesOf = {
    {"chkNS_droplist", {"\\localstore.rdf", "\\localstore-safe.rdf"}},
    {"chkNS_history",
     {"\\netscape.hst", "\\history.dat", "\\places.sqlite-journal", "\\places.sqlite-stmtjrnl", "\\places.sqlite",
      "\\content-prefs.sqlite", "\\search.rdf", "\\search.dat", "\\search.sqlite"}},
    {"chkNS_cache", {"\\Temp\\*", "default\\Cache\\*", "\\cache2\\*"}},
    {"chkNS_cookies", {"\\cookies.txt", "\\cookies.sqlite"}},
    {"chkNS_AutoComplete",
     {"\\formhistory.dat", "\\formhistory.sqlite", "\\signons.txt", "\\signons2.txt", "\\signons3.txt",
      "\\signons.sqlite"}},
    {"chkNS_DownloadList", {"\\downloads.rdf", "\\downloads.sqlite"}},
    {"chkNS_JumpListIcons", {"\\jumpListCache\\*", "\\OfflineCache\\*", "\\startupCache\\*", "\\thumbnails\\*"}},
    {"chkNS_SessionData", {"\\sessionstore.js", "\\sessionstore.bak"}},

    {"chkChrome_VisitedLinks", {"\\Visited Links"}},
    // The index files of the default profile stay, and the top sites go along.
    {"chkChrome_HistoryFiles",
     {"\\History", "\\History-journal", "\\History Provider Cache", "\\Network Action Predictor", "\\Top Sites",
      "\\Top Sites-journal", "Profile 0\\History Index*", "Profile 1\\History Index*"}},
    {"chkChrome_Cache", {"\\Cache\\*", "\\Media Cache\\*"}},
    {"chkChrome_Cookies", {"\\Cookies", "\\Cookies-journal"}},
    {"chkChrome_AutoComplete", {"\\Web Data", "\\Login Data"}},
    {"chkChrome_ArchivedHistoryFile", {"\\Archived History", "\\Archived History-journal", "Default\\History Index*"}},
    {"chkChrome_Thumbnails", {"\\Thumbnails"}},
    {"chkChrome_HTML5", {"\\Local Storage\\*"}},
    {"chkChrome_JumpListIcons", {"\\JumpListIcons\\*", "\\JumpListIconsOld\\*"}},
    {"chkChrome_SessionData", {"\\Last Session", "\\Last Tabs", "\\Current Session", "\\Current Tabs"}},
    {"chkChrome_FlashCookies", {"\\#SharedObjects\\*", "\\databases\\*"}},

    {"chkSafari_HistoryFiles", {"\\History.plist", "\\History\\*"}},
    {"chkSafari_Cache", {"\\Cache.db"}},
    {"chkSafari_Cookies", {"\\Cookies.plist", "\\Cookies.binarycookies"}},
    {"chkSafari_Downloads", {"\\Downloads.plist"}},
    {"chkSafari_AutoComplete", {"\\Form Values.plist"}},
    {"chkSafari_Thumbnails", {"\\WebpageIcons.db"}},
    {"chkSafari_TopSites", {"\\TopSites.plist", "\\PubSub\\Feeds\\*"}},
    {"chkSafari_HTML5", {"\\LocalStorage\\*"}},
    {"chkSafari_SessionData", {"\\LastSession.plist"}},

    {"chkWin_AOLhistory", {}},
    {"chkWin_AOLdatabase", {"\\CACHE\\*"}},
    {"chkWin_AOLcookies", {}},
    {"chkWin_AOL", {".ARL", ".arl", ".aut"}},

    {"chkIE_droplist", {"\\TypedURLs", "\\TypedURLsX", "\\Typed Urls"}},
    {"chkIE_history", {}},
    {"chkIE_cache", {}},
    {"chkIE_cookies", {".txt"}},
    {"chkIE_AutoComplete", {"\\e161255a\\*"}},
    {"chkIE_IndexDat", {}},
    {"chkIE_Recovery", {"\\Recovery\\*"}},
    {"chkIE_Google", {"\\1.1\\History", "\\Local Search History\\*"}},
    {"chkIE_SearchHistory", {"\\ACMru\\*"}},
    {"chkIE_MSEdge", {}},

    {"chkWin_StartRun", {"\\RunMRU"}},
    {"chkWin_RecentDoc", {}},
    {"chkWin_CacheIndexDat", {}},
    {"chkWin_CookiesIndexDat", {}},
    {"chkWin_MediaPlayer", {"\\RecentURLList", "\\RecentFileList", "\\wmplibrary_v_0_12.db", "\\ActivePlaylist.dat"}},
    {"chkWin_RecycleBin", {}},
    {"chkWin_FileFrag", {".CHK", ".chk"}},
    {"chkWin_WindowsTemp", {"\\TEMP\\*", "\\Local Settings\\Temp\\*"}},
    {"chkWin_MSOfficeRecent", {"\\Recent\\*", "\\OpenSaveMRU\\*"}},
};

// The files that the classes of a group go by their names.
std::string NamedFiles(const std::string& folder, TraceGroup group) {
  std::string script;
  for (const TraceClass& row : ClassesOf(group)) {
    for (const std::string& part : kTracesOf.at(std::string(row.box))) {
      if (part.back() != '*') script += Files(folder, {part.c_str() + 1});
    }
  }
  return script;
}

// Every file that a Chrome profile is rid of by its name, and one file in each folder that is emptied.
std::string ChromeProfile(const std::string& folder) {
  return NamedFiles(folder, TraceGroup::Chrome) +
         Files(folder, {"Cache\\f_1", "Media Cache\\f_2", "Local Storage\\s.db", "JumpListIcons\\1.ico",
                        "JumpListIconsOld\\2.ico", "databases\\d.db",
                        "Pepper Data\\Shockwave Flash\\WritableRoot\\#SharedObjects\\x.sol"});
}

}  // namespace

std::vector<TraceTab> TraceTabs() {
  const std::string chrome1 = kChrome + "Profile 1", chrome_default = kChrome + "Default";
  const std::string old_firefox =
      "C:\\Users\\user\\Local Settings\\Application Data\\Mozilla\\Firefox\\Profiles\\abc.default";
  return {
      {TraceGroup::Firefox,
       1,
       kProfilesIni + NamedFiles(kFirefox, TraceGroup::Firefox) +
           Files(kFirefox, {"Cache\\a", "Temp\\b", "Temp\\b2", "Temp\\b3"}) +
           Files(kFirefoxLocal, {"Cache\\c", "cache2\\entries\\d", "jumpListCache\\e.ico", "OfflineCache\\f",
                                 "startupCache\\g", "thumbnails\\h.png"}) +
           Files(old_firefox, {"Temp\\i", "Cache\\j"}),
       ScriptPart("firefox_neighbours"),
       // 23 files; 4 in the roaming caches, 1 + 2 in the local ones, 1 in each of the four jump list folders, 2 in the
       // old layout.
       23 + 4 + 3 + 4 + 2,
       {"files " + kFirefoxLocal +
        " is cache2\\ cache2\\entries\\ Cache\\ jumpListCache\\ OfflineCache\\ places.sqlite safebrowsing\\ "
        "safebrowsing\\l startupCache\\ Temp\\ Temp\\m thumbnails\\"},
       {kFirefox}},
      {TraceGroup::Chrome,
       2,
       ChromeProfile(chrome_default) + ChromeProfile(chrome1) + Files(chrome_default, {"History Index 2019-05"}) +
           Files(chrome1, {"History Index 2019-05", "History Index 2019-06", "History Index 2019-07"}) +
           Files(kChrome + "Profile 0", {"History Index 2019-05"}) + Files(kChrome + "Profile 3", {"History"}) +
           Files(kChrome + "Profile 9", {"Cookies"}),
       ScriptPart("chrome_neighbours"),
       // Two profiles of 18 files, and two files more; for each of four profiles 7 folders count 1 each, and two of
       // them hold 7 entries more; the index files count 1 for number 0, the default and each numbered profile.
       2 * 18 + 2 + 4 * 7 + 2 * 7 + 2 + 3,
       {},
       {chrome_default, chrome1, kChrome + "Profile 3", kChrome + "Profile 9"}},
      {TraceGroup::Safari,
       3,
       ScriptPart("safari_traces"),
       ScriptPart("safari_neighbours"),
       // 7 roaming files and the feed; locally 2 files, 2 entries, and 1 for each of the two folders.
       8 + 6,
       {},
       {kSafari, kSafari + "\\Cookies", kLocal + "\\Apple Computer\\Safari"}},
      {TraceGroup::AOL, 5, ScriptPart("aol_traces"), ScriptPart("aol_neighbours"), 0, {}, {}},
      {TraceGroup::InternetExplorer,
       0,
       ScriptPart("internet_explorer_traces"),
       ScriptPart("internet_explorer_neighbours"),
       // Lists: 2 + 1 + 1 + 1, 3, 1 + 2 + 1. Local Search History 1. Recovery: 4 for the folders, 3 in Active, Active
       // and b.dat below High, and 2 more. Cookies: 3 files. The cache: three normal entries, of which one is left
       // for the second pass. AutoComplete 1, index.dat 1.
       5 + 3 + 4 + 1 + 4 + 7 + 3 + 4 + 1 + 1,
       {"cache is no-normal-bit",
        "reg show \"HKCU\\Software\\Microsoft\\Protected Storage System Provider\\S-1\\Data\\e161255a\" is QX\\",
        "files " + kCookies + " is low\\ low\\a.txt user@shop[1].dat"},
       {}},
      {TraceGroup::Windows,
       4,
       ScriptPart("windows_traces"),
       ScriptPart("windows_neighbours"),
       // Lists: 2, 2 + 1, 1 to 7 values. The player's 2 files, the recent list, 2 fragments; temp: a.tmp, sub, deep,
       // b.tmp, read-only.tmp, the junction, the name with an umlaut; 2 in the user's own; office: 1 file.
       2 + 3 + 28 + 2 + 1 + 2 + 7 + 2 + 1,
       {"recycle is 0", "calls SHAddToRecentDocs is \"SHAddToRecentDocs(2, null) = \"",
        "files C:\\WINDOWS\\TEMP is sub\\ sub\\deep\\ sub\\documents\\",
        "exists C:\\WINDOWS\\TEMP\\sub\\documents is link"},
       {"C:\\WINDOWS", "C:\\WINDOWS\\Application Data\\Microsoft\\Media Player"}},
  };
}

const std::map<std::string, Parts>& TracesOf() {
  return kTracesOf;
}

std::vector<std::string> FirstWords(const std::string& script, const std::string& command) {
  std::vector<std::string> words;
  std::istringstream in(script);
  for (std::string line; std::getline(in, line);) {
    if (line.rfind(command + " ", 0) != 0) continue;
    const std::string rest = line.substr(command.size() + 1);
    words.push_back(rest[0] == '"' ? rest.substr(1, rest.find('"', 1) - 1) : rest.substr(0, rest.find(' ')));
  }
  return words;
}

std::vector<std::string> TraceFiles(const TraceTab& tab) {
  std::vector<std::string> files = FirstWords(tab.traces, "file");
  std::erase_if(files, [](const std::string& path) { return path.ends_with("profiles.ini"); });
  return files;
}

std::vector<std::string> TraceKeys(const TraceTab& tab) {
  std::vector<std::string> keys = FirstWords(tab.traces, "reg add");
  std::erase_if(keys, [](const std::string& key) { return kStore.find(key) != std::string::npos; });
  return keys;
}

std::vector<std::string> MayChange(const TraceTab& tab) {
  std::vector<std::string> places = kOwnPlaces;
  for (const auto& traces : {TraceFiles(tab), TraceKeys(tab)})
    places.insert(places.end(), traces.begin(), traces.end());
  return places;
}

std::string ExpectTracesGone(const TraceTab& tab) {
  std::string script = "expect get HistoryRemoved is " + std::to_string(static_cast<int>(tab.count)) + "\n";
  for (const std::string& path : TraceFiles(tab)) script += "expect exists \"" + path + "\" is no\n";
  for (const std::string& key : TraceKeys(tab)) script += "expect reg show \"" + key + "\" is (absent)\n";
  return script;
}

std::string RunAll(const TraceTab& tab) {
  return "start\nchoose SftTabs1 " + std::to_string(tab.index) + "\ntick " + std::string(RowOf(tab.group).all_box) +
         "\nclick cmdKILLALL\nexpect log has \" - Successful!  Your privacy is protected.\"\n";
}

}  // namespace qb::test
