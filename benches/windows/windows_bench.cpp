// Benches that need Windows, by name: prints lines of the form that benches/ratio.h has, and the figures of
// single runs. benches/windows/run.sh plays them in a throwaway prefix.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "computer.h"
#include "remote_program.h"
#include "stories.h"

// After the basic types of windows.h.
#include <psapi.h>

#include "delete/delete_path.h"
#include "platform/win32/win32_platform.h"

// What the shared parts of the stories tell: a bench is no figure if it does not hold.
void native::Check(bool held, const std::string& what) {
  if (held) return;
  std::fprintf(stderr, "this does not hold: %s\n", what.c_str());
  std::exit(1);
}

namespace {

using namespace native;
using Clock = std::chrono::steady_clock;

constexpr int kRounds = 5, kStarts = 15;
constexpr const char* kStore = "Software\\VB and VBA Program Settings\\Temp\\SystemData";
const std::string kOurs = "\"C:\\Program Files\\Quillbarrow\\Quillbarrow.exe\"";
const std::string kNotepad = "C:\\windows\\system32\\notepad.exe";

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

void Line(const char* name, double ours, const char* other_name, double other, const char* unit, double goal) {
  const double ratio = ours / other;
  std::printf(ratio < 1 ? "%s: ours %.2f %s, %s %.2f %s, ratio %.3g" : "%s: ours %.2f %s, %s %.2f %s, ratio %.2f", name,
              ours, unit, other_name, other, unit, ratio);
  if (goal != 0) std::printf(" (goal %.2f%s)", goal, ratio > goal ? ", missed" : "");
  std::printf("\n");
  std::fflush(stdout);
}

// --- programs ---

struct Seen {
  DWORD process;
  bool shown;
};

BOOL CALLBACK LookForShown(HWND window, LPARAM parameter) {
  auto& seen = *reinterpret_cast<Seen*>(parameter);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  seen.shown = seen.shown || (process == seen.process && IsWindowVisible(window) && GetWindowTextLengthW(window) > 0);
  return !seen.shown;
}

struct Started {
  double seconds = 0;     // to a shown window
  double peak_bytes = 0;  // of its working set, a while later
};

Started Start(const std::string& program) {
  std::string command = program;
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  const auto start = Clock::now();
  if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
    std::printf("%s does not start\n", program.c_str());
    return {};
  }
  Seen seen{process.dwProcessId, false};
  while (!seen.shown && SecondsSince(start) < 60) {
    EnumWindows(LookForShown, reinterpret_cast<LPARAM>(&seen));
    if (!seen.shown) Sleep(1);
  }
  Started started{SecondsSince(start), 0};
  WaitForInputIdle(process.hProcess, 5000);
  Sleep(500);
  PROCESS_MEMORY_COUNTERS memory{};
  if (GetProcessMemoryInfo(process.hProcess, &memory, sizeof memory)) {
    started.peak_bytes = static_cast<double>(memory.PeakWorkingSetSize);
  }
  TerminateProcess(process.hProcess, 0);
  WaitForSingleObject(process.hProcess, 5000);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return started;
}

void WarmStart() {
  std::vector<double> our_times, other_times, our_memory, other_memory;
  Start(kNotepad);
  Start(kOurs);
  for (int round = 0; round < kStarts; ++round) {
    const Started other = Start(kNotepad), ours = Start(kOurs);
    our_times.push_back(ours.seconds * 1000);
    other_times.push_back(other.seconds * 1000);
    our_memory.push_back(ours.peak_bytes / (1 << 20));
    other_memory.push_back(other.peak_bytes / (1 << 20));
  }
  Line("start to a shown window, warm", Median(our_times), "notepad", Median(other_times), "ms", 1.5);
  Line("peak memory of the exe", Median(our_memory), "notepad", Median(other_memory), "MiB", 1.0);
}

// --- processor time ---

// Wine tells no processor time of another process (it gives the asker's own), so the host takes it, between two lines.
void Rest(int milliseconds) {
  std::puts("begin");
  std::fflush(stdout);
  Sleep(static_cast<DWORD>(milliseconds));
  std::puts("end");
  std::fflush(stdout);
  constexpr DWORD kToRead = 1000;
  Sleep(kToRead);
}

void Hidden() {
  const char* seconds = std::getenv("QUILLBARROW_HIDDEN_SECONDS");
  SetValue(kStore, "QBBuild", "1");
  SetValue(kStore, "AK_WinStart", "0");
  RemoteProgram program("/STARTUP");
  program.MainWindow();
  Sleep(5000);
  Rest(std::atoi(seconds == nullptr ? "600" : seconds) * 1000);
}

