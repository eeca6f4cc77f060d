#include <algorithm>

#include "computer.h"
#include "program_windows.h"
#include "stories.h"

namespace native {

namespace {

const std::string kProgramFolder = "C:\\Program Files\\Quillbarrow";
const std::string kHelper = kProgramFolder + "\\Ashbrine.exe";
const std::string kScript = kProgramFolder + "\\ClearIEcache.cmd";
constexpr const char* kScriptCalls = "C:\\script-calls.txt";
const std::string kProfile = "C:\\users\\root";
const std::string kKeepFile = kProfile + "\\AppData\\Local\\Quillbarrow\\qb.dat";
const std::string kCaches = kProfile + "\\AppData\\Local\\Microsoft\\Windows";
const std::string kCookieFolder = kCaches + "\\INetCookies";
// Windows keeps ordinary programs from changing this tree.
const std::string kProtected = "Software\\Microsoft\\Protected Storage System Provider";

constexpr const char* kOwnEntry = "Cookie:root@quillbarrow.example/";
const Texts kCookieUrls = {"Cookie:root@news.example/", kOwnEntry, "Cookie:root@shop.example/",
                           "Cookie:root@shop.example/cart/"};

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

// The two that stand in for the helpers write down how they were called.
void InstallHelpers() {
  CopyFileA("C:\\native_helper.exe", kHelper.c_str(), FALSE);
  MakeFile(kScript, "@echo called>>" + std::string(kScriptCalls) + "\r\n");
}

// What is left is to read the tree and to change that.
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

// The settings of an account that has used the program before, and has told it an address.
void SettleAccount() {
  DeleteKey(kStore);
  SetValue(kStore, "QBBuild", "1");
  SetValue(kStore, "MSN8Profile", "jill@msn.com");
}

// --- asking ---

// What the system holds for its next start: old and new names by turns.
Texts PendingRenames() {
  std::vector<char> data(65536);
  auto size = static_cast<DWORD>(data.size());
  const bool there =
      RegGetValueA(HKEY_LOCAL_MACHINE, "SYSTEM\\CurrentControlSet\\Control\\Session Manager",
                   "PendingFileRenameOperations", RRF_RT_ANY, nullptr, data.data(), &size) == ERROR_SUCCESS;
  Texts names;
  for (const char* at = data.data(); there && *at != '\0'; at += names.back().size() + 1) names.emplace_back(at);
  return names;
}

// The Cookie Manager, opened by the button on the main window, whose first page is in front.
HWND OpenCookieManager(const RemoteProgram& program) {
  RemoteProgram::PostClick(program.MainWindow(), "Cookie Manager...");
  return program.Window("Quillbarrow 2019 - Cookie Manager");
}

// Saves, which closes the window; false if it stays.
bool Save(HWND manager) {
  return RemoteProgram::PostClick(manager, " Save Cookie Setup") && WaitGone(manager);
}

// --- the runs ---

class Story {
 public:
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
    Texts goes = MakeTraces("internet", "goes");
    const Texts stays = MakeTraces("internet", "stays");
    for (const std::string& path : kIndexFiles) MakeFile(path, path);
    for (const std::string& path : kOtherFiles) MakeFile(path, path);
    Protect(kProtected);
    Check(CanOpen(kProtected, KEY_READ) && !CanOpen(kProtected, KEY_ALL_ACCESS),
          "the system refuses to change the protected tree");
    for (const char* heading : {"pages", "cookies"}) {
      const Texts entries = MakeTraces("internet", heading);
      Check(ThoseThere(entries, false).empty(), "the system takes entries of its URL cache");
      goes.insert(goes.end(), entries.begin(), entries.end());
    }
    const State before = TakeState();

