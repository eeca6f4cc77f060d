#include "remote_program.h"

#include <commctrl.h>

#include <iterator>

namespace native {

namespace {

constexpr const char* kExe = "C:\\Program Files\\Quillbarrow\\Quillbarrow.exe";
constexpr const char* kMainTitle = "Quillbarrow 2019 - Protecting your Privacy since 1997!";
constexpr LRESULT kLogTab = 9;

struct Search {
  DWORD process = 0;
  std::string class_name, text;
  HWND found = nullptr;
  int count = 0;
};

std::string ClassOf(HWND window) {
  char name[256] = "";
  GetClassNameA(window, name, sizeof name);
  return name;
}

std::string Narrow(const wchar_t* text) {
  char narrow[4096] = "";
  WideCharToMultiByte(CP_UTF8, 0, text, -1, narrow, sizeof narrow, nullptr, nullptr);
  return narrow;
}

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

BOOL CALLBACK MatchTopLevel(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process != search.process || RemoteProgram::Text(window) != search.text) return TRUE;
  search.found = window;
  return FALSE;
}

BOOL CALLBACK CountVisible(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process == search.process && IsWindowVisible(window)) ++search.count;
  return TRUE;
}

BOOL CALLBACK MatchChild(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  if (!IsWindowVisible(window) || _stricmp(ClassOf(window).c_str(), search.class_name.c_str()) != 0) return TRUE;
  if (!search.text.empty() && Read(RemoteProgram::Text(window)) != search.text) return TRUE;
  search.found = window;
  return FALSE;
}

}  // namespace

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

RemoteProgram::RemoteProgram(const std::string& arguments) {
  std::string command = std::string("\"") + kExe + "\"" + (arguments.empty() ? "" : " " + arguments);
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, "C:\\Program Files\\Quillbarrow",
                 &startup, &process_);
}

RemoteProgram::~RemoteProgram() {
  if (Running()) TerminateProcess(process_.hProcess, 1);
  CloseHandle(process_.hThread);
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

HWND RemoteProgram::MainWindow() {
  return Window(kMainTitle, 10000);
}

HWND RemoteProgram::Window(const std::string& title, int milliseconds) {
  Search search{process_.dwProcessId, "", title, nullptr, 0};
  WaitFor(
      [&] {
        EnumWindows(MatchTopLevel, reinterpret_cast<LPARAM>(&search));
        return search.found != nullptr;
      },
      milliseconds);
  return search.found;
}

int RemoteProgram::VisibleWindows() const {
  Search search{process_.dwProcessId, "", "", nullptr, 0};
  EnumWindows(CountVisible, reinterpret_cast<LPARAM>(&search));
  return search.count;
}

HWND RemoteProgram::Child(HWND window, const std::string& class_name, const std::string& text) {
  Search search{0, class_name, text, nullptr, 0};
  EnumChildWindows(window, MatchChild, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

std::string RemoteProgram::Text(HWND window) {
  wchar_t text[1024] = L"";
  SendMessageW(window, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(text));
  return Narrow(text);
}

std::vector<std::string> RemoteProgram::ListEntries(HWND list) {
  std::vector<std::string> entries;
  const LRESULT count = SendMessageW(list, LB_GETCOUNT, 0, 0);
  for (LRESULT i = 0; i < count; ++i) {
    const LRESULT length = SendMessageW(list, LB_GETTEXTLEN, static_cast<WPARAM>(i), 0);
    if (length < 0) break;
    std::wstring entry(static_cast<std::size_t>(length) + 1, L'\0');
    if (SendMessageW(list, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(entry.data())) < 0) break;
    entries.push_back(Narrow(entry.c_str()));
  }
  return entries;
}

bool RemoteProgram::PickTab(int tab) {
  HWND strip = Child(MainWindow(), WC_TABCONTROLA, "");
  if (strip == nullptr) return false;
  for (int steps = 0; steps < 20; ++steps) {
    const auto at = static_cast<int>(SendMessageA(strip, TCM_GETCURSEL, 0, 0));
    if (at == tab) return true;
    SendMessageA(strip, WM_KEYDOWN, at < tab ? VK_RIGHT : VK_LEFT, 0);
  }
  return false;
}

bool RemoteProgram::Click(const std::string& text) {
  HWND button = Child(MainWindow(), WC_BUTTONA, text);
  if (button == nullptr || !IsWindowEnabled(button)) return false;
  SendMessageA(button, BM_CLICK, 0, 0);
  return true;
}

bool RemoteProgram::PostClick(HWND window, const std::string& text) {
  HWND button = Child(window, WC_BUTTONA, text);
  return button != nullptr && IsWindowEnabled(button) && PostMessageA(button, BM_CLICK, 0, 0);
}

bool RemoteProgram::Ticked(const std::string& text) {
  HWND box = Child(MainWindow(), WC_BUTTONA, text);
  return box != nullptr && SendMessageA(box, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

bool RemoteProgram::Kill() {
  HWND window = MainWindow();
  if (!PostClick(window, "Kill Now!")) return false;
  HWND strip = Child(window, WC_TABCONTROLA, "");
  return WaitFor([&] { return SendMessageA(strip, TCM_GETCURSEL, 0, 0) == kLogTab; }) && RunEnded();
}

bool RemoteProgram::RunEnded() {
  HWND window = MainWindow();
  HWND button = Child(window, WC_BUTTONA, "Kill Now!");
  return WaitFor(
             [&] {
               const auto lines = ListEntries(Child(window, WC_LISTBOXA, ""));
               return IsWindowEnabled(button) && !lines.empty() &&
                      WithoutTime(lines.back()) == " - Successful!  Your privacy is protected.";
             },
             60000) &&
         Running();
}

std::vector<std::string> RemoteProgram::LogAndCount() {
  HWND window = MainWindow();
  std::vector<std::string> lines = ListEntries(Child(window, WC_LISTBOXA, ""));
  for (std::string& line : lines) line = WithoutTime(line);
  std::string count;
  WaitFor([&] {
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
      const std::string text = Text(child);
      if (text.rfind("History Traces Killed: ", 0) == 0) count = text;
    }
    return !count.empty();
  });
  lines.push_back(count.empty() ? "(no count)" : count);
  return lines;
}

bool RemoteProgram::Running(int wait_milliseconds) {
  return process_.hProcess != nullptr &&
         WaitForSingleObject(process_.hProcess, static_cast<DWORD>(wait_milliseconds)) == WAIT_TIMEOUT;
}

void RemoteProgram::Close() {
  PostMessageA(MainWindow(), WM_CLOSE, 0, 0);
}

bool RemoteProgram::End() {
  HWND window = MainWindow();
  Close();
  WaitFor([&] { return !IsWindowVisible(window); });
  Close();
  return !Running(10000);
}

}  // namespace native
