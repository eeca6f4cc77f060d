// Plays stories on the real program and says what held. The log of the first story goes to a file, which
// is compared with that of a rehearsal of the same story.
#include <cstdio>

#include "computer.h"
#include "remote_program.h"
#include "window_stories.h"
// After the basic types of windows.h.
#include <wininet.h>

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

std::string WithoutTime(const std::string& line) {
  const std::size_t cut = line.find(" - ");
  return cut == std::string::npos ? line : line.substr(cut);
}

// Waits for the end of a run: the button can be pressed again and the log has its last line.
bool RunEnded(RemoteProgram& program, HWND button, HWND log) {
  return WaitFor(
             [&] {
               const auto lines = RemoteProgram::ListEntries(log);
               return IsWindowEnabled(button) && !lines.empty() &&
                      WithoutTime(lines.back()) == " - Successful!  Your privacy is protected.";
             },
             60000) &&
         program.Running();
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
  WakeUrlCache();
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
  HWND log = RemoteProgram::Child(window, "ListBox", "");
  Check(RunEnded(program, kill, log), "the run ends");
  FILE* lines = std::fopen("C:\\native-log.txt", "wb");
  for (const std::string& line : RemoteProgram::ListEntries(log))
    std::fprintf(lines, "%s\n", WithoutTime(line).c_str());
  HWND count = nullptr;
  WaitFor([&] {
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr && count == nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
      if (RemoteProgram::Text(child).rfind("History Traces Killed: ", 0) == 0) count = child;
    }
    return count != nullptr;
  });
  std::fprintf(lines, "%s\n", count == nullptr ? "(no count)" : RemoteProgram::Text(count).c_str());
  std::fclose(lines);
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
  const double at_rest = program.ProcessorTime();
  Sleep(3000);
  std::printf("     processor time in three seconds at rest, hidden: %.1f ms\n", program.ProcessorTime() - at_rest);
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

void InternetStory() {
  const std::string store = "Software\\Microsoft\\Protected Storage System Provider\\S-1\\Data\\Q:StringData";
  SetValue("Software\\Microsoft\\Internet Explorer\\TypedURLs", "url1", "http://news.example/");
  SetValue("Software\\Microsoft\\Search Assistant\\ACMru\\5603", "000", "words");
  SetValue(store, "x", "1");
  SetValue("Software\\Microsoft\\Protected Storage System Provider\\S-1\\Data\\Kept", "x", "1");
  const bool made = MakeCacheEntry("http://news.example/page.htm", NORMAL_CACHE_ENTRY) &&
                    MakeCacheEntry("Cookie:user@shop.example/", NORMAL_CACHE_ENTRY | COOKIE_CACHE_ENTRY);
  Check(made && CacheEntryExists("http://news.example/page.htm"), "the system takes entries of its URL cache");

  RemoteProgram program("");
  HWND window = program.MainWindow();
  WaitFor([&] { return IsWindowVisible(window) != FALSE; });
  program.PickTab(0);
  for (const char* box : {"URL address drop-list box", "Temp Internet Files", "AutoComplete", "index.dat files",
                          "Search Button history"}) {
    Check(program.Click(box), std::string("a click ticks ") + box);
  }
  HWND kill = RemoteProgram::Child(window, "Button", "Kill Now!");
  program.PostClick(window, "Kill Now!");
  HWND strip = RemoteProgram::Child(window, "SysTabControl32", "");
  WaitFor([&] { return SendMessageA(strip, 0x130B, 0, 0) == 9; });
  Check(RunEnded(program, kill, RemoteProgram::Child(window, "ListBox", "")), "a run of the browser's classes ends");
  Check(!CacheEntryExists("http://news.example/page.htm"), "the cached page is gone from the URL cache");
  Check(CacheEntryExists("Cookie:user@shop.example/"), "the cookie, not ticked, is still there");
  Check(!KeyExists("Software\\Microsoft\\Internet Explorer\\TypedURLs") &&
            !KeyExists("Software\\Microsoft\\Search Assistant\\ACMru\\5603"),
        "the typed addresses and searches are gone");
  Check(!KeyExists(store) && KeyExists("Software\\Microsoft\\Protected Storage System Provider\\S-1\\Data\\Kept"),
        "the AutoComplete data is gone, and the key beside it stays");
  HKEY manager = nullptr;
  DWORD size = 0;
  RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SYSTEM\\CurrentControlSet\\Control\\Session Manager", 0, KEY_READ, &manager);
  Check(RegQueryValueExA(manager, "PendingFileRenameOperations", nullptr, nullptr, nullptr, &size) == ERROR_SUCCESS &&
            size > 2,
        "the pending renames are arranged with the system");
  RegCloseKey(manager);
}

}  // namespace

int main() {
  KillStory();
  BootStory();
  StopIfAutoKillIsOff();
  SetupStory();
  InternetStory();
  WindowStories(Check);
  std::printf("driver: %d passed, %d failed\n", passed, failed);
  return failed == 0 ? 0 : 1;
}
