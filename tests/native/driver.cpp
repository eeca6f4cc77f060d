// Plays stories on the real program and says what held. The logs of some go to files, which are
// compared with those of rehearsals of the same stories.
#include <cstdio>
#include <functional>

#include "browser_story.h"
#include "computer.h"
#include "ends_story.h"
#include "internet_story.h"
#include "names_story.h"
#include "remote_program.h"
#include "resident_story.h"
#include "thumbs_story.h"
#include "window_stories.h"

using namespace native;

namespace {

constexpr const char* kStore = "Software\\VB and VBA Program Settings\\Temp\\SystemData";
constexpr const char* kExplorer = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer";

int passed = 0, failed = 0;

void Check(bool held, const std::string& what) {
  (held ? passed : failed)++;
  std::printf("%s %s\n", held ? "ok  " : "FAIL", what.c_str());
  std::fflush(stdout);
}

void PrepareWindowsTraces() {
  const std::string mru = std::string(kExplorer) + "\\RunMRU";
  SetValue(mru, "a", "cmd\\1");
  SetValue(mru, "b", "regedit\\1");
  SetValue("Software\\Microsoft\\MediaPlayer\\Player\\RecentURLList", "URL0", "http://radio.example");
  SetValue(std::string(kExplorer) + "\\ComDlg32\\OpenSaveMRU\\doc", "a", "C:\\letter.doc");
  SetValue(std::string(kExplorer) + "\\ComDlg32\\OpenSaveMRU\\pdf", "a", "C:\\keep.pdf");
  SetValue(std::string(kExplorer) + "\\RunMRUX", "a", "keep");
  MakeFile("C:\\FILE0001.CHK", "lost");
  MakeFile("C:\\FILES.TXT", "keep");
  MakeFile("C:\\windows\\temp\\a.tmp", std::string(5000, 'A'));
  MakeFile("C:\\windows\\temp\\sub\\deep\\b.tmp", "b");
  MakeFile("C:\\windows\\temp\\sub\\read-only.tmp", "c");
  SetFileAttributesA("C:\\windows\\temp\\sub\\read-only.tmp", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
  MakeFile("C:\\windows\\temp\\held.tmp", "held");
  MakeFile("C:\\users\\Public\\Documents\\letter.doc", "keep");
}

void KillStory() {
  PrepareWindowsTraces();
  EmptyUrlCache();
  const State before = TakeState();
  HANDLE held = CreateFileA("C:\\windows\\temp\\held.tmp", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);

  RemoteProgram program("");
  HWND window = program.MainWindow();
  Check(window != nullptr && WaitFor([&] { return IsWindowVisible(window) != FALSE; }),
        "the program starts and shows itself");
  if (window == nullptr) return;
  HWND strip = RemoteProgram::Child(window, "SysTabControl32", "");
  Check(SendMessageA(strip, 0x1304 /* TCM_GETITEMCOUNT */, 0, 0) == 10, "there are ten tabs");
  Check(program.PickTab(4), "the Windows tab comes to the front");
  Check(RemoteProgram::Child(window, "Button", "Cookie Manager...") == nullptr, "other tabs are out of sight");
  for (const char* box :
       {"Windows Start, Run drop-list", "Windows Recent Documents list", "Windows Media player recent URL/file list",
        "Windows File Fragments (*.CHK)", "Windows Temp Folder", "MS Office Recent File List"}) {
    Check(program.Click(box) && program.Ticked(box), std::string("a click ticks ") + box);
  }
  HWND kill = RemoteProgram::Child(window, "Button", "Kill Now!");
  Check(program.PostClick(window, "Kill Now!"), "Kill Now! can be pressed");
  Check(WaitFor([&] { return SendMessageA(strip, 0x130B /* TCM_GETCURSEL */, 0, 0) == 9; }), "the log tab comes up");
  Check(!IsWindowEnabled(kill) || RemoteProgram::Child(window, "ListBox", "") != nullptr,
        "the button is off meanwhile");
  Check(program.RunEnded(), "the run ends");
  MakeFile("C:\\native-log.txt", Joined(program.LogAndCount()));
  CloseHandle(held);

  Check(!Exists("C:\\FILE0001.CHK") && !Exists("C:\\windows\\temp\\a.tmp") &&
            !Exists("C:\\windows\\temp\\sub\\deep\\b.tmp") && !Exists("C:\\windows\\temp\\sub\\read-only.tmp"),
        "the files are gone");
  Check(Exists("C:\\windows\\temp\\sub\\deep"), "the folders stay");
  Check(Exists("C:\\windows\\temp\\held.tmp"), "a file that another program holds stays");
  Check(!KeyExists(std::string(kExplorer) + "\\RunMRU") &&
            !KeyExists("Software\\Microsoft\\MediaPlayer\\Player\\RecentURLList") &&
            !KeyExists(std::string(kExplorer) + "\\ComDlg32\\OpenSaveMRU\\doc"),
        "the lists are gone");
  const auto differences =
      Differences(before, TakeState(),
                  {"C:\\FILE0001.CHK", "C:\\windows\\temp\\", "C:\\native-log.txt",
                   std::string(kExplorer) + "\\RunMRU\\", "Software\\Microsoft\\MediaPlayer\\Player\\RecentURLList\\",
                   std::string(kExplorer) + "\\ComDlg32\\OpenSaveMRU\\doc\\",
                   // the program's own places
                   "Software\\VB and VBA Program Settings", "Software\\Microsoft\\Windows\\CurrentVersion\\Run\\",
                   "C:\\users\\root\\AppData\\Local\\Quillbarrow",
                   // what Windows itself keeps when a program starts, or when the recent list is emptied
                   "Software\\Wine\\", "C:\\users\\root\\AppData\\Roaming\\Microsoft\\Windows\\Recent"});
  for (const std::string& line : differences) std::printf("     %s\n", line.c_str());
  Check(differences.empty(), "nothing else changed, byte for byte");
  Check(Value("Software\\Microsoft\\Windows\\CurrentVersion\\Run", "Quillbarrow") ==
            "\"C:\\Program Files\\Quillbarrow\\Quillbarrow.exe\" /STARTUP",
        "the Run value is written");

  program.Close();
  Check(WaitFor([&] { return !IsWindowVisible(window); }) && program.Running(), "closing the window only hides it");
  {
    RemoteProgram second("");
    Check(!second.Running(10000), "a second copy ends by itself");
    Check(WaitFor([&] { return IsWindowVisible(window) != FALSE; }), "and brings the first one to the front");
    Check(Value(kStore, "CloseQB") == "1", "and leaves its word in the store");
  }
  program.Close();
  Check(WaitFor([&] { return !IsWindowVisible(window); }) && program.Running(500), "the next close is a hide again");
  program.Close();
  Check(!program.Running(10000), "a close request while hidden ends the program");
  Check(Value(kStore, "HistoryRemoved") != "" && Value(kStore, "HistoryRemoved") != "0",
        "the lifetime count is stored");
}

void BootStory() {
  SetValue(kStore, "AK_WinStart", "0");
  SetValue(kStore, "HideIcon", "abc");  // no number: passed over
  RemoteProgram program("/startup");
  HWND window = program.MainWindow();
  Sleep(500);
  Check(window != nullptr && !IsWindowVisible(window) && program.Running(), "a start with Windows stays hidden");
  program.Close();
  Check(!program.Running(10000), "and ends at the first close request");
}

void StopIfAutoKillIsOff() {
  SetValue(kStore, "Disable_AK", "1");
  RemoteProgram program("/STARTUP");
  Check(!program.Running(10000), "a start with Windows ends at once when Auto-Kill is switched off");
  SetValue(kStore, "Disable_AK", "0");
}

void SetupStory() {
  RemoteProgram program("");
  HWND window = program.MainWindow();
  WaitFor([&] { return IsWindowVisible(window) != FALSE; });
  program.PickTab(5);
  Check(program.Click("URL address drop-list box"), "an AOL box can be ticked");
  SetValue(kStore, "AOLdir", "");
  program.Close();
  program.Close();
  program.Running(3000);

  SetValue(kStore, "AOLdir", "");
  RemoteProgram again("");
  window = again.MainWindow();
  WaitFor([&] { return IsWindowVisible(window) != FALSE; });
  again.PickTab(5);
  again.Click("URL address drop-list box");
  again.PostClick(window, "Kill Now!");
  HWND box = again.Window("AOL Folder NOT setup", 20000);
  Check(box != nullptr, "a run without an AOL folder says so");
  PostMessageA(box, WM_CLOSE, 0, 0);
  HWND setup = again.Window("Quillbarrow 2019 - General Setup", 10000);
  Check(setup != nullptr && WaitFor([&] { return IsWindowVisible(setup) != FALSE; }), "and opens General Setup");
  HWND folder = RemoteProgram::Child(setup, "Edit", "");
  const std::string typed = "C:\\AOL 8.0";
  SendMessageA(folder, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(typed.c_str()));
  again.PostClick(setup, "Save");
  Check(WaitFor([&] { return Value(kStore, "AOLdir") == "C:\\AOL 8.0\\"; }), "what is typed there is stored");
}

}  // namespace

// `driver [STORY]` plays all stories, or the one. The part after a boot only says something when the internet
// story was played before the boot. For pictures, `driver cookies SITE…` only makes a cookie entry for each site, and
// `driver popup` opens the menu of the icon.
int main(int count, char** arguments) {
  const std::string picked = count > 1 ? arguments[1] : "";
  if (picked == "cookies") {
    for (int i = 2; i < count; ++i) MakeCookieEntry(std::string("user@") + arguments[i] + "/");
    return 0;
  }
  if (picked == "popup") return RemoteProgram::OpenIconMenu() ? 0 : 1;
  const struct {
    const char* name;
    std::function<void()> play;
  } stories[] = {
      {"kill", KillStory},
      {"boot", BootStory},
      {"auto-kill-off", StopIfAutoKillIsOff},
      {"setup", SetupStory},
      {"browsers", [] { BrowserStory(Check); }},
      {"internet", [] { InternetStory(Check); }},
      {"ends", [] { EndsStory(Check); }},
      {"names", [] { NamesStory(Check); }},
      {"windows", [] { WindowStories(Check); }},
      {"resident", [] { ResidentStory(Check); }},
      {"thumbs", [] { ThumbsStory(Check); }},
  };
  for (const auto& story : stories) {
    if (picked.empty() || picked == story.name) story.play();
  }
  if (picked == "after-boot") InternetStoryAfterBoot(Check);
  std::printf("driver: %d passed, %d failed\n", passed, failed);
  return failed == 0 ? 0 : 1;
}
