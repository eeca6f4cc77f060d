#include <utility>

#include "computer.h"
#include "remote_program.h"
#include "stories.h"

namespace native {

namespace {

constexpr const char* kSetup = "Quillbarrow Setup";
constexpr const char* kRemoval = "Remove Quillbarrow";

std::string Installed(const std::string& file) {
  return LocalData("Programs\\Quillbarrow\\" + file);
}

void Execute(std::string command, DWORD wait_milliseconds) {
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
    return;
  WaitForSingleObject(process.hProcess, wait_milliseconds);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

BOOL CALLBACK AddIfCut(HWND label, LPARAM cut) {
  if (!Shown(label) || _stricmp(ClassOf(label).c_str(), "Static") != 0) return TRUE;
  wchar_t text[1024] = L"";
  GetWindowTextW(label, text, 1024);
  RECT place{};
  GetClientRect(label, &place);
  RECT needed{0, 0, place.right, 0};
  HDC context = GetDC(label);
  // The label's own font belongs to its process; this is the one of dialogs.
  HFONT font = CreateFontA(-MulDiv(8, GetDeviceCaps(context, LOGPIXELSY), 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                           DEFAULT_CHARSET, 0, 0, 0, 0, "MS Shell Dlg");
  HGDIOBJ before = SelectObject(context, font);
  DrawTextW(context, text, -1, &needed, DT_CALCRECT | DT_WORDBREAK);
  SelectObject(context, before);
  DeleteObject(font);
  ReleaseDC(label, context);
  if (needed.bottom > place.bottom) *reinterpret_cast<std::string*>(cut) += " '" + Utf8(text) + "'";
  return TRUE;
}

struct Titled {
  std::string title;
  HWND window;
};

BOOL CALLBACK LookForTitle(HWND window, LPARAM parameter) {
  auto& titled = *reinterpret_cast<Titled*>(parameter);
  // The maker of setup programs puts a blank behind some titles.
  if (Shown(window) && RemoteProgram::Text(window).rfind(titled.title, 0) == 0) titled.window = window;
  return titled.window == nullptr;
}

// The window with that title, once it has the button; all that its page says must be seen.
HWND Page(const char* title, const char* button) {
  HWND window = nullptr;
  const bool there = WaitFor(
      [&] {
        Titled titled{title, nullptr};
        EnumWindows(LookForTitle, reinterpret_cast<LPARAM>(&titled));
        window = titled.window;
        HWND found = window == nullptr ? nullptr : RemoteProgram::Child(window, "Button", button);
        return found != nullptr && IsWindowEnabled(found);
      },
      20000);
  std::string cut;
  EnumChildWindows(window, AddIfCut, reinterpret_cast<LPARAM>(&cut));
  Check(there && cut.empty(), std::string("the page with ") + button + " comes, and shows its texts whole" + cut);
  return window;
}

bool Press(HWND page, const char* button) {
  return RemoteProgram::PostClick(page, button);
}

HWND BeginRemoval() {
  Execute("\"" + Installed("Uninstall.exe") + "\"", 0);
  return Page(kRemoval, "Uninstall");
}

bool ProgramRuns(bool runs) {
  return WaitFor([=] { return (FindWindowA(nullptr, kMainTitle) != nullptr) == runs; }, 30000);
}
bool KeepsData() {
  return Exists(LocalData("Quillbarrow\\qb.dat")) && !Value(kStore, "QBBuild").empty();
}

void Remove(bool with_data) {
  HWND page = BeginRemoval();
  if (with_data) Check(Press(page, "Remove them, for good."), "settings and data can be picked");
  Check(Press(page, "Uninstall") && Press(Page(kRemoval, "Close"), "Close") && WaitGone(page) &&
            WaitFor([] { return !Exists(Installed("Uninstall.exe")); }) && !Exists(Installed("Quillbarrow.exe")),
        "the removal takes the program away");
  Check(ProgramRuns(false) && Value(kRunKey, "Quillbarrow").empty(), "which has ended and does not start with Windows");
}

}  // namespace

void InstallationStory() {
  const std::string command = "\"C:\\setup.exe\"";
  Execute(command, 0);
  HWND page = Page(kSetup, "Install");
  Check(Press(page, "Cancel") && WaitGone(page) && !Exists(Installed("")), "to cancel leaves nothing behind");

  for (const bool update : {false, true}) {
    Execute(command, 0);
    page = Page(kSetup, "Install");
    Check(Press(page, "Install") && Page(kSetup, "Finish") == page && Exists(Installed("Quillbarrow.exe")),
          update ? "the program is updated" : "the program is installed");
    Check(ProgramRuns(false), "and does not run before the last page is left");
    if (update) Check(Press(page, "Start Quillbarrow"), "the start can be declined");
    Check(Press(page, "Finish") && WaitGone(page), "the last page closes");
    if (!update) Check(ProgramRuns(true), "and starts the program");
  }
  Check(ProgramRuns(false), "a declined start does not happen");
  Check(Value(kRunKey, "Quillbarrow") == "\"" + Installed("Quillbarrow.exe") + "\" /STARTUP",
        "the program starts with Windows from where it lies");

  MakeFile(LocalData("Quillbarrow\\qb.dat"), "shop.test\r\n");
  page = BeginRemoval();
  Check(Press(page, "Cancel") && WaitGone(page) && Exists(Installed("Quillbarrow.exe")), "to cancel removes nothing");
  Remove(false);
  Check(KeepsData(), "settings and data stay, unless they are asked for");
  Execute(command + " /S", 60000);
  Execute("\"" + Installed("Quillbarrow.exe") + "\"", 0);
  Check(ProgramRuns(true) && KeepsData(), "another installation finds them");
  Remove(true);
  Check(!Exists(LocalData("Quillbarrow")) && Value(kStore, "QBBuild").empty(), "and they go when they are asked for");
}

}  // namespace native
