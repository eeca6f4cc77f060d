#include "resident_story.h"

#include <initializer_list>
#include <iterator>

// After the basic types of windows.h.
#include <windows.h>

#include <shellapi.h>

#include "computer.h"
#include "other_windows.h"
#include "remote_program.h"

namespace native {

namespace {

constexpr const char* kStore = "Software\\VB and VBA Program Settings\\Temp\\SystemData";
constexpr const char* kRunList = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RunMRU";
constexpr const char* kBrowser = "Software\\Microsoft\\Internet Explorer\\Main";
constexpr int kAutoKillTab = 6, kBossKeyTab = 7, kLogTab = 9;
constexpr UINT kTrayMessage = 512, kIconId = 1;

struct Chord {
  int id;
  UINT modifiers, key;
};
constexpr Chord kShowProgram{127, MOD_ALT, 'Z'}, kBossKey{157, MOD_ALT, VK_SPACE},
    kRunNow{143, MOD_ALT | MOD_CONTROL, VK_SPACE};
constexpr Chord kChords[] = {{95, MOD_WIN, 'Z'}, {111, MOD_WIN | MOD_SHIFT, 'Z'},   kShowProgram,
                             kBossKey,           {156, MOD_ALT | MOD_CONTROL, 'Z'}, kRunNow};

void PostChord(HWND window, const Chord& chord) {
  PostMessageA(window, WM_HOTKEY, static_cast<WPARAM>(chord.id), MAKELPARAM(chord.modifiers, chord.key));
}

void PostTray(HWND window, UINT mouse) {
  PostMessageA(window, kTrayMessage, kIconId, mouse);
}

// How many of the chords somebody else has.
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

bool Shown(HWND window) {
  return IsWindowVisible(window) != FALSE;
}

bool WaitShown(HWND window, bool shown) {
  return WaitFor([=] { return Shown(window) == shown; });
}

bool Hide(RemoteProgram& program) {
  program.Close();
  return WaitShown(program.MainWindow(), false);
}

// A program that lives hidden, as Windows starts it.
HWND Resident(RemoteProgram& program, const Report& check) {
  HWND window = program.MainWindow();
  // The icon is added after the chords and before the end of the load; the end shows in the store.
  check(window != nullptr && WaitFor([&] { return HasIcon(window); }) && !Shown(window) && TakenChords() == 6,
        "a start with Windows has an icon and the six chords, and no window");
  return window;
}

struct Look {
  bool minimised, maximised;
  RECT place;
};

Look LookOf(HWND window) {
  Look look{IsIconic(window) != FALSE, IsZoomed(window) != FALSE, {}};
  GetWindowRect(window, &look.place);
  return look;
}

bool Same(const Look& one, const Look& other) {
  return one.minimised == other.minimised && one.maximised == other.maximised && EqualRect(&one.place, &other.place);
}

// A window of the desktop, and whether the Boss Key takes it.
struct Target {
  OtherWindows::Wanted window;
  bool hides;
};
const Target kDesktop[] = {
    {{"IEFrame", "News", SW_SHOWNORMAL}, true},
    {{"Chrome_WidgetWin_1", "Page", SW_SHOWMINIMIZED}, true},
    {{"MozillaWindowClass", "Mail", SW_SHOWMAXIMIZED}, true},
    {{"CabinetWClass", "Letters", SW_SHOWNORMAL}, true},
    {{"#32770", "My Buddy list", SW_SHOWNORMAL}, true},
    {{"#32770", "Find", SW_SHOWNORMAL}, false},
    {{"Notepad", "letter - Notepad", SW_SHOWNORMAL}, false},
};
constexpr std::size_t kChrome = 1;

std::vector<OtherWindows::Wanted> Desktop() {
  std::vector<OtherWindows::Wanted> wanted;
  for (const Target& target : kDesktop) wanted.push_back(target.window);
  return wanted;
}

// Which windows of the desktop are hidden though they should not be, or the other way round.
std::string WronglyShown(const OtherWindows& windows, bool chrome_hides) {
  std::string wrong;
  for (std::size_t i = 0; i < std::size(kDesktop); ++i) {
    const bool hides = kDesktop[i].hides && (i != kChrome || chrome_hides);
    if (!WaitShown(windows[i], !hides)) wrong += " '" + kDesktop[i].window.class_name + "'";
  }
  return wrong;
}

std::string Told(const Look& look) {
  return std::string(look.minimised   ? "minimised"
                     : look.maximised ? "maximised"
                                      : "normal") +
         " at " + std::to_string(look.place.left) + "," + std::to_string(look.place.top) + " to " +
         std::to_string(look.place.right) + "," + std::to_string(look.place.bottom);
}

// A minimised or maximised window must also know its place for later.
std::string WronglyPlaced(const OtherWindows& windows, const std::vector<Look>& before) {
  std::string wrong;
  for (std::size_t i = 0; i < before.size(); ++i) {
    HWND window = windows[i];
    const std::string name = " '" + kDesktop[i].window.class_name + "' ";
    auto as_before = [&] {
      Look now = LookOf(window);
      // Wine gives a maximised window its size some time after its mark: the place of before may be the normal one.
      if (before[i].maximised) now.place = before[i].place;
      return Same(now, before[i]);
    };
    if (!WaitShown(window, true) || !WaitFor(as_before)) {
      wrong += name + Told(before[i]) + " is " + Told(LookOf(window));
    }
    if (!before[i].minimised && !before[i].maximised) continue;
    PostMessageA(window, WM_SYSCOMMAND, SC_RESTORE, 0);
    const RECT normal = OtherWindows::NormalPlace(i);
    // The place alone: without a window manager Wine at times leaves the mark of a maximised window on it.
    auto at_normal = [&] {
      const RECT place = LookOf(window).place;
      return EqualRect(&place, &normal) != FALSE;
    };
    if (!WaitFor(at_normal)) {
      wrong += name + "restored is " + Told(LookOf(window));
    }
  }
  return wrong;
}

void BossKeyPart(const Report& check) {
  RemoteProgram program("/STARTUP");
  HWND window = Resident(program, check);
  const OtherWindows others(Desktop());
  check(others.AllOpen(), "the windows of other programs are open");
  std::vector<Look> before;
  for (std::size_t i = 0; i < std::size(kDesktop); ++i) before.push_back(LookOf(others[i]));

  PostChord(window, kBossKey);
  std::string wrong = WronglyShown(others, true);
  check(wrong.empty(), "the Boss Key hides what it should" + wrong);
  PostChord(window, kBossKey);
  wrong = WronglyPlaced(others, before);
  check(wrong.empty(), "and brings each back as it was" + wrong);

  PostTray(window, WM_LBUTTONDOWN);
  WaitShown(window, true);
  check(program.PickTab(kBossKeyTab) && program.Click("Hide Google Chrome") && !program.Ticked("Hide Google Chrome"),
        "a box of the Boss Key's page can be cleared");
  PostChord(window, kBossKey);
  wrong = WronglyShown(others, false);
  check(wrong.empty(), "what is not ticked stays in sight" + wrong);

  check(HasIcon(window) && TakenChords() == 6, "icon and chords are still there");
  check(program.End(), "the program ends");
  check(WaitFor([&] { return others.AllOpen(); }), "a real end leaves no window hidden");
  check(!HasIcon(window) && TakenChords() == 0, "and no icon and no chord");
  SetValue(kStore, "BK_Chrome", "1");
}

HWND OpenPopup(HWND window) {
  HWND popup = nullptr;
  PostTray(window, WM_RBUTTONUP);
  WaitFor([&] {
    popup = FindWindowA("#32768", nullptr);
    return popup != nullptr && Shown(popup);
  });
  return popup;
}

bool PopupClosed() {
  return WaitFor([] {
    HWND popup = FindWindowA("#32768", nullptr);
    return popup == nullptr || !Shown(popup);
  });
}

void ClickAt(int x, int y) {
  SetCursorPos(x, y);
  INPUT inputs[2] = {};
  for (INPUT& input : inputs) input.type = INPUT_MOUSE;
  inputs[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
  inputs[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
  SendInput(2, inputs, sizeof(INPUT));
}

void TrayPart(const Report& check) {
  RemoteProgram program("/STARTUP");
  HWND window = Resident(program, check);
  for (const UINT mouse : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}) {
    PostTray(window, mouse);
    check(WaitShown(window, true) && WaitFor([=] { return GetForegroundWindow() == window; }),
          "a click on the icon shows the window, " + std::to_string(mouse));
    check(Hide(program) && program.Running() && HasIcon(window), "closing it hides it");
  }
  // A move of the mouse over the window, at the place that has the number of a click.
  PostMessageA(window, kTrayMessage, 0, WM_LBUTTONDOWN);
  check(!WaitFor([=] { return Shown(window); }, 500), "a real move over the window is no click");

  check(OpenPopup(window) != nullptr && !Shown(window), "a right click opens the menu");
  PressKeys({VK_ESCAPE});
  check(PopupClosed(), "Escape closes it");
  check(OpenPopup(window) != nullptr, "it opens again");
  ClickAt(1200, 20);
  check(PopupClosed() && !Shown(window), "a click elsewhere closes it");
  OpenPopup(window);
  for (int i = 0; i < 3; ++i) PressKeys({VK_UP});  // from below: leave, shut down, show
  PressKeys({VK_RETURN});
  check(WaitShown(window, true) && PopupClosed(), "an entry of it shows the window");
  // Windows of the program run on behind the menu; its timers too.
  PressKeys({VK_CONTROL, 'X'});
  check(WaitShown(window, false) && program.Running(), "Ctrl+X hides the window");
  PressKeys({VK_MENU, 'Z'});
  check(WaitShown(window, true), "Alt+Z shows it");
  check(program.PickTab(kAutoKillTab), "the Auto-Kill tab comes to the front");
  const std::string hide_icon = "Complete Stealth - Hide Tray Icon (ALT-Z to Show Quillbarrow)";
  program.PostClick(window, hide_icon);
  HWND box = program.Window("Disable Auto-Kill", 10000);
  PostMessageA(box, WM_COMMAND, IDYES, 0);
  check(box != nullptr && WaitFor([&] { return !HasIcon(window); }), "the icon can be taken away");
  program.PostClick(window, hide_icon);
  check(WaitFor([&] { return HasIcon(window); }), "and comes back");
  Hide(program);

  OpenPopup(window);
  SendMessageA(window, WM_ENDSESSION, TRUE, 0);
  DWORD code = STILL_ACTIVE;
  check(!program.Running(10000) && program.ExitCode(code) && code == 0 && !HasIcon(window) && TakenChords() == 0,
        "the session's end under the open menu ends the program in order");
}

void WizardPart(const Report& check) {
  RemoteProgram program("");
  HWND window = program.MainWindow();
  WaitShown(window, true);
  SetForegroundWindow(window);
  WaitFor([&] { return GetForegroundWindow() == window; });
  PressKeys({VK_CONTROL, 'A'});
  HWND wizard = program.Window("Quillbarrow 2019 - Setup Wizard", 10000);
  check(wizard != nullptr && WaitShown(wizard, true) && !IsWindowEnabled(window),
        "Ctrl+A opens the wizard before the main window");
  auto has = [&](const char* class_name, const char* text) {
    return WaitFor([&] { return RemoteProgram::Child(wizard, class_name, text) != nullptr; }, 3000);
  };
  auto press = [&](const char* text) {
    HWND button = RemoteProgram::Child(wizard, "Button", text);
    return button != nullptr && IsWindowEnabled(button) && PostMessageA(button, BM_CLICK, 0, 0);
  };
  check(has("Static", "STEP 1 of 3:") && press("Temp Internet Files"), "its first step has the boxes of what to kill");
  // Its browsers stand on a strip of their own, on the page of the first step.
  WaitFor([&] { return GetForegroundWindow() == wizard; });
  PressKeys({VK_MENU, '2'});
  check(has("Static", "STEP 2 of 3:"), "Alt with the number of a step goes to it");
  PressKeys({VK_MENU, '1'});
  has("Static", "STEP 1 of 3:");
  check(press(" NEXT >>") && has("Static", "STEP 2 of 3:") && has("ListBox", ""), "the second has the cookies");
  check(press(" NEXT >>") && has("Static", "STEP 3 of 3:") && press("Apple Safari"),
        "the third has the browsers that it watches");
  check(!IsWindowEnabled(RemoteProgram::Child(wizard, "Button", " Cancel")) && press(" Save") &&
            WaitFor([&] { return !IsWindow(wizard); }) && IsWindowEnabled(window),
        "it saves and closes");
  check(Value(kStore, "AK_AppleSafari") == "0" && Value(kStore, "AK_GoogleChrome") == "1",
        "the browsers are in the store");
  check(Value(kStore, "WIN_StartRun") == "1" && Value(kStore, "IE_cache") == "1", "and what to kill");
  SetValue(kStore, "IE_cache", "0");
  check(program.End(), "the program ends");
}

// All timers of the program fall due at once.
void TickAll(const RemoteProgram& program) {
  HWND timers = nullptr;
  while ((timers = FindWindowExA(HWND_MESSAGE, timers, "QuillbarrowTimers", nullptr)) != nullptr) {
    if (!program.Owns(timers)) continue;
    for (WPARAM id = 1; id < 20; ++id) PostMessageA(timers, WM_TIMER, id, 0);
  }
}

const struct {
  const char *value, *data;
} kGuarded[] = {
    {"Disable Script Debugger", "yes"},           {"Disable Script DebuggerX", "yes"},
    {"Error Dlg Displayed On Every Error", "no"}, {"Error Dlg Displayed On Every ErrorX", "no"},
    {"Error Dlg Details Pane Open", "no"},
};

void WatcherPart(const Report& check) {
  SetValue(kRunList, "a", "cmd\\1");
  RemoteProgram program("/STARTUP");
  HWND window = Resident(program, check);
  {
    const OtherWindows browser({{"Chrome_WidgetWin_1", "Page", SW_SHOWNORMAL}});
    Sleep(2500);
    check(browser.Close(0) && KeyExists(kRunList) && !Shown(window), "a browser opens and closes");
  }
  check(WaitShown(window, true), "that starts a run, which shows itself");
  check(WaitShown(window, false) && !KeyExists(kRunList), "it kills, and hides the window after it");
  SetValue(kRunList, "a", "cmd\\1");
  PressKeys({VK_CONTROL, VK_MENU, VK_SPACE});
  check(WaitShown(window, true) && program.RunEnded() && !KeyExists(kRunList), "Ctrl+Alt+Space kills too");
  std::vector<std::string> lines = program.LogAndCount();
  lines.pop_back();  // such runs show no count
  MakeFile("C:\\resident-log.txt", Joined(lines));
  check(HasIcon(window), "the icon is still there");

  for (const auto& row : kGuarded) SetValue(kBrowser, row.value, "changed");
  TickAll(program);
  std::string left;
  for (const auto& row : kGuarded) {
    if (!WaitFor([&] { return Value(kBrowser, row.value) == row.data; }, 3000)) left += std::string(" ") + row.value;
  }
  check(left.empty(), "a tick of the guard brings its five values back" + left);

  check(Hide(program), "the window hides");
  check(program.End() && !HasIcon(window) && TakenChords() == 0, "the program ends, with its icon and its chords");
}

}  // namespace

void ResidentStory(const Report& check) {
  DeleteKey(kStore);
  for (const char* name : {"QBBuild", "WIN_StartRun"}) SetValue(kStore, name, "1");
  SetValue(kStore, "AK_WinStart", "0");
  BossKeyPart(check);
  TrayPart(check);
  WizardPart(check);
  WatcherPart(check);
}

}  // namespace native
