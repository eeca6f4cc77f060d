#include "remote_program.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>

#include "computer.h"

namespace native {

namespace {

constexpr const char* kExe = "C:\\Program Files\\Quillbarrow\\Quillbarrow.exe";
constexpr LRESULT kLogTab = 9;

// A caption as it is read, without the ampersand before its access key.
std::string Read(std::string caption) {
  const std::size_t mark = caption.find('&');
  if (mark != std::string::npos) caption.erase(mark, 1);
  return caption;
}

std::string WithoutTime(const std::string& line) {
  const std::size_t cut = line.find(" - ");
  return cut == std::string::npos ? line : line.substr(cut);
}

BOOL CALLBACK Collect(HWND window, LPARAM windows) {
  reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  return TRUE;
}

// All below a window, or the top-level ones.
std::vector<HWND> AllBelow(HWND window) {
  std::vector<HWND> all;
  const auto into = reinterpret_cast<LPARAM>(&all);
  window == nullptr ? EnumWindows(Collect, into) : EnumChildWindows(window, Collect, into);
  return all;
}

}  // namespace

bool Shown(HWND window) {
  return IsWindowVisible(window) != FALSE;
}

bool WaitShown(HWND window, bool shown, int milliseconds) {
  return WaitFor([=] { return Shown(window) == shown; }, milliseconds);
}

bool WaitGone(HWND window) {
  return WaitFor([=] { return !IsWindow(window); });
}

bool WaitInFront(HWND window) {
  return WaitFor([=] { return GetForegroundWindow() == window; });
}

std::string ClassOf(HWND window) {
  char name[256] = "";
  GetClassNameA(window, name, sizeof name);
  return name;
}

std::vector<HWND> Children(HWND window) {
  std::vector<HWND> children;
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    children.push_back(child);
  }
  return children;
}

void PressKeys(std::initializer_list<WORD> keys) {
  std::vector<INPUT> inputs;
  auto add = [&inputs](WORD key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = flags;
    inputs.push_back(input);
  };
  for (WORD key : keys) add(key, 0);
  for (auto key = std::rbegin(keys); key != std::rend(keys); ++key) add(*key, KEYEVENTF_KEYUP);
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

void PressBossKey(HWND main_window) {
  PostMessageA(main_window, WM_HOTKEY, 157, MAKELPARAM(MOD_ALT, VK_SPACE));
}

RemoteProgram::RemoteProgram(const std::string& arguments) {
  std::string command = std::string("\"") + kExe + "\"" + (arguments.empty() ? "" : " " + arguments);
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, "C:\\Program Files\\Quillbarrow",
                 &startup, &process_);
}

RemoteProgram::RemoteProgram(DWORD process) {
  process_.dwProcessId = process;
  process_.hProcess = OpenProcess(PROCESS_ALL_ACCESS, FALSE, process);
}

RemoteProgram RemoteProgram::ThatRuns() {
  DWORD process = 0;
  WaitFor([&] { return GetWindowThreadProcessId(FindWindowA(nullptr, kMainTitle), &process) != 0; }, 60000);
  return RemoteProgram(process);
}

RemoteProgram::~RemoteProgram() {
  if (process_.hThread != nullptr) {
    if (Running()) TerminateProcess(process_.hProcess, 1);
    CloseHandle(process_.hThread);
  }
  CloseHandle(process_.hProcess);
}

bool RemoteProgram::Owns(HWND window) const {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  return process == process_.dwProcessId;
}

bool RemoteProgram::OpenIconMenu() {
  HWND window = FindWindowA(nullptr, kMainTitle);
  return window != nullptr && PostMessageA(window, WM_MOUSEMOVE, 1, WM_RBUTTONUP);
}

HWND RemoteProgram::Find(const std::string& title, bool shown, int milliseconds) const {
  HWND found = nullptr;
  WaitFor(
      [&] {
        for (HWND window : AllBelow(nullptr)) {
          if (Owns(window) && (Shown(window) || !shown) && Text(window) == title) found = window;
        }
        return found != nullptr;
      },
      milliseconds);
  return found;
}

HWND RemoteProgram::MainWindow() const {
  return Find(kMainTitle, false, 10000);
}

HWND RemoteProgram::ShownWindow() const {
  return Find(kMainTitle, true, 20000);
}

HWND RemoteProgram::Window(const std::string& title) const {
  return Find(title, true, 20000);
}

std::size_t RemoteProgram::VisibleWindows() const {
  const auto all = AllBelow(nullptr);
  return static_cast<std::size_t>(
      std::count_if(all.begin(), all.end(), [this](HWND window) { return Owns(window) && Shown(window); }));
}

HWND RemoteProgram::Child(HWND window, const std::string& class_name, const std::string& text) {
  const auto all = AllBelow(window);
  const auto found = std::find_if(all.begin(), all.end(), [&](HWND child) {
    return Shown(child) && _stricmp(ClassOf(child).c_str(), class_name.c_str()) == 0 &&
           (text.empty() || Read(Text(child)) == text);
  });
  return found == all.end() ? nullptr : *found;
}

