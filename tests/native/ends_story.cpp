#include "computer.h"
#include "other_windows.h"
#include "remote_program.h"
#include "stories.h"

namespace native {

namespace {

constexpr int kFiles = 400;
constexpr int kWindowsTab = 4;
const std::string kFolder = "C:\\windows\\temp\\ends";

std::size_t Left() {
  return FilesIn(kFolder).size();
}

// Starts a run over many files and waits until it is in its middle.
bool RunToTheMiddle(RemoteProgram& program) {
  for (int i = 0; i < kFiles; ++i) MakeFile(kFolder + "\\" + std::to_string(i) + ".tmp", "trace");
  return program.Tick(kWindowsTab, {"Windows Temp Folder"}) &&
         RemoteProgram::PostClick(program.MainWindow(), "Kill Now!") &&
         WaitFor([] { return Left() < kFiles; }, 60000) && Left() > 0;
}

void SecondCopyPart() {
  RemoteProgram program;
  Check(RunToTheMiddle(program), "a run over many files is in its middle");
  for (const char* arguments : {"", "/STARTUP", ""}) {
    RemoteProgram second(arguments);
    Check(!second.Running(20000), "a further copy that starts now ends by itself");
  }
  Check(program.RunEnded() && Left() == 0, "and the run of the first one goes to its end");
  program.End();
}

void WindowsPart() {
  constexpr std::size_t kHidden = 6, kAll = 10;  // of all that are opened, those that the Boss Key takes
  const std::wstring firefox = L"MozillaUIWindowClass", dialog = L"#32770";
  OtherWindows windows({{firefox, std::wstring(32767, L'T')},
                        {firefox, std::wstring(5000, L'\u4E16') + L"\U0001F5D1"},
                        {firefox, L"\x01\x02\x1F\r\n\t\x7F"},
                        {firefox, L"lone \xD800 and \xDC00"},
                        {firefox, L"%s%n%p \\..\\..\\"},
                        {dialog, L"Buddy List" + std::wstring(30000, L' ')},
                        {dialog, std::wstring(32767, L'B')},
                        {std::wstring(255, L'c'), L"a long class"},
                        {L"\U0001F5D1\x01\n\xD800", L"an odd class"},
                        {L"mozillauiwindowclass ", L"almost"}});
  Check(windows.Visible() == kAll, "windows with odd classes and titles stand on the desktop");
  RemoteProgram program;
  HWND window = program.ShownWindow();
  Sleep(2500);  // the watcher looks at all of them twice
  PressBossKey(window);
  Check(WaitFor([&] { return windows.Visible() == kAll - kHidden; }),
        "the Boss Key takes those of the browser's class and the messenger's title");
  PressBossKey(window);
  Check(WaitFor([&] { return windows.Visible() == kAll; }) && program.Running(), "and brings all of them back");
  program.End();
}

void TerminatePart() {
  for (DWORD round = 0; round < 3; ++round) {
    RemoteProgram program;
    if (!RunToTheMiddle(program)) return Check(false, "a run is in its middle");
    Sleep(37 * round);
  }  // its process is ended here
  RemoteProgram program;
  Check(program.Tick(kWindowsTab, {"Windows Temp Folder"}) && program.Kill() && Left() == 0,
        "after three ends in the middle of a run the next start is in order, and its run takes what was left");
  Check(program.End(), "and it ends as asked");
}

}  // namespace

void EndsStory() {
  SecondCopyPart();
  WindowsPart();
  TerminatePart();
}

}  // namespace native