    RemoteProgram program;
    Check(program.Tick(0, kBoxes), "a click ticks each box of the page");
    {
      HWND window = OpenCookieManager(program);
      const CookieLists manager(window);
      Check(manager.IsOpen(), "the Cookie Manager opens");
      Texts sites = manager.ToDelete();
      std::sort(sites.begin(), sites.end());
      Check(sites == Texts{"news.example", "quillbarrow.example", "shop.example", "shop.example/cart"},
            "it shows the sites of the cookie entries");
      Check(manager.ToKeep().empty() && manager.Keep("shop.example") && manager.ToKeep() == Texts{"shop.example"},
            "the picked one comes to those to keep");
      Check(Save(window) && ReadFile(kKeepFile) == "shop.example\n" && Value(kStore, "SaveCookieCount") == "1",
            "saving writes it to qb.dat, stores the count and closes the window");
    }
    Run(program);
    Check(CacheUrls() == kCookieUrls, "the pages and the visited address leave the URL cache, and no cookie does");
    std::string wrong = ThoseThere(goes, true);
    Check(wrong.empty(), "the traces go, and with them the files of the cookies, whose names hold no site" + wrong);
    wrong = ThoseThere(stays, false);
    Check(wrong.empty(), "what only looks like them stays" + wrong);
    Check(ReadFile(kHelperCalls) == "hidden -h -q\nended -h -q\nhidden -t -q\nended -t -q\n",
          "the helper is called for history and cache, hidden and one call after the other, and not for cookies");
    Check(ReadFile(kScriptCalls) == "called\n", "the script of the Edge class is run");
    // The last are the system's own lists of what its URL cache holds.
    goes.insert(goes.end(), {kHelperCalls, kScriptCalls, kCaches + "\\INetCache\\Content.IE5\\index.dat",
                             kCaches + "\\History\\History.IE5\\index.dat", kCookieFolder + "\\index.dat"});
    CheckNothingElse(before, goes);
    IndexFilesArranged();
    Check(program.End() && ThoseThere({std::begin(kIndexFiles), std::end(kIndexFiles)}, false).empty(),
          "the program ends, and the index.dat files are still there");
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
    Check(as_arranged, "sixteen renames are arranged with the system, all to one name in the program's folder");
  }

  // Cache and cookies alone, after the site was taken from the keep list.
  void KeepNothing() {
    DeleteFileA(kHelperCalls);
    const Texts pages = MakeTraces("internet", "pages");
    MakeTraces("internet", "more cookie files");
    RemoteProgram program;
    Check(program.Tick(0, {"Temp Internet Files", "Cookies"}, kBoxes), "two boxes are ticked in the next start");
    {
      HWND window = OpenCookieManager(program);
      const CookieLists manager(window);
      Check(manager.IsOpen() && manager.ToKeep() == Texts{"shop.example"},
            "the Cookie Manager shows the kept site again");
      Check(manager.Remove("shop.example") && manager.ToKeep().empty(), "and lets go of it");
      Check(Save(window) && Exists(kKeepFile) && ReadFile(kKeepFile).empty() && Value(kStore, "SaveCookieCount") == "0",
            "saving empties qb.dat and stores the count");
    }
    Run(program);
    Check(CacheUrls() == Texts{kOwnEntry}, "all cookies leave the URL cache but that of the program's own site");
    Check(ThoseThere(pages, true).empty() && FilesIn(kCookieFolder) == Texts{"Low", "a root@quillbarrow[1].txt",
                                                                             "index.dat", "root@mail.example[1].dat"},
          "and all cookie files leave their folder but that of its own site");
    Check(ReadFile(kHelperCalls) == "hidden -t -q\nended -t -q\nhidden -c -q\nended -c -q\n",
          "the helper is called for the cookies too, and has ended before the run does");
    Check(program.End(), "the program ends");
  }

  void WithoutHelpers() {
    for (const char* path : {kHelperCalls, kScriptCalls, kHelper.c_str(), kScript.c_str()}) DeleteFileA(path);
    RemoteProgram program;
    Check(program.Tick(0, {"Internet History file", "Temp Internet Files", "Cookies", "MS Edge Browser / WebCache"},
                       kBoxes),
          "the boxes with helpers are ticked");
    Run(program);
    Check(program.VisibleWindows() == 1 && !Exists(kHelperCalls) && !Exists(kScriptCalls),
          "without the helpers the run goes on and says nothing");
    Check(program.End(), "the program ends");
  }

  void Run(RemoteProgram& program) {
    Check(program.Kill(), "the run ends");
    for (const std::string& line : program.LogAndCount()) log_.push_back(line);
  }

  Texts log_;
};

}  // namespace

void InternetStory() {
  Story().Play();
}

void InternetStoryAfterBoot() {
  Check(PendingRenames().empty(), "the boot has done with the pending renames");
  Check(!Exists(kIndexFiles[0]) && ReadFile(kNewName) == kIndexFiles[0],
        "the first index.dat has left its place and is the file 1 in the program's folder");
  // The name that all were to get is taken, and the system replaces nothing.
  auto untouched = [](const std::string& path) { return ReadFile(path) == path; };
  Check(std::all_of(std::begin(kIndexFiles) + 1, std::end(kIndexFiles), untouched),
        "the other index.dat files stay where they are");
  Check(std::all_of(std::begin(kOtherFiles), std::end(kOtherFiles), untouched), "files beside them are untouched");
}

}  // namespace native
