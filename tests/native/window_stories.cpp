#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <set>

#include "computer.h"
#include "remote_program.h"
#include "stories.h"

namespace native {

namespace {

constexpr int kTabs = 10;

// The main window, shown and with the keyboard; null if that does not come about.
HWND MainWindowInFront(RemoteProgram& program) {
  HWND window = program.ShownWindow();
  SetForegroundWindow(window);
  return WaitInFront(window) ? window : nullptr;
}

// What is wrong with the places of a window's visible controls: one that is not all inside the window, or
// that covers another. Frames and the tab strip lie behind others and are left out.
std::string MisplacedControls(HWND window, std::set<HWND>& controls) {
  std::string wrong;
  RECT client{};
  GetClientRect(window, &client);
  std::vector<RECT> places;
  for (HWND child : Children(window)) {
    const bool frame = ClassOf(child) == "Button" && (GetWindowLongA(child, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
    if (!Shown(child) || frame || ClassOf(child) == "SysTabControl32") continue;
    RECT place{}, common{};
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    IntersectRect(&common, &place, &client);
    const bool inside = !IsRectEmpty(&place) && EqualRect(&common, &place);
    const bool apart = std::none_of(places.begin(), places.end(),
                                    [&](const RECT& other) { return IntersectRect(&common, &other, &place); });
    if (!inside || !apart) wrong += " '" + RemoteProgram::Text(child) + "'";
    places.push_back(place);
    controls.insert(child);
  }
  return wrong;
}

void EveryPage() {
  RemoteProgram program;
  HWND window = MainWindowInFront(program);
  Check(window != nullptr, "the main window comes to the front");
  HWND strip = RemoteProgram::Child(window, "SysTabControl32");
  // A strip that is too narrow for its tabs gets arrows.
  Check(strip != nullptr && RemoteProgram::Child(strip, "msctls_updown32") == nullptr, "all tabs are in sight");
  std::set<HWND> seen;
  for (int page = 0; page < kTabs; ++page) {
    const std::size_t before = seen.size();
    const bool picked = program.PickTab(page);
    const std::string wrong = MisplacedControls(window, seen);
    Check(picked && wrong.empty(), "the controls of page " + std::to_string(page) + " have their places" + wrong);
    Check(seen.size() > before, "page " + std::to_string(page) + " has controls of its own");
  }
  program.PickTab(0);
  program.PostClick(window, "Cookie Manager...");
  HWND manager = program.Window("Quillbarrow 2019 - Cookie Manager");
  Check(manager != nullptr, "the Cookie Manager opens");
  seen.clear();
  const std::string wrong = manager == nullptr ? " (none)" : MisplacedControls(manager, seen);
  Check(wrong.empty(), "the controls of the Cookie Manager have their places" + wrong);
}

void Keyboard() {
  RemoteProgram program;
  HWND window = MainWindowInFront(program);
  Check(window != nullptr, "the main window has the keyboard");
  auto on_windows_page = [&] { return RemoteProgram::Child(window, "Button", "Windows Recycle Bin") != nullptr; };
  PressKeys({VK_MENU, 'W'});
  Check(WaitFor(on_windows_page), "Alt+W turns to the page Windows");
  PressKeys({VK_CONTROL, VK_TAB});
  Check(WaitFor([&] { return !on_windows_page(); }), "Ctrl+Tab turns on");
  PressKeys({VK_CONTROL, VK_SHIFT, VK_TAB});
  Check(WaitFor(on_windows_page), "Ctrl+Shift+Tab turns back");

  PressKeys({VK_CONTROL, 'S'});
  HWND setup = program.Window("Quillbarrow 2019 - General Setup");
  Check(setup != nullptr && WaitInFront(setup), "Ctrl+S opens General Setup");
  std::set<HWND> controls;
  const std::string wrong = MisplacedControls(setup, controls);
  Check(wrong.empty(), "the controls of General Setup have their places" + wrong);
  HWND address = nullptr;
  for (HWND child : controls) {
    // Of the two text boxes the lower one.
    RECT place{}, other{};
    GetWindowRect(child, &place);
    if (address != nullptr) GetWindowRect(address, &other);
    if (ClassOf(child) == "Edit" && (address == nullptr || place.top > other.top)) address = child;
  }
  SendMessageW(address, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"j\u00FCrgen@msn.com"));
  PressKeys({VK_RETURN});
  Check(WaitFor([] { return Value(kStore, "MSN8Profile") == "j\u00FCrgen@msn.com"; }),
        "Enter saves, and letters beyond ASCII come into the store unchanged");

  PressKeys({VK_CONTROL, 'S'});
  setup = program.Window("Quillbarrow 2019 - General Setup");
  Check(WaitInFront(setup), "it opens once more");
  PressKeys({VK_ESCAPE});
  Check(WaitGone(setup), "Escape closes it");
}

// The window's thread: who has the keyboard there, and whether a menu is open.
GUITHREADINFO ThreadOf(HWND window) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
  return info;
}

HWND FocusOf(HWND window) {
  return ThreadOf(window).hwndFocus;
}

// The access key of a control; 0 if it has none.
char AccessKey(HWND control) {
  const std::string text = RemoteProgram::Text(control);
  const std::size_t mark = text.find('&');
  return mark == std::string::npos ? '\0' : static_cast<char>(toupper(static_cast<unsigned char>(text[mark + 1])));
}

void TabOrderAndKeys() {
  RemoteProgram program;
  HWND window = MainWindowInFront(program);
  HWND strip = RemoteProgram::Child(window, "SysTabControl32");
  auto press = [&](std::initializer_list<WORD> keys) {
    HWND before = FocusOf(window);
    PressKeys(keys);
    return WaitFor([&] { return FocusOf(window) != before; }, 3000);
  };
  constexpr const char* kFirstBox = "Windows Start, Run drop-list";
  HWND foot = RemoteProgram::Child(window, "Button", "Kill Now!");
  // The windows of the second page are made when those round it are there.
  for (const auto& [page, first_box] : {std::pair(0, "URL address drop-list box"), std::pair(4, kFirstBox)}) {
    program.PickTab(page);
    for (int steps = 0; steps < 40 && FocusOf(window) != strip; ++steps) press({VK_TAB});
    Check(FocusOf(window) == strip, "the Tab key comes to the tab strip");
    press({VK_TAB});
    Check(FocusOf(window) == RemoteProgram::Child(window, "Button", first_box),
          "and from there to the first box of its page");
    bool past_strip = false;
    for (int steps = 0; steps < 40 && FocusOf(window) != foot; ++steps) {
      past_strip = past_strip || FocusOf(window) == strip;
      press({VK_TAB});
    }
    Check(!past_strip && FocusOf(window) == foot, "then through the page to the foot of the window");
  }
  press({VK_SHIFT, VK_TAB});
  program.PickTab(0);
  Check(WaitFor([&] { return Shown(FocusOf(window)); }), "the keyboard is not left on a page that is turned");

  std::set<char> keys;
  bool all_apart = true;
  for (HWND child : Children(window)) {
    if (!Shown(child) || AccessKey(child) == '\0') continue;
    all_apart = keys.insert(AccessKey(child)).second && all_apart;
  }
  Check(all_apart && keys.size() > 5, "no two controls in sight share an access key");
  // There are fewer letters than controls: the last boxes of a page may have none.
  program.PickTab(4);
  const bool ticked = program.Ticked(kFirstBox);
  PressKeys({VK_MENU, static_cast<WORD>(AccessKey(RemoteProgram::Child(window, "Button", kFirstBox)))});
  Check(WaitFor([&] { return program.Ticked(kFirstBox) != ticked; }), "Alt with its key ticks a box");
}

// A tip is a window beside the main one. It comes when the mouse rests on a control.
void Tips() {
  RemoteProgram program;
  HWND window = MainWindowInFront(program);
  auto in_sight = [&] { return program.VisibleWindows() == 2; };
  auto rest_on = [](HWND control) {
    POINT place{12, 8};
    PostMessageA(control, WM_MOUSEMOVE, 0, MAKELPARAM(place.x, place.y));
    ClientToScreen(control, &place);
    SetCursorPos(place.x, place.y);
  };
  rest_on(window);
  Check(!WaitFor(in_sight, 1500), "no tip comes beside the controls");
  rest_on(RemoteProgram::Child(window, "Button", "Kill Now!"));
  Check(WaitFor(in_sight), "a button shows its tip");
  rest_on(window);
  Check(WaitFor([&] { return !in_sight(); }, 30000), "it goes with the mouse");
  rest_on(RemoteProgram::Child(window, "SysTabControl32"));
  Check(WaitFor(in_sight), "a tab shows its tip");
}

// The menu bar, by its key; and the session's end under the open menu, which the program must outlive.
void MenuBar() {
  RemoteProgram program;
  HWND window = MainWindowInFront(program);
  auto in_menu = [&] { return (ThreadOf(window).flags & GUI_INMENUMODE) != 0; };
  PressKeys({VK_MENU, 'M'});
  Check(WaitFor(in_menu), "Alt+M opens the menu");
  PressKeys({'C'});
  HWND manager = program.Window("Quillbarrow 2019 - Cookie Manager");
  Check(manager != nullptr && !in_menu(), "a letter chooses an entry of it");
  WaitInFront(manager);
  PressKeys({VK_ESCAPE});
  Check(WaitGone(manager), "Escape closes a window without a button for it");

  WaitInFront(window);
  PressKeys({VK_MENU, 'M'});
  Check(WaitFor(in_menu), "the menu opens again");
  SendMessageA(window, WM_CLOSE, 0, 0);  // hides it
  SendMessageA(window, WM_ENDSESSION, TRUE, 0);
  Check(program.EndedInOrder(), "the program ends in order under its menu");
}

void ExitQuestion() {
  RemoteProgram program;
  for (const WPARAM answer : {WPARAM{IDNO}, WPARAM{IDYES}}) {
    HWND window = MainWindowInFront(program);
    PressKeys({VK_CONTROL, 'H'});
    HWND box = program.Window("Warning!  About to Exit Quillbarrow!");
    Check(box != nullptr, "Ctrl+H asks");
    Check(!IsWindowEnabled(window), "the window behind the question cannot be used");
    PostMessageA(box, WM_COMMAND, answer, 0);
    if (answer == IDNO) {
      Check(WaitFor([&] { return IsWindowEnabled(window) != FALSE; }) && program.Running() && IsWindowVisible(window),
            "No leaves all as it was");
    }
  }
  Check(!program.Running(10000), "Yes ends the program");
}

void EndOfSession() {
  SetValue(kStore, "AK_WinStart", "0");
  SetValue(kStore, "HideIcon", "abc");  // no number: passed over
  RemoteProgram program("/startup");
  HWND window = program.MainWindow();
  Check(window != nullptr && program.Running(500) && !Shown(window), "a start with Windows stays hidden");
  Check(SendMessageA(window, WM_QUERYENDSESSION, 0, 0) == TRUE && program.Running(), "Windows may end its session");
  // Sent and not posted, as Windows does: no waiting loop sees it come by.
  SendMessageA(window, WM_ENDSESSION, TRUE, 0);
  Check(!program.Running(10000), "the end of the session ends the hidden program");
}

}  // namespace

void WindowStories() {
  EveryPage();
  Keyboard();
  TabOrderAndKeys();
  Tips();
  MenuBar();
  ExitQuestion();
  EndOfSession();
}

}  // namespace native
