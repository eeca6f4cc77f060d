#include "kill/traces/chrome_traces.h"

namespace qb {

namespace {

constexpr int kFirstProfile = 1;
constexpr int kLastProfile = 9;  // a profile 10 or above is never touched

constexpr std::string_view kVisitedLinks[] = {"\\Visited Links"};
constexpr std::string_view kCookies[] = {"\\Cookies", "\\Cookies-journal"};
constexpr std::string_view kAutoComplete[] = {"\\Web Data", "\\Login Data"};
constexpr std::string_view kThumbnails[] = {"\\Thumbnails"};
constexpr std::string_view kSession[] = {"\\Last Session", "\\Last Tabs", "\\Current Session", "\\Current Tabs"};
constexpr std::string_view kTopSites[] = {"\\Top Sites", "\\Top Sites-journal"};
constexpr std::string_view kCache[] = {"\\Cache", "\\Media Cache"};
constexpr std::string_view kLocalStorage[] = {"\\Local Storage"};
constexpr std::string_view kJumpList[] = {"\\JumpListIcons", "\\JumpListIconsOld"};
constexpr std::string_view kFlashCookies[] = {"\\Pepper Data\\Shockwave Flash\\WritableRoot\\#SharedObjects",
                                              "\\databases"};
constexpr std::string_view kHistoryFirst[] = {"\\History"};
constexpr std::string_view kHistoryIndex = "\\History Index*";
constexpr std::string_view kHistoryRest[] = {"\\History-journal", "\\History Provider Cache",
                                             "\\Network Action Predictor"};
constexpr std::string_view kArchived[] = {"\\Archived History", "\\Archived History-journal"};

}  // namespace

void ChromeTraces::ForNumberedProfiles(const std::function<void(const std::string& folder)>& step) {
  for (int number = kFirstProfile; number <= kLastProfile; ++number) {
    if (profiles_.Check_Chrome_Multi_Profile_Path(number)) step(profiles_.Get_Chrome_Multi_Profile_Path(number));
  }
}

void ChromeTraces::WipeFiles(Names names) {
  names_.WipeFiles(profiles_.Get_Chrome_Profile_Path(), names);
  ForNumberedProfiles([&](const std::string& folder) { names_.WipeFiles(folder, names); });
}

void ChromeTraces::WipeFolders(Names names) {
  names_.WipeFolders(profiles_.Get_Chrome_Profile_Path(), names, FolderCount::WalkerAndOne);
  ForNumberedProfiles([&](const std::string& folder) { names_.WipeFolders(folder, names, FolderCount::WalkerAndOne); });
}

void ChromeTraces::Kill_Chrome_Visited_Links() {
  WipeFiles(kVisitedLinks);
}
void ChromeTraces::Kill_Chrome_Cookies() {
  WipeFiles(kCookies);
}
void ChromeTraces::Kill_Chrome_AutoComplete() {
  WipeFiles(kAutoComplete);
}
void ChromeTraces::Kill_Chrome_Thumbnails() {
  WipeFiles(kThumbnails);
}
void ChromeTraces::Kill_Chrome_Session() {
  WipeFiles(kSession);
}
void ChromeTraces::Kill_Chrome_Top_Sites() {
  WipeFiles(kTopSites);
}
void ChromeTraces::Kill_Chrome_Cache() {
  WipeFolders(kCache);
}
void ChromeTraces::Kill_Chrome_Local_Storage() {
  WipeFolders(kLocalStorage);
}
void ChromeTraces::Kill_Chrome_Jump_List() {
  WipeFolders(kJumpList);
}
void ChromeTraces::Kill_Chrome_Flash_Cookies() {
  WipeFolders(kFlashCookies);
}

void ChromeTraces::Kill_Chrome_History() {
  auto delete_index = [this](const std::string& folder) {
    names_.DeletePattern(folder + std::string(kHistoryIndex));
    names_.Count(1);
  };
  const std::string folder = profiles_.Get_Chrome_Profile_Path();
  if (NamedTraces::IsPath(folder)) {
    names_.WipeFiles(folder, kHistoryFirst);
    // Deliberate: the profile of number 0, which Chrome does not make, and not the default one.
    delete_index(profiles_.Get_Chrome_Multi_Profile_Path(0));
    names_.WipeFiles(folder, kHistoryRest);
  }
  Kill_Chrome_Top_Sites();
  ForNumberedProfiles([&](const std::string& profile) {
    names_.WipeFiles(profile, kHistoryFirst);
    delete_index(profile);
    names_.WipeFiles(profile, kHistoryRest);
  });
}

void ChromeTraces::Kill_Chrome_Archived_History() {
  const std::string folder = profiles_.Get_Chrome_Profile_Path();
  if (NamedTraces::IsPath(folder)) {
    names_.WipeFiles(folder, kArchived);
    names_.DeletePattern(folder + std::string(kHistoryIndex));
    names_.Count(1);
  }
  ForNumberedProfiles([this](const std::string& profile) { names_.WipeFiles(profile, kArchived); });
}

std::span<const NamedRoutine<ChromeTraces>> ChromeTraces::Routines() {
  static constexpr NamedRoutine<ChromeTraces> kRoutines[] = {
      {"Kill_Chrome_Visited_Links", &ChromeTraces::Kill_Chrome_Visited_Links},
      {"Kill_Chrome_History", &ChromeTraces::Kill_Chrome_History},
      {"Kill_Chrome_Cache", &ChromeTraces::Kill_Chrome_Cache},
      {"Kill_Chrome_Cookies", &ChromeTraces::Kill_Chrome_Cookies},
      {"Kill_Chrome_AutoComplete", &ChromeTraces::Kill_Chrome_AutoComplete},
      {"Kill_Chrome_Archived_History", &ChromeTraces::Kill_Chrome_Archived_History},
      {"Kill_Chrome_Thumbnails", &ChromeTraces::Kill_Chrome_Thumbnails},
      {"Kill_Chrome_Local_Storage", &ChromeTraces::Kill_Chrome_Local_Storage},
      {"Kill_Chrome_Jump_List", &ChromeTraces::Kill_Chrome_Jump_List},
      {"Kill_Chrome_Session", &ChromeTraces::Kill_Chrome_Session},
      {"Kill_Chrome_Flash_Cookies", &ChromeTraces::Kill_Chrome_Flash_Cookies},
      {"Kill_Chrome_Top_Sites", &ChromeTraces::Kill_Chrome_Top_Sites},
  };
  return kRoutines;
}

}  // namespace qb
