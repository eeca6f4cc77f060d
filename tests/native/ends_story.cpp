#include "ends_story.h"

#include "computer.h"
#include "remote_program.h"

namespace native {

namespace {

constexpr int kFiles = 400;
constexpr int kWindowsTab = 4;
constexpr int kBossKeyId = 157;
const std::string kTemp = "C:\\windows\\temp";

void FillTemp() {
  for (int i = 0; i < kFiles; ++i) MakeFile(kTemp + "\\ends\\" + std::to_string(i) + ".tmp", "trace");
}

std::size_t Left() {
  return FilesIn(kTemp + "\\ends").size();
}

// Ticks the temp folder's box and nothing else that a story left ticked.
bool Prepare(RemoteProgram& program) {
  HWND window = program.MainWindow();
  if (window == nullptr || !WaitFor([&] { return IsWindowVisible(window) != FALSE; })) return false;
  if (!program.PickTab(kWindowsTab)) return false;
  return program.Ticked("Windows Temp Folder") || program.Click("Windows Temp Folder");
}

// Starts a run and waits until it is in its middle.
bool RunToTheMiddle(RemoteProgram& program) {
  if (!program.PostClick(program.MainWindow(), "Kill Now!")) return false;
  return WaitFor([] { return Left() < kFiles; }, 60000) && Left() > 0;
}

// Windows with classes and titles of all kinds, in a thread of their own that answers for them.
class HostileWindows {
 public:
  HostileWindows() {
    thread_ = CreateThread(nullptr, 0, Answer, this, 0, nullptr);
    WaitFor([this] { return open_ == kWanted; });
  }
  ~HostileWindows() {
    PostThreadMessageW(GetThreadId(thread_), WM_QUIT, 0, 0);
    WaitForSingleObject(thread_, 10000);
    CloseHandle(thread_);
  }
  HostileWindows(const HostileWindows&) = delete;
  HostileWindows& operator=(const HostileWindows&) = delete;

  bool AllOpen() const { return open_ == kWanted; }
  int Visible() const {
    int count = 0;
    for (HWND window : windows_) count += IsWindowVisible(window) ? 1 : 0;
    return count;
  }

  static constexpr int kHidden = 6, kWanted = 10;  // of all that are opened, those that the Boss Key takes

 private:
  static DWORD WINAPI Answer(void* self) {
    static_cast<HostileWindows*>(self)->Open();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    for (HWND window : static_cast<HostileWindows*>(self)->windows_) DestroyWindow(window);
    return 0;
  }
  void Open() {
    const std::wstring firefox = L"MozillaUIWindowClass", dialog = L"#32770";
    const std::wstring titles[] = {std::wstring(32767, L'T'), std::wstring(5000, L'\u4E16') + L"\U0001F5D1",
                                   L"\x01\x02\x1F\r\n\t\x7F", L"lone \xD800 and \xDC00", L"%s%n%p \\..\\..\\"};
    for (const std::wstring& title : titles) OpenOne(firefox, title);
    OpenOne(dialog, L"Buddy List" + std::wstring(30000, L' '));
    OpenOne(dialog, std::wstring(32767, L'B'));
    OpenOne(std::wstring(255, L'c'), L"a long class");
    OpenOne(L"\U0001F5D1\x01\n\xD800", L"an odd class");
    OpenOne(L"mozillauiwindowclass ", L"almost");
  }
  void OpenOne(const std::wstring& class_name, const std::wstring& title) {
    WNDCLASSW window_class{};
    window_class.lpfnWndProc = DefWindowProcW;
    window_class.hInstance = GetModuleHandleW(nullptr);
    window_class.lpszClassName = class_name.c_str();
    if (class_name != L"#32770") RegisterClassW(&window_class);
    HWND window = CreateWindowExW(0, class_name.c_str(), title.c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 200,
                                  100, nullptr, nullptr, window_class.hInstance, nullptr);
    if (window == nullptr) return;
    windows_.push_back(window);
    open_ = static_cast<int>(windows_.size());
  }

  std::vector<HWND> windows_;
  volatile int open_ = 0;
  HANDLE thread_ = nullptr;
};

void SecondCopyPart(const Report& check) {
  FillTemp();
  RemoteProgram program("");
  check(Prepare(program) && RunToTheMiddle(program), "a run over many files is in its middle");
  for (int i = 0; i < 3; ++i) {
    RemoteProgram second(i == 1 ? "/STARTUP" : "");
    check(!second.Running(20000), "a further copy that starts now ends by itself");
  }
  check(program.RunEnded() && Left() == 0, "and the run of the first one goes to its end");
  program.End();
}

void WindowsPart(const Report& check) {
  HostileWindows windows;
  check(windows.AllOpen(), "windows with odd classes and titles stand on the desktop");
  RemoteProgram program("");
  HWND window = program.MainWindow();
  WaitFor([&] { return IsWindowVisible(window) != FALSE; });
  Sleep(2500);  // the watcher looks at all of them twice
  PostMessageA(window, WM_HOTKEY, kBossKeyId, MAKELPARAM(MOD_ALT, VK_SPACE));
  check(WaitFor([&] { return windows.Visible() == HostileWindows::kWanted - HostileWindows::kHidden; }),
        "the Boss Key takes those of the browser's class and the messenger's title");
  PostMessageA(window, WM_HOTKEY, kBossKeyId, MAKELPARAM(MOD_ALT, VK_SPACE));
  check(WaitFor([&] { return windows.Visible() == HostileWindows::kWanted; }) && program.Running(),
        "and brings all of them back");
  program.End();
}

void TerminatePart(const Report& check) {
  for (int round = 0; round < 3; ++round) {
    FillTemp();
    RemoteProgram program("");
    if (!Prepare(program) || !RunToTheMiddle(program)) return check(false, "a run is in its middle");
    Sleep(static_cast<DWORD>(37 * round));
  }  // its process is ended here
  RemoteProgram program("");
  check(Prepare(program) && program.Kill() && Left() == 0,
        "after three ends in the middle of a run the next start is in order, and its run takes what was left");
  check(program.End(), "and it ends as asked");
}

}  // namespace

void EndsStory(const Report& check) {
  SecondCopyPart(check);
  WindowsPart(check);
  TerminatePart(check);
}

}  // namespace native
