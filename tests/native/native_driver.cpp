// Works the real program as its user does, and looks at what became of the computer. It deletes and is only
// to be run where nothing is to be lost: tests/native/run.sh makes such a place.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>

#include "tests/native/running_program.h"
#include "tests/native/snapshot.h"

namespace qb::native {

namespace {

constexpr wchar_t kSettings[] = L"Software\\VB and VBA Program Settings\\Temp\\SystemData";
constexpr wchar_t kExplorer[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer";
constexpr wchar_t kRun[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr int kWindowsTab = 4;
constexpr int kTabs = 10;

// Collects what did not hold in one test.
class Checks {
 public:
  bool That(bool holds, const std::string& claim) {
    if (!holds) failed_.push_back(claim);
    return holds;
  }
  const std::vector<std::string>& failed() const { return failed_; }

 private:
  std::vector<std::string> failed_;
};

std::string Printable(const std::wstring& text) {
  std::string bytes(text.size() * 4, '\0');
  bytes.resize(
      static_cast<std::size_t>(::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                                     bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr)));
  return bytes;
}

std::string Joined(const std::vector<std::wstring>& lines) {
  std::string text;
  for (const std::wstring& line : lines) text += "\n    " + Printable(line);
  return text;
}

std::wstring Value(const wchar_t* key, const wchar_t* name) {
  wchar_t text[600] = L"(absent)";
  DWORD size = sizeof text;
  ::RegGetValueW(HKEY_CURRENT_USER, key, name, RRF_RT_REG_SZ, nullptr, text, &size);
  return text;
}

void SetValue(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
  ::RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), name, REG_SZ, text.c_str(),
                    static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

void MakeFile(const std::wstring& path, DWORD attributes = FILE_ATTRIBUTE_NORMAL) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream(std::filesystem::path(path), std::ios::binary) << "secret";
  ::SetFileAttributesW(path.c_str(), attributes);
}

// Ends a program in the orderly way: the first close request hides the window, the next one is the end.
DWORD CloseForGood(const RunningProgram& program, Window main) {
  main.Close();
  Within([&] { return !main.Visible(); });
  main.Close();
  return program.ExitCode();
}

// What stands in the log behind date and time.
std::vector<std::wstring> LogTexts(Window list) {
  std::vector<std::wstring> texts = list.ListEntries();
  for (std::wstring& text : texts) text.erase(0, std::min(text.find(L" - "), text.size()));
  return texts;
}

Window LogList(Window main) {
  return main.Child(L"ListBox", L"");
}

// ---- The tests ----

// Ticked traces go, the log says so, and nothing else on the computer changes.
void ManualKill(Checks& check) {
  const std::wstring temp = L"C:\\windows\\TEMP";
  const std::wstring run_mru = std::wstring(kExplorer) + L"\\RunMRU";
  SetValue(run_mru, L"a", L"cmd");
  SetValue(run_mru, L"b", L"regedit");
  SetValue(std::wstring(kExplorer) + L"\\RunMRU2", L"a", L"a neighbour");
  std::filesystem::remove_all(temp);
  MakeFile(temp + L"\\one.tmp", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
  MakeFile(temp + L"\\sub\\two.tmp");
  MakeFile(temp + L"\\gr\u00FC\u00DFe \u4F60.tmp");
  MakeFile(temp + L"\\busy.tmp");
  MakeFile(L"C:\\FILE0001.CHK");
  MakeFile(L"C:\\windows\\TEMP2\\neighbour.tmp");
  HANDLE busy = ::CreateFileW((temp + L"\\busy.tmp").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);

  RunningProgram program;
  const Window main = program.MainWindow();
  if (!check.That(static_cast<bool>(main), "the main window opens")) return;
  main.Child(L"SysTabControl32", L"").TurnTo(kWindowsTab);
  check.That(main.Child(L"Button", L"Windows Start, Run drop-list").Tick(), "a box can be ticked");
  check.That(main.Child(L"Button", L"Windows Temp Folder").Tick(), "another box can be ticked");

  const Snapshot before = Snapshot::Take();
  const Window log = LogList(main);
  main.Child(L"Button", L"Kill Now!").Click();
  check.That(Within([&] {
               const auto texts = LogTexts(log);
               return !texts.empty() && texts.back() == L" - Successful!  Your privacy is protected.";
             }),
             "the run comes to its end");
  const std::vector<std::wstring> expected_log = {
      L" - Searching...", L" - Killing Windows Start button, Run droplist box... success!",
      L" - Killing Windows TEMP folder... success!", L" - Successful!  Your privacy is protected."};
  check.That(LogTexts(log) == expected_log, "the log reads:" + Joined(LogTexts(log)));
  check.That(Within([&] { return main.Child(L"Button", L"Kill Now!").Enabled(); }), "Kill Now! can be pressed again");
  // Two values, four entries of the folder and one below.
  check.That(Within([&] { return main.Child(L"Static", L"History Traces Killed: 7").Visible(); }),
             "the count is on the log page");

  std::set<std::wstring> due;
  const std::wstring key = L"-HKCU\\" + run_mru;
  due.insert({key, key + L" : a", key + L" : b"});
  for (const wchar_t* gone : {L"\\one.tmp", L"\\sub\\two.tmp", L"\\gr\u00FC\u00DFe \u4F60.tmp"})
    due.insert(L"-" + temp + gone);
  std::vector<std::wstring> surplus;
  for (const std::wstring& change : before.ChangesTo(Snapshot::Take())) {
    // Names of the file system keep the case that they were made with.
    const auto found = std::find_if(due.begin(), due.end(), [&](const std::wstring& wanted) {
      return ::CompareStringOrdinal(wanted.c_str(), -1, change.c_str(), -1, TRUE) == CSTR_EQUAL;
    });
    if (found != due.end())
      due.erase(found);
    else
      surplus.push_back(change);
  }
  check.That(due.empty(), "these are gone after the run:" + Joined({due.begin(), due.end()}));
  check.That(surplus.empty(), "nothing else changes, but:" + Joined(surplus));
  check.That(CloseForGood(program, main) == 0, "the program ends in order");
  check.That(Value(kSettings, L"HistoryRemoved") == L"7", "the lifetime count is stored");
  ::CloseHandle(busy);
}

// Closing hides; a second start brings the first copy back, and the close request after that only hides.
void SecondStart(Checks& check) {
  RunningProgram first;
  const Window main = first.MainWindow();
  if (!check.That(static_cast<bool>(main), "the main window opens")) return;
  check.That(Value(kRun, L"Quillbarrow") == L"\"C:\\Program Files\\Quillbarrow\\Quillbarrow.exe\" /STARTUP",
             "the program starts with Windows from now on");
  main.Close();
  check.That(Within([&] { return !main.Visible(); }), "the close box hides the window");
  {
    RunningProgram second;
    check.That(second.ExitCode() == 0, "the second copy goes away");
  }
  check.That(Within([&] { return main.Visible() && !::IsIconic(main.handle()); }), "the first copy is shown");
  check.That(Within([&] { return ::GetForegroundWindow() == main.handle(); }), "the first copy is in front");
  check.That(first.Runs() && Value(kSettings, L"CloseQB") == L"1", "the second copy left word");
  main.Close();
  check.That(Within([&] { return !main.Visible(); }) && first.Runs(), "the next close request hides again");
  main.Close();
  check.That(first.ExitCode() == 0, "a close request while hidden ends the program");
}

// Without Auto-Kill at its start, a start with Windows shows nothing, and the end of the session ends the hidden
// program.
void StartWithWindows(Checks& check) {
  SetValue(kSettings, L"AK_WinStart", L"0");
  RunningProgram program(L"/STARTUP");
  const Window main = program.MainWindow(false);
  if (!check.That(static_cast<bool>(main), "the main window is there")) return;
  check.That(!main.Visible(), "it is hidden");
  check.That(::SendMessageW(main.handle(), WM_QUERYENDSESSION, 0, 0) == TRUE, "Windows may shut down");
  check.That(program.Runs(), "the question alone ends nothing");
  ::SendMessageW(main.handle(), WM_ENDSESSION, TRUE, 0);
  check.That(program.ExitCode() == 0, "the end of the session ends it");
}

// On each page the boxes of that page, and only they, are shown inside the window, none upon another.
void EveryPage(Checks& check) {
  RunningProgram program;
  const Window main = program.MainWindow();
  if (!check.That(static_cast<bool>(main), "the main window opens")) return;
  const Window tabs = main.Child(L"SysTabControl32", L"");
  std::set<HWND> seen;
  for (int page = 0; page < kTabs; ++page) {
    tabs.TurnTo(page);
    RECT client{};
    ::GetClientRect(main.handle(), &client);
    std::vector<RECT> places;
    int on_page = 0;
    for (const Window& child : main.Children()) {
      const LONG type = ::GetWindowLongW(child.handle(), GWL_STYLE) & BS_TYPEMASK;
      const bool frame = child.ClassName() == L"Button" && type == BS_GROUPBOX;
      if (!child.Visible() || child.handle() == tabs.handle() || frame) continue;
      const std::string name = "page " + std::to_string(page) + ", " + Printable(child.Text());
      RECT place{}, common{};
      ::GetWindowRect(child.handle(), &place);
      ::MapWindowPoints(nullptr, main.handle(), reinterpret_cast<POINT*>(&place), 2);
      ::IntersectRect(&common, &place, &client);
      check.That(::EqualRect(&common, &place) && !::IsRectEmpty(&place), name + " lies in the window");
      const bool apart = std::none_of(places.begin(), places.end(),
                                      [&](const RECT& other) { return ::IntersectRect(&common, &other, &place); });
      check.That(apart, name + " covers no other control");
      places.push_back(place);
      on_page += seen.insert(child.handle()).second ? 1 : 0;
    }
    check.That(on_page > 0, "page " + std::to_string(page) + " has controls of its own");
  }
  check.That(CloseForGood(program, main) == 0, "the program ends in order");
}

// Texts, lists and boxes of a side window come into the store as they were given, beyond ASCII too; the
// keyboard reaches what the mouse does.
void SetupByKeyboard(Checks& check) {
  RunningProgram program;
  const Window main = program.MainWindow();
  if (!check.That(static_cast<bool>(main), "the main window opens")) return;
  ::SetForegroundWindow(main.handle());
  check.That(Within([&] { return ::GetForegroundWindow() == main.handle(); }), "the window takes the keyboard");

  const Window windows_box = main.Child(L"Button", L"Windows Recycle Bin");
  PressKeys({VK_MENU, 'W'});
  check.That(Within([&] { return windows_box.Visible(); }), "Alt+W turns to the page Windows");
  PressKeys({VK_CONTROL, VK_TAB});
  check.That(Within([&] { return !windows_box.Visible(); }), "Ctrl+Tab turns on");
  PressKeys({VK_CONTROL, VK_SHIFT, VK_TAB});
  check.That(Within([&] { return windows_box.Visible(); }), "Ctrl+Shift+Tab turns back");

  PressKeys({VK_CONTROL, 'S'});
  const Window setup = program.Find(L"QuillbarrowWindow", L"Quillbarrow 2019 - General Setup");
  if (!check.That(static_cast<bool>(setup), "Ctrl+S opens General Setup")) return;
  Window address;
  for (const Window& child : setup.Children()) {
    if (child.ClassName() == L"Edit") address = child;  // the last of them
  }
  const std::wstring text = L"j\u00FCrgen@msn.com";
  ::SendMessageW(address.handle(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
  check.That(setup.Child(L"Button", L"I do not use AOL").Tick(), "a box of the side window can be ticked");
  setup.Child(L"Button", L"Save").Click();
  check.That(Within([&] { return Value(kSettings, L"MSN8Profile") == text; }),
             "the typed text is stored, and not " + Printable(Value(kSettings, L"MSN8Profile")));
  check.That(Value(kSettings, L"NoAOL") == L"1", "the ticked box is stored");
  const DWORD exit_code = CloseForGood(program, main);
  check.That(exit_code == 0, "the program ends in order, not with " + std::to_string(exit_code));
}

// The way out asks first, and while it asks the window behind it cannot be used.
void ExitQuestion(Checks& check) {
  RunningProgram program;
  const Window main = program.MainWindow();
  if (!check.That(static_cast<bool>(main), "the main window opens")) return;
  const std::wstring title = L"Warning!  About to Exit Quillbarrow!";
  for (const WPARAM answer : {IDNO, IDYES}) {
    ::SetForegroundWindow(main.handle());
    check.That(Within([&] { return ::GetForegroundWindow() == main.handle(); }), "the window takes the keyboard");
    PressKeys({VK_CONTROL, 'H'});
    const Window box = program.Find(L"#32770", title);
    if (!check.That(static_cast<bool>(box), "Ctrl+H asks")) return;
    check.That(!main.Enabled(), "the window behind the question is disabled");
    ::PostMessageW(box.handle(), WM_COMMAND, answer, 0);
    if (answer == IDYES) break;
    check.That(Within([&] { return main.Enabled(); }) && program.Runs() && main.Visible(), "No leaves all as it was");
  }
  check.That(program.ExitCode() == 0, "Yes ends the program");
}

struct Test {
  const char* name;
  void (*run)(Checks& check);
};

constexpr Test kTests[] = {
    {"a manual kill", ManualKill}, {"a second start", SecondStart},        {"a start with Windows", StartWithWindows},
    {"every page", EveryPage},     {"setup by keyboard", SetupByKeyboard}, {"the exit question", ExitQuestion},
};

}  // namespace

int RunTests() {
  int passed = 0, failed = 0;
  for (const Test& test : kTests) {
    Checks check;
    test.run(check);
    const bool good = check.failed().empty();
    ++(good ? passed : failed);
    std::printf("%s: %s\n", good ? "passed" : "FAILED", test.name);
    for (const std::string& claim : check.failed()) std::printf("  does not hold: %s\n", claim.c_str());
    std::fflush(stdout);
  }
  std::printf("native: %d passed, %d failed\n", passed, failed);
  return failed == 0 ? 0 : 1;
}

}  // namespace qb::native

int main() {
  return qb::native::RunTests();
}
