#include "internet_story.h"

#include <algorithm>

#include "computer.h"
#include "cookie_window.h"
#include "remote_program.h"
// After the basic types of windows.h.
#include <wininet.h>

namespace native {

namespace {

using Texts = std::vector<std::string>;

const std::string kProgramFolder = "C:\\Program Files\\Quillbarrow";
const std::string kHelper = kProgramFolder + "\\Ashbrine.exe";
const std::string kScript = kProgramFolder + "\\ClearIEcache.cmd";
constexpr const char* kHelperCalls = "C:\\helper-calls.txt";
constexpr const char* kScriptCalls = "C:\\script-calls.txt";
const std::string kProfile = "C:\\users\\root";
const std::string kKeepFile = kProfile + "\\AppData\\Local\\Quillbarrow\\qb.dat";
const std::string kCaches = kProfile + "\\AppData\\Local\\Microsoft\\Windows";
const std::string kCookieFolder = kCaches + "\\INetCookies";
constexpr const char* kStore = "Software\\VB and VBA Program Settings\\Temp\\SystemData";

struct CacheRow {
  const char* url;
  DWORD type;
};
constexpr CacheRow kPages[] = {
    {"http://news.example/page.htm", NORMAL_CACHE_ENTRY},
    {"http://shop.example/basket.htm", NORMAL_CACHE_ENTRY},
    {"Visited: root@http://news.example/page.htm", NORMAL_CACHE_ENTRY | URLHISTORY_CACHE_ENTRY},
};
constexpr DWORD kCookie = NORMAL_CACHE_ENTRY | COOKIE_CACHE_ENTRY;
constexpr const char* kOwnEntry = "Cookie:root@quillbarrow.example/";
constexpr CacheRow kCookies[] = {
    {"Cookie:root@shop.example/", kCookie},
    {"Cookie:root@shop.example/cart/", kCookie},
    {"Cookie:root@news.example/", kCookie},
    {kOwnEntry, kCookie},
};
const Texts kCookieUrls = {"Cookie:root@news.example/", kOwnEntry, "Cookie:root@shop.example/",
                           "Cookie:root@shop.example/cart/"};

struct Trace {
  std::string place;
  bool goes;
};

const std::string kMicrosoft = "Software\\Microsoft\\";
const std::string kProtected = kMicrosoft + "Protected Storage System Provider";
const std::string kForms = kProtected + "\\S-1-5-21-7\\Data\\{E161255A}";
const Trace kKeys[] = {
    {kMicrosoft + "Internet Explorer\\TypedURLs", true},
    {kMicrosoft + "Internet Explorer\\TypedURLsX", true},
    {kMicrosoft + "Internet Explorer\\TypedURLsTime", false},
    {kMicrosoft + "MSN6\\Users\\jill@msn.com\\TypedURLs", true},
    {kMicrosoft + "MSN6\\Users\\jack@msn.com\\TypedURLs", false},
    {"Software\\Yahoo\\Browser\\Typed Urls", true},
    {"Software\\Yahoo\\Browser\\Options", false},
    {"Software\\Google\\NavClient\\1.1\\History", true},
    {"Software\\Google\\NavClient\\1.1\\Options", false},
    {kMicrosoft + "Search Assistant\\ACMru\\5001", true},
    {kMicrosoft + "Search Assistant\\ACMru\\5603", true},
    {kMicrosoft + "Search Assistant\\ACMru\\5604", true},
    {kMicrosoft + "Search Assistant\\ACMru\\5647", true},
    {kMicrosoft + "Search Assistant\\ACMru\\5648", false},
    {kForms + "\\Q:StringData", true},
    {kForms + "\\query", true},
    {kForms + "\\Query2", false},
    {kForms + "\\Q", true},
    {kForms + "\\Q\\Q", true},
    {kForms + "\\Q\\Q\\P:StringIndex", true},
    // A data key in which another key lies cannot go.
    {kForms + "\\SearchText\\Mine", false},
};

const std::string kRecovery = kProfile + "\\AppData\\Local\\Microsoft\\Internet Explorer\\Recovery";
const std::string kGoogle = kProfile + "\\AppData\\Roaming\\Google";
const Trace kFiles[] = {
    {kRecovery + "\\Active\\tab.dat", true},
    {kRecovery + "\\Last Active\\tab.dat", true},
    {kRecovery + "\\High\\Active\\tab.dat", true},
    {kRecovery + "\\Immersive\\tab.dat", true},
    {kRecovery + "\\Other\\tab.dat", false},
    {kRecovery + "\\tab.dat", false},
    {kGoogle + "\\Local Search History\\words.txt", true},
    {kGoogle + "\\words.txt", false},
    // Beside those that the system names when a cookie entry is made, whose names hold no site.
    {kCookieFolder + "\\a root@quillbarrow[1].txt", false},
    {kCookieFolder + "\\root@mail.example[1].txt", true},
    {kCookieFolder + "\\root@SHOP.example[1].txt", false},
    {kCookieFolder + "\\root@shop[1].txt", true},
    {kCookieFolder + "\\root@mail.example[1].dat", false},
    {kCookieFolder + "\\Low\\root@mail.example[1].txt", false},
};

// Four of those that the program arranges for, in its order, and what it never names.
const std::string kIndexFiles[] = {
    kProfile + "\\Cookies\\index.dat",
    kProfile + "\\Local Settings\\History\\History.IE5\\index.dat",
    kProfile + "\\UserData\\index.dat",
    kProfile + "\\Local\\Microsoft\\Windows\\Temporary Internet Files\\Content.IE5\\index.dat",
};
const std::string kOtherFiles[] = {kProfile + "\\index.dat", kProfile + "\\Cookies\\other.dat"};
const std::string kNewName = kProgramFolder + "\\1";
constexpr std::size_t kArranged = 16;

const Texts kBoxes = {"URL address drop-list box",
                      "Internet History file",
                      "Temp Internet Files",
                      "Cookies",
                      "AutoComplete",
                      "index.dat files",
                      "IE crash recovery data",
                      "Google Toolbar history",
                      "Search Button history",
                      "MS Edge Browser / WebCache"};

// --- preparing ---

Texts MakeEntries(const CacheRow* row, std::size_t count, const std::string& extension) {
  Texts files;
  for (; count > 0; --count, ++row) files.push_back(MakeCacheEntry(row->url, row->type, extension));
  return files;
}
Texts MakePages() {
  return MakeEntries(kPages, std::size(kPages), "htm");
}
Texts MakeCookies() {
  return MakeEntries(kCookies, std::size(kCookies), "txt");
}

// The two that stand in for the helpers write down how they were called.
void InstallHelpers() {
  CopyFileA("C:\\native_helper.exe", kHelper.c_str(), FALSE);
  MakeFile(kScript, "@echo called>>" + std::string(kScriptCalls) + "\r\n");
}

// Windows keeps ordinary programs from changing this tree: what is left is to read it and to change that.
void Protect(const std::string& key) {
  HKEY opened = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, KEY_READ | WRITE_DAC, &opened) != ERROR_SUCCESS) return;
  for (DWORD index = 0;; ++index) {
    char name[256];
    if (RegEnumKeyA(opened, index, name, sizeof name) != ERROR_SUCCESS) break;
    Protect(key + "\\" + name);
  }
  alignas(DWORD) unsigned char list[64], everyone[SECURITY_MAX_SID_SIZE];
  DWORD size = sizeof everyone;
  CreateWellKnownSid(WinWorldSid, nullptr, everyone, &size);
  InitializeAcl(reinterpret_cast<ACL*>(list), sizeof list, ACL_REVISION);
  AddAccessAllowedAce(reinterpret_cast<ACL*>(list), ACL_REVISION, KEY_READ | WRITE_DAC, everyone);
  SECURITY_DESCRIPTOR descriptor;
  InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
  SetSecurityDescriptorDacl(&descriptor, TRUE, reinterpret_cast<ACL*>(list), FALSE);
  RegSetKeySecurity(opened, DACL_SECURITY_INFORMATION, &descriptor);
  RegCloseKey(opened);
}

