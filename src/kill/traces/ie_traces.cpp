#include "kill/traces/ie_traces.h"

#include <algorithm>

#include "cookies/url_cache_list.h"
#include "kill/traces/windows_traces.h"

namespace qb {

namespace {

constexpr std::string_view kTypedUrls[] = {
    "Software\\Microsoft\\Internet Explorer\\TypedURLs",
    "Software\\Microsoft\\Internet Explorer\\TypedURLsX",
};
constexpr std::string_view kYahooUrls[] = {"Software\\Yahoo\\Browser\\Typed Urls"};
constexpr std::string_view kGoogleHistory[] = {"Software\\Google\\NavClient\\1.1\\History"};
constexpr std::string_view kSearchLists[] = {
    "Software\\Microsoft\\Search Assistant\\ACMru\\5001",
    "Software\\Microsoft\\Search Assistant\\ACMru\\5603",
    "Software\\Microsoft\\Search Assistant\\ACMru\\5604",
    "Software\\Microsoft\\Search Assistant\\ACMru\\5647",
};
constexpr std::string_view kRecoveryFolders[] = {"\\Active", "\\Last Active", "\\High", "\\Immersive"};

constexpr std::string_view kHistoryClass = "{3C374A40-BAE4-11CF-BF7D-00AA006946EE}";      // CUrlHistory
constexpr std::string_view kHistoryInterface = "{AFA0DC11-C313-11D0-831A-00C04FD5AE38}";  // IUrlHistoryStg2
constexpr std::uint32_t kInProcess = 3;
constexpr std::uint32_t kClearHistory = 36;  // byte offsets in the interface's table
constexpr std::uint32_t kRelease = 8;

constexpr std::string_view kHelper = "Ashbrine.exe";
constexpr std::string_view kEdgeScript = "ClearIEcache.cmd";
constexpr int kHidden = 0;

// The program's own sites: their cookies and cache entries are spared. A word that begins the text does
// not count.
constexpr std::string_view kNeverDelete[] = {"quillbarrow", "ferrowick", "brackenholt"};

bool NeverDelete(const std::string& lower_text) {
  return std::any_of(std::begin(kNeverDelete), std::end(kNeverDelete), [&](std::string_view word) {
    const std::size_t place = lower_text.find(word);
    return place != std::string::npos && place > 0;
  });
}

}  // namespace

void IeTraces::GetCacheURLList() {
  urls_ = CacheUrls(needs_.platform.url_cache);
  display_.ShowCacheUrls(urls_);
}

void IeTraces::DeleteLists(Names keys) {
  CountAndDeleteKeys(needs_.platform, needs_.life, needs_.history_removed, keys);
}

void IeTraces::Kill_Typed_URLs() {
  DeleteLists(kTypedUrls);
  const std::string& user = needs_.settings.Text(Setting::MSN8Profile);
  if (user.size() > 1) {
    const std::string msn = "Software\\Microsoft\\MSN6\\Users\\" + user + "\\TypedURLs";
    const std::string_view keys[] = {msn};
    DeleteLists(keys);
  }
  DeleteLists(kYahooUrls);
}

void IeTraces::Kill_History_Store() {
  auto store = needs_.platform.com.CoCreateInstance(kHistoryClass, kInProcess, kHistoryInterface);
  if (!store.ok()) return;
  StepOver(needs_.platform.com.DispCallFunc(store.value, kClearHistory, kCallStdcall, kResultLong));
  StepOver(needs_.platform.com.DispCallFunc(store.value, kRelease, kCallStdcall, kResultLong));
}

void IeTraces::RunHelper(std::string_view program, std::string_view parameters) {
  if (needs_.life.Over()) return;
  const std::string path = Add_Backslash(needs_.folders.ProgramFolder()) + std::string(program);
  // A helper that is not there is not looked for anywhere else.
  if (!delete_path_.File_Can_Open(path)) return;
  WindowHandle owner = display_.Owner();
  StepOver(analyzer_.Execute(path, kHidden, std::string(parameters), true, owner));
}

void IeTraces::Kill_History_Helper() {
  RunHelper(kHelper, "-h -q");
}
void IeTraces::Kill_Temp_Helper() {
  RunHelper(kHelper, "-t -q");
}

void IeTraces::Kill_Cookies_Helper() {
  if (needs_.life.Over()) return;
  Settings& settings = needs_.settings;
  settings.SetNumber(Setting::SaveCookieCount, settings.StoredNumber(Setting::SaveCookieCount, "0"));
  // Any number but 0 holds it back, also one that is too large to be held in memory.
  if (LeadingNumber(settings.StoredText(Setting::SaveCookieCount, "0")) == 0) RunHelper(kHelper, "-c -q");
}

void IeTraces::Kill_Edge_Cache() {
  RunHelper(kEdgeScript, "");
}

void IeTraces::Kill_Cache_Entries(CachePass pass) {
  GetCacheURLList();
  const std::vector<std::string> urls = urls_;
  const int max_before = display_.Max();
  display_.SetMax(std::max(static_cast<int>(urls.size()) - 1, 1));
  for (std::size_t i = 0; i < urls.size(); ++i) {
    display_.SetValue(static_cast<int>(i));
    if (!PumpAndLive(needs_.platform, needs_.life)) return;
    needs_.history_removed.Add(1);
    const std::string lower = LowerCase(urls[i]);
    const bool cookie = lower.find("cookie") != std::string::npos;
    const bool goes =
        cookie ? pass == CachePass::Cookies && !needs_.keep_list.KeepsCacheEntry(lower) && !NeverDelete(lower)
               : pass == CachePass::Pages;
    if (goes) StepOver(needs_.platform.url_cache.DeleteUrlCacheEntryA(urls[i]));
  }
  display_.SetMax(max_before);
  GetCacheURLList();
}

void IeTraces::Kill_Cookie_Files() {
  // Without a stored folder it reads as a lone backslash, which would be the root of the current drive.
  const std::string folder = needs_.products.Cookies();
  if (!NamedTraces::IsPath(folder) || !delete_path_.IsPlainFolder(WithoutBackslash(folder))) return;
  std::vector<std::string> work;
  for (const FolderEntry& entry : ListEntries(needs_.platform.files, folder + "*.*", kListEverything)) {
    if (entry.IsFolder() || entry.name.find(".txt") == std::string::npos) continue;
    std::string path = folder + entry.name;
    if (!needs_.keep_list.KeepsFile(LowerCase(path))) work.push_back(std::move(path));
  }
  // Places count from 1, and the bound is the size that the list has now.
  const std::size_t bound = work.size();
  for (std::size_t place = 1; place <= bound; ++place) {
    if (place > work.size()) break;
    if (NeverDelete(LowerCase(work[place - 1]))) {
      work.erase(work.begin() + static_cast<std::ptrdiff_t>(place - 1));
      // Deliberate: at the end of the list the place is not taken back, and the last file stays.
      if (place < work.size()) --place;
      continue;
    }
    StepOver(delete_path_.Wipe_File(work[place - 1]));
    needs_.history_removed.Add(1);
  }
}

void IeTraces::Kill_Google_Bar() {
  DeleteLists(kGoogleHistory);
  if (needs_.life.Over()) return;
  const std::string roaming = needs_.folders.Get_Special_Folder(kRoamingData);
  if (!NamedTraces::IsPath(roaming)) return;
  // Deliberate: when the change of folder fails the walker is given whatever the current one is.
  StepOver(ChangeFolder(needs_.platform.files, roaming + "\\Google"));
  const std::string current = needs_.platform.files.GetCurrentDirectoryA().value_or({});
  if (!current.empty()) delete_path_.Wipe_Folder_Files(current + "\\Local Search History");
}

void IeTraces::Kill_Search_History() {
  DeleteLists(kSearchLists);
}

void IeTraces::Kill_IE_Recovery() {
  names_.WipeFolders(needs_.profiles.Get_IE_Profile_Path(), kRecoveryFolders, FolderCount::WalkerAndOne);
}

std::span<const NamedRoutine<IeTraces>> IeTraces::Routines() {
  static constexpr NamedRoutine<IeTraces> kRoutines[] = {
      {"GetCacheURLList", &IeTraces::GetCacheURLList},         {"Kill_Typed_URLs", &IeTraces::Kill_Typed_URLs},
      {"Kill_History_Store", &IeTraces::Kill_History_Store},   {"Kill_History_Helper", &IeTraces::Kill_History_Helper},
      {"Kill_Temp_Helper", &IeTraces::Kill_Temp_Helper},       {"Kill_Cookies_Helper", &IeTraces::Kill_Cookies_Helper},
      {"Kill_Cookie_Files", &IeTraces::Kill_Cookie_Files},     {"Kill_Google_Bar", &IeTraces::Kill_Google_Bar},
      {"Kill_Search_History", &IeTraces::Kill_Search_History}, {"Kill_IE_Recovery", &IeTraces::Kill_IE_Recovery},
      {"Kill_Edge_Cache", &IeTraces::Kill_Edge_Cache},
  };
  return kRoutines;
}

}  // namespace qb