// A helper that the program finds and waits for is this program, under its name.
constexpr int kHelperSeconds = 8;
constexpr const char* kHelperBegan = "C:\\helper-began.txt";

void HelperWait() {
  SetValue(kStore, "QBBuild", "1");
  CopyFileA("C:\\windows_bench.exe", "C:\\Program Files\\Quillbarrow\\Ashbrine.exe", FALSE);
  for (int round = 0; round < kRounds; ++round) {
    DeleteFileA(kHelperBegan);
    RemoteProgram program;
    Check(program.Tick(0, {"Temp Internet Files"}), "the class with a helper is ticked");
    HWND window = program.MainWindow();
    RemoteProgram::PostClick(window, "Kill Now!");
    Check(WaitFor([] { return Exists(kHelperBegan); }), "the helper is started");
    Sleep(500);
    Rest((kHelperSeconds - 4) * 1000);
    HWND list = RemoteProgram::Child(window, "ListBox", "");
    Check(RemoteProgram::ListEntries(list).back().find("Successful!") == std::string::npos,
          "the run waits for the helper");
    Check(program.RunEnded(), "and goes on after it");
  }
  DeleteFileA("C:\\Program Files\\Quillbarrow\\Ashbrine.exe");
}

// A run at the start of Windows shows itself, and pauses for two seconds before it hides again.
void Pause() {
  SetValue(kStore, "QBBuild", "1");
  SetValue(kStore, "AK_WinStart", "1");
  SetValue(kStore, "WIN_StartRun", "1");
  for (int round = 0; round < kRounds; ++round) {
    RemoteProgram program("/STARTUP");
    HWND window = program.MainWindow();
    WaitFor([&] {
      const auto lines = RemoteProgram::ListEntries(RemoteProgram::Child(window, "ListBox", ""));
      return !lines.empty() && lines.back().find("Successful!") != std::string::npos;
    });
    Rest(1000);
  }
  SetValue(kStore, "AK_WinStart", "0");
}

// --- deleting ---

class NoProgress : public qb::Progress {
 public:
  int Max() const override { return 1; }
  void SetMax(int) override {}
  void SetValue(int) override {}
  void Refresh() override {}
  qb::WindowHandle Owner() const override { return qb::WindowHandle::None; }
};

// The trees C:\trees\ours0 and C:\trees\del0 and so on are there.
void Wipe() {
  std::vector<double> our_times, other_times;
  qb::win32::Win32Platform windows;
  for (int round = 0; round < kRounds; ++round) {
    const std::string number = std::to_string(round);
    std::string command = "cmd /c del /s /q C:\\trees\\del" + number + "\\*";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    auto start = Clock::now();
    CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr, &startup,
                   &process);
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    other_times.push_back(SecondsSince(start));

    start = Clock::now();
    qb::Platform& platform = windows.platform();
    qb::Channels channels(platform.files, platform.system);
    qb::TraceCounter removed;
    NoProgress progress;
    const qb::Lifetime life;
    qb::DeletePath path(platform, channels, removed, progress, life);
    path.Wipe_Folder_Files("C:\\trees\\ours" + number);
    our_times.push_back(SecondsSince(start));
  }
  for (const char* tree : {"C:\\trees\\ours0\\0", "C:\\trees\\del0\\0"}) {
    if (!FilesIn(tree).empty()) std::printf("%s is not empty\n", tree);
  }
  Line("quick wipe of 20,000 files of 8 KiB in 400 folders, Wine", Median(our_times), "cmd /c del /s /q",
       Median(other_times), "s", 0);
}

}  // namespace

// `windows_bench NAME`; "first ours" and "first notepad" print the seconds from before this process until that program
// has shown its window.
int main(int count, char** arguments) {
  const std::string name = count > 1 ? arguments[1] : "", what = count > 2 ? arguments[2] : "";
  if (name == "-t") {  // called as the helper that clears Internet Explorer's cache
    MakeFile(kHelperBegan, "");
    Sleep(kHelperSeconds * 1000);
    return 0;
  }
  if (name == "first") {
    const char* before = std::getenv("BENCH_BEGAN");
    const std::chrono::milliseconds began(std::strtoll(before != nullptr ? before : "0", nullptr, 10));
    const std::chrono::duration<double> session = std::chrono::system_clock::now().time_since_epoch() - began;
    std::printf("%.3f\n", session.count() + Start(what == "ours" ? kOurs : kNotepad).seconds);
    return 0;
  }
  const struct {
    const char* name;
    void (*run)();
  } benches[] = {{"start", WarmStart}, {"hidden", Hidden}, {"pause", Pause}, {"helper", HelperWait}, {"wipe", Wipe}};
  for (const auto& bench : benches) {
    if (name == bench.name) bench.run();
  }
  return 0;
}