bool CanDelete(const std::string& key) {
  HKEY opened = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, KEY_ALL_ACCESS, &opened) != ERROR_SUCCESS) return false;
  RegCloseKey(opened);
  return true;
}

// The settings of an account that has used the program before, and has told it an address.
void SettleAccount() {
  DeleteKey(kStore);
  SetValue(kStore, "QBBuild", "1");
  SetValue(kStore, "MSN8Profile", "jill@msn.com");
}

// --- asking ---

bool AllThere(const Texts& files) {
  return std::all_of(files.begin(), files.end(), Exists);
}
bool NoneThere(const Texts& files) {
  return std::none_of(files.begin(), files.end(), Exists);
}

Texts Sorted(Texts texts) {
  std::sort(texts.begin(), texts.end());
  return texts;
}

// The traces that did not go though they should have, or the other way round.
template <typename Traces>
std::string WrongFates(const Traces& traces, bool (*there)(const std::string&)) {
  std::string wrong;
  for (const Trace& trace : traces) {
    if (there(trace.place) == trace.goes) wrong += " '" + trace.place + "'";
  }
  return wrong;
}

// What the system holds for its next start: old and new names by turns.
Texts PendingRenames() {
  HKEY manager = nullptr;
  RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SYSTEM\\CurrentControlSet\\Control\\Session Manager", 0, KEY_READ, &manager);
  std::vector<char> data(65536);
  DWORD size = static_cast<DWORD>(data.size());
  const bool there = RegQueryValueExA(manager, "PendingFileRenameOperations", nullptr, nullptr,
                                      reinterpret_cast<BYTE*>(data.data()), &size) == ERROR_SUCCESS;
  RegCloseKey(manager);
  Texts names;
  for (const char* at = data.data(); there && *at != '\0'; at += names.back().size() + 1) names.emplace_back(at);
  return names;
}

