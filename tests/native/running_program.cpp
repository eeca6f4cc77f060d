#include "tests/native/running_program.h"

#include <algorithm>
#include <array>
// After the basic types of windows.h.
#include <commctrl.h>

namespace qb::native {

namespace {

constexpr int kRounds = 600;
constexpr DWORD kRound = 50;  // ms
constexpr wchar_t kProgram[] = L"C:\\Program Files\\Quillbarrow\\Quillbarrow.exe";

std::wstring WithoutAccessKey(std::wstring text) {
  std::erase(text, L'&');
  return text;
}

}  // namespace

bool Within(const std::function<bool()>& condition) {
  for (int i = 0; i < kRounds; ++i) {
    if (condition()) return true;
    ::Sleep(kRound);
  }
  return condition();
}

std::wstring Window::Text() const {
  std::wstring text(static_cast<std::size_t>(::SendMessageW(handle_, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(
      ::SendMessageW(handle_, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  return text;
}

std::wstring Window::ClassName() const {
  std::array<wchar_t, 100> name{};
  ::GetClassNameW(handle_, name.data(), static_cast<int>(name.size()));
  return name.data();
}

std::vector<Window> Window::Children() const {
  std::vector<Window> children;
  for (HWND child = ::GetWindow(handle_, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
    children.emplace_back(child);
  }
  return children;
}

Window Window::Child(const std::wstring& class_name, const std::wstring& text) const {
  Window found;
  for (const Window& child : Children()) {
    if (child.ClassName() != class_name || WithoutAccessKey(child.Text()) != text) continue;
    if (child.Visible()) return child;
    if (!found) found = child;
  }
  return found;
}

bool Window::Tick(bool wanted) const {
  if (Checked() != wanted) Click();
  return Within([&] { return Checked() == wanted; });
}

std::vector<std::wstring> Window::ListEntries() const {
  std::vector<std::wstring> entries;
  const LRESULT count = ::SendMessageW(handle_, LB_GETCOUNT, 0, 0);
  for (WPARAM i = 0; static_cast<LRESULT>(i) < count; ++i) {
    std::wstring entry(static_cast<std::size_t>(::SendMessageW(handle_, LB_GETTEXTLEN, i, 0)) + 1, L'\0');
    const LRESULT length = ::SendMessageW(handle_, LB_GETTEXT, i, reinterpret_cast<LPARAM>(entry.data()));
    entry.resize(static_cast<std::size_t>(std::max<LRESULT>(length, 0)));
    entries.push_back(std::move(entry));
  }
  return entries;
}

void Window::TurnTo(int page) const {
  // Unlike TCM_SETCURSEL this tells the parent, as a click on the tab does.
  ::SendMessageW(handle_, TCM_SETCURFOCUS, static_cast<WPARAM>(page), 0);
}

RunningProgram::RunningProgram(const std::wstring& arguments) {
  std::wstring line = std::wstring(L"\"") + kProgram + L"\"" + (arguments.empty() ? L"" : L" ") + arguments;
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  if (!::CreateProcessW(kProgram, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process_))
    return;
  ::WaitForInputIdle(process_.hProcess, kRounds * kRound);
}

RunningProgram::~RunningProgram() {
  if (Runs()) ::TerminateProcess(process_.hProcess, 1);
  ::WaitForSingleObject(process_.hProcess, kRounds * kRound);
  ::CloseHandle(process_.hThread);
  ::CloseHandle(process_.hProcess);
}

bool RunningProgram::Runs() const {
  return ::WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT;
}

DWORD RunningProgram::ExitCode() const {
  DWORD code = 0xFFFFFFFF;
  if (::WaitForSingleObject(process_.hProcess, kRounds * kRound) == WAIT_OBJECT_0) {
    ::GetExitCodeProcess(process_.hProcess, &code);
  }
  return code;
}

Window RunningProgram::FindNow(const wchar_t* class_name, const std::wstring& title, bool visible) const {
  // All at once: going from one to the next loses the way when a window comes to the front meanwhile.
  std::vector<HWND> windows;
  ::EnumWindows(
      [](HWND window, LPARAM list) -> BOOL {
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&windows));
  for (HWND window : windows) {
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    const Window candidate(window);
    if (process == process_.dwProcessId && candidate.ClassName() == class_name && (!visible || candidate.Visible()) &&
        candidate.Text().starts_with(title)) {
      return candidate;
    }
  }
  return Window();
}

Window RunningProgram::Find(const wchar_t* class_name, const std::wstring& title, bool visible) const {
  Window found;
  Within([&] {
    found = FindNow(class_name, title, visible);
    return found || !Runs();
  });
  return found;
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
  ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

}  // namespace qb::native
