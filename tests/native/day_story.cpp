#include "computer.h"
#include "other_windows.h"
#include "program_windows.h"
#include "stories.h"

namespace native {

namespace {

constexpr const char* kKeptSite = "shop.test";

struct Trace {
  const char* place;
  bool goes;
};
// Below the local data of the user; each holds its own name.
constexpr Trace kFiles[] = {
    {"Google\\Chrome\\Application\\chrome.exe", false},
    {"Google\\Chrome\\User Data\\Default\\History", true},
    {"Google\\Chrome\\User Data\\Default\\Bookmarks", false},
    {"Microsoft\\Windows\\INetCookies\\user@news.test[1].txt", true},
    {"Microsoft\\Windows\\INetCookies\\user@shop.test[1].txt", false},
    {"Microsoft\\Windows\\INetCookies\\user@news.test[1].dat", false},
};
constexpr Trace kKeys[] = {
    {"Software\\Microsoft\\Internet Explorer\\TypedURLs", true},
    {"Software\\Microsoft\\Internet Explorer\\TypedURLsTime", false},
    {"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RunMRU", true},
};

// What should have gone and is there, or the other way round, or is changed.
std::string WrongTraces() {
  std::string wrong;
  for (const Trace& file : kFiles) {
    const std::string path = LocalData(file.place);
    if (file.goes ? Exists(path) : ReadBytes(path) != file.place) wrong += " '" + path + "'";
  }
  for (const Trace& key : kKeys) {
    if (CanOpen(key.place, KEY_READ) == key.goes) wrong += std::string(" '") + key.place + "'";
  }
  return wrong;
}

void CheckTraces(const std::string& run) {
  WaitFor([] { return WrongTraces().empty(); }, 60000);
  const std::string wrong = WrongTraces();
  Check(wrong.empty(), run + " takes the traces and leaves what is kept and what lies beside them" + wrong);
}

void WizardPart(const RemoteProgram& program) {
  HWND wizard = OpenWizard(program);
  auto next = [&] { return RemoteProgram::PostClick(wizard, " NEXT >>"); };
  Check(AtStep(wizard, 1) && next() && AtStep(wizard, 2), "the wizard comes to the cookies");
  const CookieLists cookies(wizard);
  Check(cookies.IsOpen() && cookies.Keep(kKeptSite) && cookies.ToKeep() == Texts{kKeptSite},
        "a site comes to those to keep");
  Check(next() && AtStep(wizard, 3) && RemoteProgram::PostClick(wizard, " Save") && WaitGone(wizard),
        "the wizard saves and closes");
  Check(ReadFile(LocalData("Quillbarrow\\qb.dat")) == kKeptSite + std::string("\n") &&
            Value(kStore, "SaveCookieCount") == "1" && Value(kStore, "IE_cookies") == "1" &&
            Value(kStore, "AK_GoogleChrome") == "1",
        "the site, what to kill and the browsers are stored");
}

void BossKeyPart(HWND window) {
  const OtherWindows others({{L"IEFrame", L"News"}, {L"Notepad", L"letter - Notepad"}});
  PressBossKey(window);
  Check(WaitShown(others[0], false) && Shown(others[1]), "the Boss Key hides a browser and not a letter");
  PressBossKey(window);
  Check(WaitShown(others[0]), "and brings it back");
}

void AuditPart(const RemoteProgram& program) {
  TakePages();
  HWND window = OpenAudit(program);
  Check(window != nullptr && WaitLabel(window, "LAUNCHING RESULTS"), "the audit scans and unpacks");
  Check(RemoteProgram::ListEntries(RemoteProgram::Child(window, "ListBox")).size() == 1 &&
            !FilesIn(LocalData("Quillbarrow\\thumbs")).empty(),
        "it has found the cache, and the pictures in it");
  const std::string page = LocalData("Quillbarrow\\Fernledger_thumbnails.html");
  Check(WaitFor([&] { return ReadFile(kHelperCalls).find(page) != std::string::npos; }), "its page is opened");
  Check(RemoteProgram::PostClick(window, " DELETE ALL THUMBS.DB") &&
            WaitLabel(window, "DONE!  Quillbarrow securely deleted"),
        "the cache is deleted");
  PostMessageA(window, WM_CLOSE, 0, 0);
  Check(Answer(program, kDoneViewing, IDYES) && WaitGone(window), "the audit closes");
}

}  // namespace

void DayOfBrowsing() {
  for (const Trace& file : kFiles) MakeFile(LocalData(file.place), file.place);
  for (const Trace& key : kKeys) SetValue(key.place, "url1", "http://news.test/");
  for (const char* site : {"news.test", kKeptSite}) MakeCookieEntry(std::string("user@") + site + "/");
  Check(!WrongTraces().empty(), "browsing leaves its traces");
}

void DayUntilBoot() {
  const RemoteProgram program = RemoteProgram::ThatRuns();
  WizardPart(program);
  Check(program.Hide() && program.Running(), "closing the window only hides it");
  LastBrowserCloses(program.MainWindow());
  CheckTraces("the run after the last browser window");
  BossKeyPart(program.MainWindow());
}

void DayAfterBoot() {
  const RemoteProgram program = RemoteProgram::ThatRuns();
  CheckTraces("the run at the start of Windows");
  WaitShown(program.MainWindow(), false, 60000);
  HWND window = Resident(program);
  PostTray(window, WM_LBUTTONDOWN);
  Check(WaitShown(window), "a click on the icon shows the window");
  AuditPart(program);
  Check(OpenPopup(window), "a right click on the icon opens its menu");
  for (int i = 0; i < 2; ++i) PressKeys({VK_UP});  // from below: leave, shut down
  PressKeys({VK_RETURN});
  Check(Answer(program, "Warning!  About to Exit Quillbarrow!", IDYES) && program.EndedInOrder() && !HasIcon(window),
        "its entry ends the program after a question");
}

}  // namespace native