// Shows the page of this browser with exactly these of its boxes ticked.
bool Tick(RemoteProgram& program, const Texts& wanted) {
  HWND window = program.MainWindow();
  if (window == nullptr || !WaitFor([&] { return IsWindowVisible(window) != FALSE; }) || !program.PickTab(0)) {
    return false;
  }
  return std::all_of(kBoxes.begin(), kBoxes.end(), [&](const std::string& box) {
    const bool tick = std::find(wanted.begin(), wanted.end(), box) != wanted.end();
    return program.Ticked(box) == tick || (program.Click(box) && program.Ticked(box) == tick);
  });
}

// --- the runs ---

class Story {
 public:
  explicit Story(const Report& check) : check_(check) {}

  void Play() {
    KeepOneSite();
    KeepNothing();
    WithoutHelpers();
    MakeFile("C:\\internet-log.txt", Joined(log_));
  }

 private:
  // All boxes, and one site on the keep list.
  void KeepOneSite() {
    EmptyUrlCache();
    SettleAccount();
    InstallHelpers();
    for (const Trace& trace : kKeys) SetValue(trace.place, "url1", "http://news.example/");
    for (const Trace& trace : kFiles) MakeFile(trace.place, "trace");
    for (const std::string& path : kIndexFiles) MakeFile(path, path);
    for (const std::string& path : kOtherFiles) MakeFile(path, path);
    Protect(kProtected);
    check_(!CanDelete(kForms) && !CanDelete(kProtected), "the system refuses to change the protected tree");
    const Texts pages = MakePages(), cookies = MakeCookies();
    check_(AllThere(pages) && AllThere(cookies), "the system takes entries of its URL cache");
    const State before = TakeState();

    RemoteProgram program("");
    check_(Tick(program, kBoxes), "a click ticks each box of the page");
    {
      CookieWindow manager(program);
      check_(manager.IsOpen(), "the Cookie Manager opens");
      check_(Sorted(manager.ToDelete()) ==
                 Texts{"news.example", "quillbarrow.example", "shop.example", "shop.example/cart"},
             "it shows the sites of the cookie entries");
      check_(manager.ToKeep().empty() && manager.Keep("shop.example") && manager.ToKeep() == Texts{"shop.example"},
             "the picked one comes to those to keep");
      check_(manager.Save() && ReadFile(kKeepFile) == "shop.example\n" && Value(kStore, "SaveCookieCount") == "1",
             "saving writes it to qb.dat, stores the count and closes the window");
    }
    Run(program);
    check_(CacheUrls() == kCookieUrls, "the pages and the visited address leave the URL cache, and no cookie does");
    check_(NoneThere(pages) && NoneThere(cookies),
           "the files of the pages go, and those of the cookies, whose names hold no site");
    std::string wrong = WrongFates(kFiles, Exists);
    check_(wrong.empty(), "of the other files go those that should" + wrong);
    wrong = WrongFates(kKeys, KeyExists);
    check_(wrong.empty(), "of the keys go those that should" + wrong);
    check_(ReadFile(kHelperCalls) == "hidden -h -q\nended -h -q\nhidden -t -q\nended -t -q\n",
           "the helper is called for history and cache, hidden and one call after the other, and not for cookies");
    check_(ReadFile(kScriptCalls) == "called\n", "the script of the Edge class is run");
    NothingElse(before, pages, cookies);
    IndexFilesArranged();
    check_(program.End() && AllThere({std::begin(kIndexFiles), std::end(kIndexFiles)}),
           "the program ends, and the index.dat files are still there");
  }

