#include "kill/traces/firefox_traces.h"

namespace qb {

namespace {

// Names of old browsers stand beside new ones, so that whichever browser made the folder, its traces
// go. Journals go before their database.
constexpr std::string_view kDroplist[] = {"\\LOCALSTORE.RDF", "\\LOCALSTORE-SAFE.RDF"};
constexpr std::string_view kHistory[] = {"\\NETSCAPE.HST",
                                         "\\HISTORY.DAT",
                                         "\\PLACES.SQLITE-JOURNAL",
                                         "\\PLACES.SQLITE-STMTJRNL",
                                         "\\PLACES.SQLITE",
                                         "\\CONTENT-PREFS.SQLITE",
                                         "\\SEARCH.RDF",
                                         "\\SEARCH.DAT",
                                         "\\SEARCH.SQLITE"};
constexpr std::string_view kAutoComplete[] = {"\\FORMHISTORY.DAT", "\\FORMHISTORY.SQLITE", "\\SIGNONS.TXT",
                                              "\\SIGNONS2.TXT",    "\\SIGNONS3.TXT",       "\\SIGNONS.SQLITE"};
constexpr std::string_view kCookies[] = {"\\COOKIES.TXT", "\\COOKIES.SQLITE"};
constexpr std::string_view kDownloads[] = {"\\DOWNLOADS.RDF", "\\DOWNLOADS.SQLITE"};
constexpr std::string_view kSession[] = {"\\sessionstore.js", "\\sessionstore.bak"};
constexpr std::string_view kRoamingCaches[] = {"\\Temp", "\\Cache"};
constexpr std::string_view kLocalCaches[] = {"\\Cache", "\\cache2"};
constexpr std::string_view kJumpListCaches[] = {"\\jumpListCache", "\\OfflineCache", "\\startupCache", "\\thumbnails"};

}  // namespace

void FirefoxTraces::Kill_Firefox_Droplist() {
  names_.WipeFiles(profiles_.FirefoxProfilePath(), kDroplist);
}
void FirefoxTraces::Kill_Firefox_History() {
  names_.WipeFiles(profiles_.FirefoxProfilePath(), kHistory);
}
void FirefoxTraces::Kill_Firefox_AutoComplete() {
  names_.WipeFiles(profiles_.FirefoxProfilePath(), kAutoComplete);
}
void FirefoxTraces::Kill_Firefox_Cookies() {
  names_.WipeFiles(profiles_.FirefoxProfilePath(), kCookies);
}
void FirefoxTraces::Kill_Firefox_Downloads() {
  names_.WipeFiles(profiles_.FirefoxProfilePath(), kDownloads);
}
void FirefoxTraces::Kill_Firefox_Session() {
  names_.WipeFiles(profiles_.FirefoxProfilePath(), kSession);
}

void FirefoxTraces::Kill_Firefox_Cache() {
  if (!NamedTraces::IsPath(profiles_.FirefoxProfilePath())) return;
  names_.WipeFolders(profiles_.FirefoxProfilePath(), kRoamingCaches, FolderCount::Walker);
  names_.WipeFolders(profiles_.FirefoxLocalProfilePath(), kLocalCaches, FolderCount::Walker);
  const std::string user = folders_.Get_Special_Folder(kUserProfile);
  if (!NamedTraces::IsPath(user)) return;
  // The layout of older Windows versions; elsewhere these are not there.
  names_.WipeFolders(
      user + "\\Local Settings\\Application Data\\Mozilla\\Firefox\\Profiles\\" + profiles_.FirefoxProfileName(),
      kRoamingCaches, FolderCount::Walker);
}

void FirefoxTraces::Kill_Firefox_Jump_List() {
  names_.WipeFolders(profiles_.FirefoxLocalProfilePath(), kJumpListCaches, FolderCount::Walker);
}

std::span<const NamedRoutine<FirefoxTraces>> FirefoxTraces::Routines() {
  static constexpr NamedRoutine<FirefoxTraces> kRoutines[] = {
      {"Kill_Firefox_Droplist", &FirefoxTraces::Kill_Firefox_Droplist},
      {"Kill_Firefox_History", &FirefoxTraces::Kill_Firefox_History},
      {"Kill_Firefox_Cache", &FirefoxTraces::Kill_Firefox_Cache},
      {"Kill_Firefox_Cookies", &FirefoxTraces::Kill_Firefox_Cookies},
      {"Kill_Firefox_AutoComplete", &FirefoxTraces::Kill_Firefox_AutoComplete},
      {"Kill_Firefox_Downloads", &FirefoxTraces::Kill_Firefox_Downloads},
      {"Kill_Firefox_Jump_List", &FirefoxTraces::Kill_Firefox_Jump_List},
      {"Kill_Firefox_Session", &FirefoxTraces::Kill_Firefox_Session},
  };
  return kRoutines;
}

}  // namespace qb
