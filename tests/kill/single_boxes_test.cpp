// Each box of the browser tabs alone, and its key alone: exactly the traces of that class go.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "tests/support/browser_traces.h"
#include "tests/support/rehearsal.h"

namespace qb {
namespace {

using test::BrowserTab;
using test::Rehearsal;

using Parts = std::vector<std::string>;

// By box: what a path or key ends in, or with a closing star what it holds.
const std::map<std::string, Parts> kTracesOf = {
    {"chkNS_droplist", {"\\localstore.rdf", "\\localstore-safe.rdf"}},
    {"chkNS_history",
     {"\\netscape.hst", "\\history.dat", "\\places.sqlite", "\\places.sqlite-journal", "\\places.sqlite-stmtjrnl",
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
};

bool IsOne(const std::string& trace, const Parts& parts) {
  return std::any_of(parts.begin(), parts.end(), [&](std::string part) {
    if (part.back() != '*') return trace.ends_with(part);
    part.pop_back();
    return trace.find(part) != std::string::npos;
  });
}

std::string Expectations(const BrowserTab& tab, const std::string& box) {
  const Parts& parts = kTracesOf.at(box);
  std::string script;
  for (const std::string& path : TraceFiles(tab)) {
    script += "expect exists \"" + path + "\" is " + (IsOne(path, parts) ? "no" : "file") + "\n";
  }
  for (const std::string& key : TraceKeys(tab)) {
    script += "expect reg show \"" + key + "\" " + (IsOne(key, parts) ? "is" : "lacks") + " (absent)\n";
  }
  return script;
}

TEST(SingleBoxes, TakeTheTracesOfTheirClassAlone) {
  std::size_t classes = 0;
  for (const BrowserTab& tab : test::BrowserTabs()) {
    for (const TraceClass& row : ClassesOf(tab.group)) {
      ++classes;
      const std::string box(row.box), key(row.key);
      const std::string expectations = Expectations(tab, box);
      {
        Rehearsal rehearsal;
        rehearsal.Play(tab.traces);
        rehearsal.Play("start\nchoose SftTabs1 " + std::to_string(tab.index) + "\ntick " + box +
                       "\nclick cmdKILLALL\n" + expectations);
        EXPECT_EQ(rehearsal.status(), rehearse::Status::Held) << box << "\n" << rehearsal.printed();
      }
      Rehearsal rehearsal;
      rehearsal.Play(tab.traces +
                     "file \"C:\\Program Files\\Safari\\Safari.exe\" MZ\n"
                     "file \"C:\\Program Files\\Google\\Chrome\\Application\\chrome.exe\" MZ\n"
                     "reg add " +
                     test::places::kStore + " " + key + " sz 1\n");
      rehearsal.Play("start\ndo Do_Start_Up 2\n" + expectations);
      EXPECT_EQ(rehearsal.status(), rehearse::Status::Held) << key << "\n" << rehearsal.printed();
    }
  }
  EXPECT_EQ(classes, kTracesOf.size());
}

}  // namespace
}  // namespace qb