  void NothingElse(const State& before, const Texts& pages, const Texts& cookies) {
    Texts expected = {
        "Software\\VB and VBA Program Settings\\Temp\\SystemData\\", "C:\\users\\root\\AppData\\Local\\Quillbarrow",
        "Software\\Microsoft\\Windows\\CurrentVersion\\Run\\", "Software\\Wine\\", kHelperCalls, kScriptCalls,
        // the system's own lists of what its URL cache holds
        kCaches + "\\INetCache\\Content.IE5\\index.dat", kCaches + "\\History\\History.IE5\\index.dat",
        kCookieFolder + "\\index.dat"};
    expected.insert(expected.end(), pages.begin(), pages.end());
    expected.insert(expected.end(), cookies.begin(), cookies.end());
    for (const Trace& trace : kKeys) {
      if (trace.goes) expected.push_back(trace.place + "\\");
    }
    for (const Trace& trace : kFiles) {
      if (trace.goes) expected.push_back(trace.place);
    }
    const Texts differences = Differences(before, TakeState(), expected);
    for (const std::string& line : differences) std::printf("     %s\n", line.c_str());
    check_(differences.empty(), "nothing else changed, byte for byte");
  }

  void IndexFilesArranged() {
    const Texts pending = PendingRenames();
    bool as_arranged = pending.size() == 2 * kArranged;
    for (std::size_t i = 1; i < pending.size(); i += 2) as_arranged = as_arranged && pending[i] == "\\??\\" + kNewName;
    auto next = pending.begin();
    for (const std::string& path : kIndexFiles) {
      next = std::find(next, pending.end(), "\\??\\" + path);
      as_arranged = as_arranged && next != pending.end();
    }
    check_(as_arranged, "sixteen renames are arranged with the system, all to one name in the program's folder");
  }

  // Cache and cookies alone, after the site was taken from the keep list.
  void KeepNothing() {
    DeleteFileA(kHelperCalls);
    const Texts pages = MakePages();
    for (const char* name : {"root@mail.example[2].txt", "root@web.example[1].txt"}) {
      MakeFile(kCookieFolder + "\\" + name, "trace");
    }
    RemoteProgram program("");
    check_(Tick(program, {"Temp Internet Files", "Cookies"}), "two boxes are ticked in the next start");
    {
      CookieWindow manager(program);
      check_(manager.IsOpen() && manager.ToKeep() == Texts{"shop.example"},
             "the Cookie Manager shows the kept site again");
      check_(manager.Remove("shop.example") && manager.ToKeep().empty(), "and lets go of it");
      check_(
          manager.Save() && Exists(kKeepFile) && ReadFile(kKeepFile).empty() && Value(kStore, "SaveCookieCount") == "0",
          "saving empties qb.dat and stores the count");
    }
    Run(program);
    check_(CacheUrls() == Texts{kOwnEntry}, "all cookies leave the URL cache but that of the program's own site");
    const Texts left = FilesIn(kCookieFolder);
    check_(
        NoneThere(pages) && left == Texts{"Low", "a root@quillbarrow[1].txt", "index.dat", "root@mail.example[1].dat"},
        "and all cookie files leave their folder but that of its own site");
    check_(ReadFile(kHelperCalls) == "hidden -t -q\nended -t -q\nhidden -c -q\nended -c -q\n",
           "the helper is called for the cookies too, and has ended before the run does");
    check_(program.End(), "the program ends");
  }

  void WithoutHelpers() {
    DeleteFileA(kHelperCalls);
    DeleteFileA(kScriptCalls);
    DeleteFileA(kHelper.c_str());
    DeleteFileA(kScript.c_str());
    RemoteProgram program("");
    check_(Tick(program, {"Internet History file", "Temp Internet Files", "Cookies", "MS Edge Browser / WebCache"}),
           "the boxes with helpers are ticked");
    Run(program);
    check_(program.VisibleWindows() == 1 && !Exists(kHelperCalls) && !Exists(kScriptCalls),
           "without the helpers the run goes on and says nothing");
    check_(program.End(), "the program ends");
  }

  void Run(RemoteProgram& program) {
    check_(program.Kill(), "the run ends");
    for (const std::string& line : program.LogAndCount()) log_.push_back(line);
  }

  const Report& check_;
  Texts log_;
};

}  // namespace

void InternetStory(const Report& check) {
  Story(check).Play();
}

void InternetStoryAfterBoot(const Report& check) {
  check(PendingRenames().empty(), "the boot has done with the pending renames");
  check(!Exists(kIndexFiles[0]) && ReadFile(kNewName) == kIndexFiles[0],
        "the first index.dat has left its place and is the file 1 in the program's folder");
  // The name that all were to get is taken, and the system replaces nothing.
  bool others_stay = true;
  for (std::size_t i = 1; i < std::size(kIndexFiles); ++i) {
    others_stay = others_stay && ReadFile(kIndexFiles[i]) == kIndexFiles[i];
  }
  check(others_stay, "the other index.dat files stay where they are");
  bool untouched = true;
  for (const std::string& path : kOtherFiles) untouched = untouched && ReadFile(path) == path;
  check(untouched, "files beside them are untouched");
}

}  // namespace native
