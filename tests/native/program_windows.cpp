#include "program_windows.h"

#include <shellapi.h>

#include <algorithm>

#include "computer.h"
#include "other_windows.h"

namespace native {

namespace {

constexpr UINT kTrayMessage = 512, kIconId = 1;

struct Chord {
  int id;
  UINT modifiers, key;
};
constexpr Chord kChords[] = {
    {95, MOD_WIN, 'Z'},       {111, MOD_WIN | MOD_SHIFT, 'Z'},   {127, MOD_ALT, 'Z'},
    {157, MOD_ALT, VK_SPACE}, {156, MOD_ALT | MOD_CONTROL, 'Z'}, {143, MOD_ALT | MOD_CONTROL, VK_SPACE}};

}  // namespace

void PostTray(HWND window, UINT mouse) {
  PostMessageA(window, kTrayMessage, kIconId, mouse);
}

int TakenChords() {
  int taken = 0;
  for (const Chord& chord : kChords) {
    if (RegisterHotKey(nullptr, chord.id, chord.modifiers, chord.key))
      UnregisterHotKey(nullptr, chord.id);
    else
      ++taken;
  }
  return taken;
}

// The tray only changes an icon that it has.
bool HasIcon(HWND window) {
  NOTIFYICONDATAA icon{};
  icon.cbSize = NOTIFYICONDATAA_V1_SIZE;
  icon.hWnd = window;
  icon.uID = kIconId;
  return Shell_NotifyIconA(NIM_MODIFY, &icon) != FALSE;
}

HWND Resident(const RemoteProgram& program) {
  HWND window = program.MainWindow();
  // The icon is added after the chords and before the end of the load; the end shows in the store.
  Check(window != nullptr && WaitFor([&] { return HasIcon(window); }) && !Shown(window) && TakenChords() == 6,
        "a start with Windows has an icon and the six chords, and no window");
  return window;
}

bool WaitPopup(bool open) {
  return WaitFor([=] {
    HWND popup = FindWindowA("#32768", nullptr);
    if (!open) return !Shown(popup);
    // It is in sight some time before its thread takes the mouse.
    GUITHREADINFO thread{};
    thread.cbSize = sizeof thread;
    return Shown(popup) && GetGUIThreadInfo(GetWindowThreadProcessId(popup, nullptr), &thread) &&
           thread.hwndCapture != nullptr;
  });
}

bool OpenPopup(HWND window) {
  PostTray(window, WM_RBUTTONUP);
  return WaitPopup(true);
}

bool Answer(const RemoteProgram& program, const char* title, WORD button) {
  HWND box = program.Window(title);
  if (box == nullptr) return false;
  PostMessageA(box, WM_COMMAND, button, 0);
  return WaitGone(box);
}

void LastBrowserCloses(HWND main_window) {
  {
    const OtherWindows browser(std::vector<OtherWindow>{{L"Chrome_WidgetWin_1", L"Page"}});
    Sleep(2500);
    Check(PostMessageA(browser[0], WM_CLOSE, 0, 0) && WaitGone(browser[0]) && !Shown(main_window),
          "a browser opens and closes");
  }
  Check(WaitShown(main_window), "that starts a run, which shows itself");
  Check(WaitShown(main_window, false, 60000), "and hides the window after it");
}

HWND OpenWizard(const RemoteProgram& program) {
  HWND window = program.ShownWindow();
  SetForegroundWindow(window);
  WaitInFront(window);
  PressKeys({VK_CONTROL, 'A'});
  return program.Window("Quillbarrow 2019 - Setup Wizard");
}

bool AtStep(HWND wizard, int step) {
  const std::string label = "STEP " + std::to_string(step) + " of 3:";
  return WaitFor([&] { return RemoteProgram::Child(wizard, "Static", label) != nullptr; });
}

CookieLists::CookieLists(HWND window) : window_(window) {
  for (HWND child : Children(window_)) {
    if (Shown(child) && ClassOf(child) == "ListBox") lists_.push_back(child);
  }
  auto left_edge = [](HWND list) {
    RECT place{};
    GetWindowRect(list, &place);
    return place.left;
  };
  std::sort(lists_.begin(), lists_.end(), [&](HWND one, HWND other) { return left_edge(one) < left_edge(other); });
}

bool CookieLists::Move(HWND list, const std::string& entry, const std::string& button) const {
  const Texts entries = RemoteProgram::ListEntries(list);
  const auto index = static_cast<WPARAM>(std::find(entries.begin(), entries.end(), entry) - entries.begin());
  RECT place{};
  if (SendMessageA(list, LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&place)) == LB_ERR) return false;
  const LPARAM point = MAKELPARAM(place.left + 5, (place.top + place.bottom) / 2);
  SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, point);
  SendMessageA(list, WM_LBUTTONUP, 0, point);
  HWND pressed = RemoteProgram::Child(window_, "Button", button);
  if (SendMessageA(list, LB_GETSEL, index, 0) <= 0 || !IsWindowEnabled(pressed)) return false;
  SendMessageA(pressed, BM_CLICK, 0, 0);
  return true;
}

HWND OpenAudit(const RemoteProgram& program) {
  program.PostClick(program.MainWindow(), "Thumbs.db Scan/Remove");
  return program.Window("Quillbarrow 2019 - Thumbs.db Scan and Removal Screen");
}

bool WaitLabel(HWND window, const std::string& part) {
  return WaitFor([&] { return !RemoteProgram::LabelWith(window, part).empty(); }, kScanTime);
}

void TakePages() {
  constexpr const char* kCommand = "\"C:\\native_helper.exe\" \"%1\"";
  RegSetValueA(HKEY_CLASSES_ROOT, ".html", REG_SZ, "native_page", 0);
  RegSetValueA(HKEY_CLASSES_ROOT, "native_page\\shell\\open\\command", REG_SZ, kCommand, 0);
}

}  // namespace native
