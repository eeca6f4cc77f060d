// The ways in which the program ends, at the message pumps of both kinds of run: nothing happens any more
// after the end, and what was stored agrees with what went.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/rehearsal.h"
#include "tests/support/snapshot.h"
#include "tests/support/tab_traces.h"

namespace qb {
namespace {

using test::Rehearsal;
using test::Snapshot;
using Lines = std::vector<std::string>;

constexpr std::string_view kClasses[] = {"IE_droplist",  "IE_cookies",     "IE_autocomplete",
                                         "WIN_StartRun", "REGWindowsTemp", "MSOfficeRecent"};

// Traces of these classes, each of which counts 1. The helper is at work for some pumps.
std::string Prepare() {
  std::string script = test::ScriptPart("exits");
  for (std::string_view key : kClasses)
    script += "reg add " + test::places::kStore + " " + std::string(key) + " sz 1\n";
  return script;
}

struct RunCase {
  const char* name;
  const char* before;  // from the start to the run
  const char* run;
  std::size_t stride;
};
constexpr RunCase kRuns[] = {
    {"manual",
     "start\ntick chkIE_droplist\ntick chkIE_cookies\ntick chkIE_AutoComplete\nchoose SftTabs1 4\n"
     "tick chkWin_StartRun\ntick chkWin_WindowsTemp\ntick chkWin_MSOfficeRecent\n",
     "click cmdKILLALL\n", 41},
    {"unattended", "start\n", "do Do_Start_Up 3\n", 41},
    // Without a line and its bar; mode 2 does not wait at the end.
    {"stealth", "start\nchoose SftTabs1 6\nclick optStealthOn\n", "do Do_Start_Up 2\n", 1},
};

// The pumps of a run, from 1: all of a run that fills no bar, else the first, the last and some between.
std::vector<std::size_t> PumpsOf(const RunCase& run) {
  auto pumps = [](const std::string& script) -> std::size_t {
    Rehearsal rehearsal;
    rehearsal.Play(script);
    const auto& counts = rehearsal.machine().gate().Counts();
    const auto found = counts.find("PumpMessages");
    return found == counts.end() ? 0 : found->second;
  };
  const std::string before = Prepare() + run.before;
  const std::size_t most = pumps(before + run.run) - pumps(before);
  std::vector<std::size_t> chosen;
  for (std::size_t pump = 1; pump <= most; ++pump) {
    if (pump < 4 || pump + 4 > most || pump % run.stride == 0) chosen.push_back(pump);
  }
  EXPECT_GT(chosen.size(), 20u);
  return chosen;
}

struct Played {
  Lines lines;      // what the script printed
  double gone = 0;  // files, values and entries of the URL cache
  Snapshot after;
};

// `at` are commands for one pump of the run.
Played Play(const RunCase& run, std::size_t pump, std::initializer_list<const char*> at, const char* then) {
  Rehearsal rehearsal;
  rehearsal.Play(Prepare());
  const Snapshot before = test::TakeSnapshot(rehearsal.machine());
  const Lines urls = rehearsal.Play("cache\n");
  std::string script = run.before + std::string("answer yes\n");
  for (const char* command : at) script += "during " + std::to_string(pump) + " " + command + "\n";
  Played played;
  played.lines = rehearsal.Hold(script + run.run + then, run.name + std::to_string(pump));
  const auto urls_after = rehearsal.Play("cache\n");
  played.after = test::TakeSnapshot(rehearsal.machine());
  played.gone = static_cast<double>(urls.size() - urls_after.size());
  for (const auto& [place, content] : before) {
    if (!place.ends_with('\\') && played.after.count(place) == 0) ++played.gone;
  }
  return played;
}

// What may come after the end: what closes what was open.
bool Closes(const std::string& call) {
  constexpr std::string_view kClosing[] = {"CloseHandle(", "RegCloseKey(", "FindClose(", "FindCloseUrlCache("};
  return std::any_of(std::begin(kClosing), std::end(kClosing),
                     [&](std::string_view name) { return call.starts_with(name); });
}

constexpr double kNothingStored = -1;

double Stored(const Played& played) {
  const auto found = played.after.find("HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData\\HistoryRemoved");
  if (found == played.after.end()) return kNothingStored;
  return std::stod(found->second.substr(found->second.find(':') + 1));
}

TEST(Exits, NothingHappensAfterTheEnd) {
  struct Exit {
    const char* name;
    std::initializer_list<const char*> commands;
    bool stores;
  };
  const Exit exits[] = {
      {"menu", {"calls OpenIcon", "do mnuShutDown_Click"}, true},
      {"close request while hidden", {"close frmMain", "calls OpenIcon", "close frmMain"}, true},
      {"session's end while hidden", {"close frmMain", "calls OpenIcon", "reboot"}, true},
      // Nothing is stored: a close request of a window that is shown is no end by itself.
      {"session's end", {"calls OpenIcon", "reboot"}, false},
  };
  for (const RunCase& run : kRuns) {
    for (const std::size_t pump : PumpsOf(run)) {
      for (const Exit& exit : exits) {
        const std::string what = std::string(run.name) + ", " + exit.name + " at pump " + std::to_string(pump);
        const Played played = Play(run, pump, exit.commands, "expect running is no\ncalls\n");
        // The end is where the timers stop.
        const auto end = std::find_if(played.lines.rbegin(), played.lines.rend(),
                                      [](const std::string& call) { return call.starts_with("KillTimer("); });
        ASSERT_NE(end, played.lines.rend()) << what;
        for (auto call = end.base(); call != played.lines.end(); ++call) ASSERT_TRUE(Closes(*call)) << what << *call;
        ASSERT_EQ(Stored(played), exit.stores ? played.gone : kNothingStored) << what;
      }
    }
  }
}

TEST(Exits, ASecondCopyGoesAndTheRunOfTheFirstDoesNot) {
  for (const RunCase& run : kRuns) {
    const Played undisturbed = Play(run, 1, {}, "do mnuShutDown_Click\n");
    ASSERT_EQ(Stored(undisturbed), undisturbed.gone) << run.name;
    for (const std::size_t pump : PumpsOf(run)) {
      // The first close request after it only hides, and so the real end takes one more.
      const Played played = Play(run, pump, {"start-again"},
                                 "expect setting CloseQB is 1\nexpect running is yes\nclose frmMain\n"
                                 "expect setting CloseQB is 0\nexpect running is yes\nclose frmMain\n"
                                 "expect running is no\n");
      ASSERT_EQ(played.gone, undisturbed.gone) << run.name << " at pump " << pump;
      ASSERT_EQ(Stored(played), played.gone) << run.name << " at pump " << pump;
    }
  }
}

}  // namespace
}  // namespace qb