std::string RemoteProgram::Text(HWND window) {
  wchar_t text[1024] = L"";
  SendMessageW(window, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(text));
  return Utf8(text);
}

std::string RemoteProgram::LabelWith(HWND window, const std::string& part) {
  for (HWND child : Children(window)) {
    std::string text = Text(child);
    if (text.find(part) != std::string::npos) return text;
  }
  return {};
}

Texts RemoteProgram::ListEntries(HWND list) {
  Texts entries;
  const LRESULT count = SendMessageW(list, LB_GETCOUNT, 0, 0);
  for (LRESULT i = 0; i < count; ++i) {
    const LRESULT length = SendMessageW(list, LB_GETTEXTLEN, static_cast<WPARAM>(i), 0);
    if (length < 0) break;
    std::wstring entry(static_cast<std::size_t>(length) + 1, L'\0');
    if (SendMessageW(list, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(entry.data())) < 0) break;
    entries.push_back(Utf8(entry.c_str()));
  }
  return entries;
}

bool RemoteProgram::PickTab(int tab) const {
  HWND strip = Child(MainWindow(), WC_TABCONTROLA);
  if (strip == nullptr) return false;
  for (int steps = 0; steps < 20; ++steps) {
    const auto at = static_cast<int>(SendMessageA(strip, TCM_GETCURSEL, 0, 0));
    if (at == tab) return true;
    SendMessageA(strip, WM_KEYDOWN, at < tab ? VK_RIGHT : VK_LEFT, 0);
  }
  return false;
}

bool RemoteProgram::Click(const std::string& text) const {
  HWND button = Child(MainWindow(), WC_BUTTONA, text);
  if (button == nullptr || !IsWindowEnabled(button)) return false;
  SendMessageA(button, BM_CLICK, 0, 0);
  return true;
}

bool RemoteProgram::PostClick(HWND window, const std::string& text) {
  HWND button = nullptr;
  auto can_be_pressed = [&] {
    button = Child(window, WC_BUTTONA, text);
    return button != nullptr && IsWindowEnabled(button);
  };
  return WaitFor(can_be_pressed) && PostMessageA(button, BM_CLICK, 0, 0);
}

bool RemoteProgram::Ticked(const std::string& text) const {
  HWND box = Child(MainWindow(), WC_BUTTONA, text);
  return box != nullptr && SendMessageA(box, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

bool RemoteProgram::Tick(int tab, const Texts& wanted, const Texts& others) const {
  auto set = [this](const std::string& box, bool tick) {
    return Ticked(box) == tick || (Click(box) && Ticked(box) == tick);
  };
  auto is_wanted = [&](const std::string& box) { return std::find(wanted.begin(), wanted.end(), box) != wanted.end(); };
  return ShownWindow() != nullptr && PickTab(tab) &&
         std::all_of(wanted.begin(), wanted.end(), [&](const std::string& box) { return set(box, true); }) &&
         std::all_of(others.begin(), others.end(), [&](const std::string& box) { return set(box, is_wanted(box)); });
}

bool RemoteProgram::Kill() const {
  HWND window = MainWindow();
  if (!PostClick(window, "Kill Now!")) return false;
  HWND strip = Child(window, WC_TABCONTROLA);
  return WaitFor([&] { return SendMessageA(strip, TCM_GETCURSEL, 0, 0) == kLogTab; }) && RunEnded();
}

bool RemoteProgram::RunEnded() const {
  HWND window = MainWindow();
  HWND button = Child(window, WC_BUTTONA, "Kill Now!");
  return WaitFor(
             [&] {
               const auto lines = ListEntries(Child(window, WC_LISTBOXA));
               return IsWindowEnabled(button) && !lines.empty() &&
                      WithoutTime(lines.back()) == " - Successful!  Your privacy is protected.";
             },
             60000) &&
         Running();
}

Texts RemoteProgram::LogAndCount() const {
  HWND window = MainWindow();
  Texts lines = ListEntries(Child(window, WC_LISTBOXA));
  for (std::string& line : lines) line = WithoutTime(line);
  std::string count;
  WaitFor([&] {
    count = LabelWith(window, "History Traces Killed: ");
    return !count.empty();
  });
  lines.push_back(count.empty() ? "(no count)" : count);
  return lines;
}

bool RemoteProgram::Running(int wait_milliseconds) const {
  return process_.hProcess != nullptr &&
         WaitForSingleObject(process_.hProcess, static_cast<DWORD>(wait_milliseconds)) == WAIT_TIMEOUT;
}

bool RemoteProgram::EndedInOrder() const {
  DWORD code = STILL_ACTIVE;
  return !Running(10000) && GetExitCodeProcess(process_.hProcess, &code) && code == 0;
}

bool RemoteProgram::Hide() const {
  HWND window = MainWindow();
  PostMessageA(window, WM_CLOSE, 0, 0);
  return WaitShown(window, false);
}

bool RemoteProgram::End() const {
  Hide();
  PostMessageA(MainWindow(), WM_CLOSE, 0, 0);
  return !Running(10000);
}

}  // namespace native
