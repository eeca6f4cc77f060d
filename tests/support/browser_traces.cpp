#include "tests/support/browser_traces.h"

#include <sstream>

namespace qb::test {

namespace places {
const std::string kStore = "\"HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData\"";
const std::string kRoaming = "C:\\Users\\user\\AppData\\Roaming";
const std::string kLocal = "C:\\Users\\user\\AppData\\Local";
const std::string kFirefox = kRoaming + "\\Mozilla\\Firefox\\Profiles\\abc.default";
}  // namespace places

using namespace places;

const std::vector<std::string> kOwnPlaces = {
    "C:\\Users\\user\\AppData\\Local\\Quillbarrow", "HKCU\\Software\\VB and VBA Program Settings\\",
    "HKCU\\Software\\VB and VBA Program Settings", "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Run"};

std::string Files(const std::string& folder, std::initializer_list<const char*> names) {
  std::string script;
  for (const char* name : names) script += "file \"" + folder + "\\" + name + "\" content\n";
  return script;
}

namespace {

const std::string kFirefoxLocal = kLocal + "\\Mozilla\\Firefox\\Profiles\\abc.default";
const std::string kChrome = kLocal + "\\Google\\Chrome\\User Data\\";
const std::string kSafari = kRoaming + "\\Apple Computer\\Safari";
const std::string kSafariLocal = kLocal + "\\Apple Computer\\Safari";
const std::string kCookies = kRoaming + "\\Microsoft\\Windows\\Cookies";
const std::string kIe = "HKCU\\Software\\Microsoft\\Internet Explorer\\";
const std::string kProtected = "HKCU\\Software\\Microsoft\\Protected Storage System Provider";

std::string Key(const std::string& key, int values) {
  std::string script = "reg add \"" + key + "\"\n";
  for (int i = 0; i < values; ++i) script += "reg add \"" + key + "\" v" + std::to_string(i) + " sz x\n";
  return script;
}

// "[Profile0] Path=Profiles/abc.default" as a file.
const std::string kProfilesIni = "file " + kRoaming +
                                 "\\Mozilla\\Firefox\\profiles.ini hex "
                                 "5B50726F66696C65305D0D0A506174683D50726F66696C65732F6162632E64656661756C740D0A\n";

std::vector<BrowserTab> TracesAndNeighbours() {
  const std::string chrome1 = kChrome + "Profile 1", chrome_default = kChrome + "Default";
  const std::initializer_list<const char*> chrome_files = {"Visited Links",
                                                           "History",
                                                           "History-journal",
                                                           "History Provider Cache",
                                                           "Network Action Predictor",
                                                           "Top Sites",
                                                           "Top Sites-journal",
                                                           "Cookies",
                                                           "Cookies-journal",
                                                           "Web Data",
                                                           "Login Data",
                                                           "Archived History",
                                                           "Archived History-journal",
                                                           "Thumbnails",
                                                           "Last Session",
                                                           "Last Tabs",
                                                           "Current Session",
                                                           "Current Tabs"};
  const std::initializer_list<const char*> chrome_folders = {
      "Cache\\f_1",
      "Media Cache\\f_2",
      "Local Storage\\s.db",
      "JumpListIcons\\1.ico",
      "JumpListIconsOld\\2.ico",
      "Pepper Data\\Shockwave Flash\\WritableRoot\\#SharedObjects\\x.sol",
      "databases\\d.db"};
  return {
      {TraceGroup::Firefox,
       1,
       kProfilesIni +
           Files(kFirefox, {"localstore.rdf", "places.sqlite", "places.sqlite-journal", "content-prefs.sqlite",
                            "cookies.sqlite", "formhistory.sqlite", "signons.sqlite", "downloads.sqlite",
                            "sessionstore.js", "Cache\\a", "Temp\\b", "Temp\\b2", "Temp\\b3"}) +
           Files(kFirefoxLocal, {"Cache\\c", "cache2\\entries\\d", "jumpListCache\\e.ico", "OfflineCache\\f",
                                 "startupCache\\g", "thumbnails\\h.png"}),
       Files(kFirefox, {"prefs.js", "bookmarks.html", "cookies.sqlite.bak", "key4.db"}) +
           Files(kRoaming + "\\Mozilla\\Firefox\\Profiles\\other.default", {"places.sqlite", "cookies.sqlite"}),
       // 9 files; 4 in the roaming caches, 1 + 2 in the local ones, 1 in each of the four jump list folders.
       9 + 4 + 3 + 4,
       {kFirefox + "\\localstore.rdf", kFirefox + "\\places.sqlite", kFirefox + "\\places.sqlite-journal",
        kFirefox + "\\content-prefs.sqlite", kFirefox + "\\cookies.sqlite", kFirefox + "\\formhistory.sqlite",
        kFirefox + "\\signons.sqlite", kFirefox + "\\downloads.sqlite", kFirefox + "\\sessionstore.js",
        kFirefox + "\\Cache", kFirefox + "\\Temp", kFirefoxLocal},
       {"files " + kFirefox + " is bookmarks.html Cache\\ cookies.sqlite.bak key4.db prefs.js Temp\\",
        "files " + kFirefoxLocal +
            " is cache2\\ cache2\\entries\\ Cache\\ jumpListCache\\ OfflineCache\\ startupCache\\ thumbnails\\"},
       {kFirefox}},
      {TraceGroup::Chrome,
       2,
       Files(chrome_default, chrome_files) + Files(chrome_default, chrome_folders) + Files(chrome1, chrome_files) +
           Files(chrome1, chrome_folders) + Files(chrome_default, {"History Index 2019-05"}) +
           Files(chrome1, {"History Index 2019-05", "History Index 2019-06", "History Index 2019-07"}) +
           Files(kChrome + "Profile 3", {"History"}),
       Files(chrome_default, {"Bookmarks", "Preferences", "Cookies.bak", "History2"}) +
           Files(kChrome + "Profile 10", {"History", "Cookies"}) + Files(kChrome + "Guest Profile", {"History"}),
       // Two profiles of 18 files, one file more; for each of three profiles 7 folders count 1 each, and two
       // of them hold 7 entries more; the index files count 1 for number 0, the default and each numbered profile.
       2 * 18 + 1 + 3 * 7 + 2 * 7 + 2 + 2,
       {chrome_default + "\\*", chrome1 + "\\*", kChrome + "Profile 3\\History"},
       {"exists \"" + chrome_default + "\\Bookmarks\" is file", "exists \"" + chrome_default + "\\History2\" is file",
        "exists \"" + chrome_default + "\\Cookies.bak\" is file",
        "exists \"" + chrome_default + "\\History Index 2019-05\" is no",
        "exists \"" + chrome1 + "\\History Index 2019-06\" is no",
        "files \"" + chrome1 + "\" lacks f_1 Cookies History", "exists \"" + kChrome + "Profile 3\\History\" is no"},
       {chrome_default, chrome1, kChrome + "Profile 3"}},
      {TraceGroup::Safari,
       3,
       Files(kSafari, {"History.plist", "Cookies\\Cookies.plist", "Cookies\\Cookies.binarycookies", "Downloads.plist",
                       "Form Values.plist", "TopSites.plist", "LastSession.plist", "PubSub\\Feeds\\a.xml"}) +
           Files(kSafariLocal,
                 {"History\\h.webhistory", "Cache.db", "WebpageIcons.db", "LocalStorage\\x.localstorage"}),
       Files(kSafari, {"Bookmarks.plist", "Cookies\\other.txt", "Cache.db", "PubSub\\Database.sqlite3"}) +
           Files(kSafariLocal, {"History.plist", "SafeBrowsing.db"}),
       // 7 roaming files and the feed; locally 2 files, 2 entries, and 1 for each of the two folders.
       8 + 6,
       {kSafari + "\\History.plist", kSafari + "\\Cookies\\Cookies.plist", kSafari + "\\Cookies\\Cookies.binarycookies",
        kSafari + "\\Downloads.plist", kSafari + "\\Form Values.plist", kSafari + "\\TopSites.plist",
        kSafari + "\\LastSession.plist", kSafari + "\\PubSub\\Feeds", kSafariLocal + "\\History",
        kSafariLocal + "\\Cache.db", kSafariLocal + "\\WebpageIcons.db", kSafariLocal + "\\LocalStorage"},
       {"files \"" + kSafariLocal + "\" is History.plist History\\ LocalStorage\\ SafeBrowsing.db",
        "files \"" + kSafari +
            "\" is Bookmarks.plist Cache.db Cookies\\ Cookies\\other.txt PubSub\\ "
            "PubSub\\Database.sqlite3 PubSub\\Feeds\\"},
       {kSafari, kSafari + "\\Cookies", kSafariLocal}},
      {TraceGroup::AOL,
       5,
       // A first run would look for the folder itself.
       "reg add " + kStore + " QBBuild sz 1\nreg add " + kStore + " AOLdir sz C:\\AOL\\\n" +
           Files("C:\\AOL\\organize",
                 {"main.ARL", "more.arl", "x.ARL", "main.aut", "CACHE\\a.tmp", "CACHE\\b", "CACHE\\c"}),
       Files("C:\\AOL\\organize", {"address.abk", "CACHE\\sub\\c.tmp", "main.ARLX"}) + Files("C:\\AOL", {"x.ARL"}),
       0,
       {"C:\\AOL\\organize\\main.ARL", "C:\\AOL\\organize\\more.arl", "C:\\AOL\\organize\\x.ARL",
        "C:\\AOL\\organize\\main.aut", "C:\\AOL\\organize\\CACHE\\a.tmp", "C:\\AOL\\organize\\CACHE\\b",
        "C:\\AOL\\organize\\CACHE\\c"},
       {"files C:\\AOL\\organize is address.abk CACHE\\ CACHE\\sub\\ CACHE\\sub\\c.tmp main.ARLX"},
       {}},
      {TraceGroup::InternetExplorer,
       0,
       Key(kIe + "TypedURLs", 2) + Key(kIe + "TypedURLsX", 1) + Key("HKCU\\Software\\Yahoo\\Browser\\Typed Urls", 1) +
           Key("HKCU\\Software\\Google\\NavClient\\1.1\\History", 3) +
           Key("HKCU\\Software\\Microsoft\\Search Assistant\\ACMru\\5603", 2) +
           Files(kRoaming + "\\Google\\Local Search History", {"hist"}) +
           Files(kLocal + "\\Microsoft\\Internet Explorer\\Recovery",
                 {"Active\\a.dat", "Active\\a2.dat", "Active\\a3.dat", "High\\Active\\b.dat"}) +
           Files(kCookies, {"user@shop[1].txt", "user@bank[2].txt", "user@news[1].txt"}) +
           "cache add http://news.example/ 0x1\ncache add Cookie:user@shop.example/ 0x100001\n"
           "cache add Visited:user@http://x.example/ 0x200001\n" +
           Key(kProtected + "\\S-1\\Data\\e161255a\\q", 0) +
           Key(kProtected + "\\S-1\\Data\\e161255a\\Q:StringData", 1) + "reg deny \"" + kProtected + "\"\n",
       Key(kIe + "TypedURLsXX", 1) + Key("HKCU\\Software\\Microsoft\\Search Assistant\\ACMru\\5605", 2) +
           Key(kProtected + "\\S-1\\Data\\e161255a\\QX", 1) + Files(kCookies, {"user@shop[1].dat", "low\\a.txt"}) +
           Files(kLocal + "\\Microsoft\\Internet Explorer\\Recovery", {"Other\\c.dat"}) +
           "cache add no-normal-bit 0x100000\n",
       // Lists: 2 + 1 + 1, 3, 2. Local Search History 1. Recovery: 4 for the folders, 3 in Active, Active and b.dat
       // below High. Cookies: 3 files. The cache: three normal entries, of which one is left for
       // the second pass. AutoComplete 1, index.dat 1.
       4 + 3 + 2 + 1 + 4 + 5 + 3 + 3 + 1 + 1 + 1,
       {kIe + "TypedURLs", kIe + "TypedURLsX", "HKCU\\Software\\Yahoo\\Browser\\Typed Urls",
        "HKCU\\Software\\Google\\NavClient\\1.1\\History", "HKCU\\Software\\Microsoft\\Search Assistant\\ACMru\\5603",
        kRoaming + "\\Google\\Local Search History", kLocal + "\\Microsoft\\Internet Explorer\\Recovery\\Active",
        kLocal + "\\Microsoft\\Internet Explorer\\Recovery\\High", kCookies + "\\user@shop[1].txt",
        kCookies + "\\user@bank[2].txt", kCookies + "\\user@news[1].txt", kProtected + "\\S-1\\Data\\e161255a\\q",
        kProtected + "\\S-1\\Data\\e161255a\\Q:StringData"},
       {"cache is no-normal-bit", "reg show \"" + kProtected + "\\S-1\\Data\\e161255a\" is QX\\",
        "reg show \"" + kIe + "TypedURLs\" is (absent)", "files " + kCookies + " is low\\ low\\a.txt user@shop[1].dat"},
       {}},
  };
}

}  // namespace

std::vector<BrowserTab> BrowserTabs() {
  std::vector<BrowserTab> tabs = TracesAndNeighbours();
  for (BrowserTab& tab : tabs) tab.may_change.insert(tab.may_change.end(), kOwnPlaces.begin(), kOwnPlaces.end());
  return tabs;
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

std::vector<std::string> TraceFiles(const BrowserTab& tab) {
  std::vector<std::string> files = FirstWords(tab.traces, "file");
  std::erase_if(files, [](const std::string& path) { return path.ends_with("profiles.ini"); });
  return files;
}

std::string RunAll(const BrowserTab& tab) {
  return "start\nchoose SftTabs1 " + std::to_string(tab.index) + "\ntick " + std::string(RowOf(tab.group).all_box) +
         "\nclick cmdKILLALL\nexpect log has \" - Successful!  Your privacy is protected.\"\n";
}

}  // namespace qb::test
