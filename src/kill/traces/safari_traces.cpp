#include "kill/traces/safari_traces.h"

namespace qb {

namespace {

constexpr std::string_view kHistory[] = {"\\History.plist"};
constexpr std::string_view kHistoryFolder[] = {"\\History"};
constexpr std::string_view kCache[] = {"\\Cache.db"};
constexpr std::string_view kCookies[] = {"\\Cookies\\Cookies.plist", "\\Cookies\\Cookies.binarycookies"};
constexpr std::string_view kDownloads[] = {"\\Downloads.plist"};
constexpr std::string_view kForms[] = {"\\Form Values.plist"};
constexpr std::string_view kIcons[] = {"\\WebpageIcons.db"};
constexpr std::string_view kTopSites[] = {"\\TopSites.plist"};
constexpr std::string_view kFeeds[] = {"\\PubSub\\Feeds"};
constexpr std::string_view kLocalStorage[] = {"\\LocalStorage"};
constexpr std::string_view kSession[] = {"\\LastSession.plist"};

}  // namespace

void SafariTraces::Kill_Safari_History() {
  WipeRoaming(kHistory);
  WipeLocalFolders(kHistoryFolder);
}

void SafariTraces::Kill_Safari_Cache() {
  // Deliberate: the roaming folder is asked for as well, and not used.
  static_cast<void>(profiles_.Get_Safari_Profile_Path());
  WipeLocal(kCache);
}
void SafariTraces::Kill_Safari_Cookies() {
  WipeRoaming(kCookies);
}
void SafariTraces::Kill_Safari_Downloads() {
  WipeRoaming(kDownloads);
}
void SafariTraces::Kill_Safari_AutoComplete() {
  WipeRoaming(kForms);
}
void SafariTraces::Kill_Safari_Thumbnails() {
  WipeLocal(kIcons);
}

void SafariTraces::Kill_Safari_Top_Sites() {
  WipeRoaming(kTopSites);
  names_.WipeFolders(profiles_.Get_Safari_Profile_Path(), kFeeds, FolderCount::Walker);
}

void SafariTraces::Kill_Safari_Local_Storage() {
  WipeLocalFolders(kLocalStorage);
}
void SafariTraces::Kill_Safari_Session() {
  WipeRoaming(kSession);
}

std::span<const NamedRoutine<SafariTraces>> SafariTraces::Routines() {
  static constexpr NamedRoutine<SafariTraces> kRoutines[] = {
      {"Kill_Safari_History", &SafariTraces::Kill_Safari_History},
      {"Kill_Safari_Cache", &SafariTraces::Kill_Safari_Cache},
      {"Kill_Safari_Cookies", &SafariTraces::Kill_Safari_Cookies},
      {"Kill_Safari_Downloads", &SafariTraces::Kill_Safari_Downloads},
      {"Kill_Safari_AutoComplete", &SafariTraces::Kill_Safari_AutoComplete},
      {"Kill_Safari_Thumbnails", &SafariTraces::Kill_Safari_Thumbnails},
      {"Kill_Safari_Top_Sites", &SafariTraces::Kill_Safari_Top_Sites},
      {"Kill_Safari_Local_Storage", &SafariTraces::Kill_Safari_Local_Storage},
      {"Kill_Safari_Session", &SafariTraces::Kill_Safari_Session},
  };
  return kRoutines;
}

}  // namespace qb
