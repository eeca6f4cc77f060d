// Plays stories on the real program and says what held. The logs of some go to files, which are
// compared with those of rehearsals of the same stories.
#include <cstdio>

#include "computer.h"
#include "remote_program.h"
#include "stories.h"

using namespace native;

namespace {

int passed = 0, failed = 0;

void KillStory() {
  Texts goes = MakeTraces("story", "goes");
  MakeTraces("story", "stays");
  EmptyUrlCache();
  const State before = TakeState();
  HANDLE held = CreateFileA("C:\\windows\\temp\\held.tmp", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);

  RemoteProgram program;
  HWND window = program.ShownWindow();
  Check(window != nullptr, "the program starts and shows itself");
  HWND strip = RemoteProgram::Child(window, "SysTabControl32");
  Check(SendMessageA(strip, 0x1304 /* TCM_GETITEMCOUNT */, 0, 0) == 10, "there are ten tabs");
  Check(program.PickTab(4), "the Windows tab comes to the front");
  Check(RemoteProgram::Child(window, "Button", "Cookie Manager...") == nullptr, "other tabs are out of sight");
  for (const char* box :
       {"Windows Start, Run drop-list", "Windows Recent Documents list", "Windows Media player recent URL/file list",
        "Windows File Fragments (*.CHK)", "Windows Temp Folder", "MS Office Recent File List"}) {
    Check(program.Click(box) && program.Ticked(box), std::string("a click ticks ") + box);
  }
  Check(program.Kill(), "Kill Now! brings up the log tab, and the run ends");
  MakeFile("C:\\native-log.txt", Joined(program.LogAndCount()));
  CloseHandle(held);

  const std::string left = ThoseThere(goes, true);
  Check(left.empty(), "the files and the lists are gone" + left);
  Check(Exists("C:\\windows\\temp\\sub\\deep"), "the folders stay");
  Check(Exists("C:\\windows\\temp\\held.tmp"), "a file that another program holds stays");
  // Windows itself has the files of the recent list, which is emptied.
  goes.insert(goes.end(), {"C:\\native-log.txt", "C:\\users\\root\\AppData\\Roaming\\Microsoft\\Windows\\Recent"});
  CheckNothingElse(before, goes);
  Check(Value(kRunKey, "Quillbarrow") == "\"C:\\Program Files\\Quillbarrow\\Quillbarrow.exe\" /STARTUP",
        "the Run value is written");

  Check(program.Hide() && program.Running(), "closing the window only hides it");
  {
    RemoteProgram second;
    Check(!second.Running(10000), "a second copy ends by itself");
    Check(WaitShown(window), "and brings the first one to the front");
    Check(Value(kStore, "CloseQB") == "1", "and leaves its word in the store");
  }
  Check(program.Hide() && program.Running(500), "the next close is a hide again");
  Check(program.End(), "a close request while hidden ends the program");
  Check(!Value(kStore, "HistoryRemoved").empty() && Value(kStore, "HistoryRemoved") != "0",
        "the lifetime count is stored");
}

void StopIfAutoKillIsOff() {
  SetValue(kStore, "Disable_AK", "1");
  RemoteProgram program("/STARTUP");
  Check(!program.Running(10000), "a start with Windows ends at once when Auto-Kill is switched off");
  SetValue(kStore, "Disable_AK", "0");
}

void SetupStory() {
  SetValue(kStore, "AOLdir", "");
  RemoteProgram program;
  Check(program.Tick(5, {"URL address drop-list box"}), "an AOL box can be ticked");
  RemoteProgram::PostClick(program.MainWindow(), "Kill Now!");
  HWND box = program.Window("AOL Folder NOT setup");
  Check(box != nullptr, "a run without an AOL folder says so");
  PostMessageA(box, WM_CLOSE, 0, 0);
  HWND setup = program.Window("Quillbarrow 2019 - General Setup");
  Check(setup != nullptr, "and opens General Setup");
  SendMessageA(RemoteProgram::Child(setup, "Edit"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>("C:\\AOL 8.0"));
  RemoteProgram::PostClick(setup, "Save");
  Check(WaitFor([&] { return Value(kStore, "AOLdir") == "C:\\AOL 8.0\\"; }), "what is typed there is stored");
}

}  // namespace

namespace native {

void Check(bool held, const std::string& what) {
  (held ? passed : failed)++;
  std::printf("%s %s\n", held ? "ok  " : "FAIL", what.c_str());
  std::fflush(stdout);
}

}  // namespace native

// `driver [STORY]` plays all stories, or the one; some are only played when they are asked for, as they continue what
// came before, or need a setup program. For pictures, `driver cookies SITE…` only makes a cookie entry for each site,
// and `driver popup` opens the menu of the icon.
int main(int count, char** arguments) {
  const std::string picked = count > 1 ? arguments[1] : "";
  if (picked == "cookies") {
    for (int i = 2; i < count; ++i) MakeCookieEntry(std::string("user@") + arguments[i] + "/");
    return 0;
  }
  if (picked == "popup") return RemoteProgram::OpenIconMenu() ? 0 : 1;
  const struct {
    const char* name;
    void (*play)();
    bool continues = false;
  } stories[] = {
      {"kill", KillStory},
      {"auto-kill-off", StopIfAutoKillIsOff},
      {"setup", SetupStory},
      {"browsers", BrowserStory},
      {"internet", InternetStory},
      {"after-boot", InternetStoryAfterBoot, true},
      {"ends", EndsStory},
      {"names", NamesStory},
      {"windows", WindowStories},
      {"resident", ResidentStory},
      {"thumbs", ThumbsStory},
      {"installation", InstallationStory, true},
      {"browse", DayOfBrowsing, true},
      {"day-until-boot", DayUntilBoot, true},
      {"day-after-boot", DayAfterBoot, true},
  };
  for (const auto& story : stories) {
    if (picked == story.name || (picked.empty() && !story.continues)) story.play();
  }
  std::printf("driver: %d passed, %d failed\n", passed, failed);
  return failed == 0 ? 0 : 1;
}
