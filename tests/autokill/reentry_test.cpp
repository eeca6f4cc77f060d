// What comes in the middle of a run or while a modal window stands: the state afterwards is what the rules give, at
// whatever pump it came.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/rehearsal.h"

namespace qb {
namespace {

struct Story {
  std::string_view name, command;
  bool unattended;
  std::string_view modal;  // the window that the command opens and leaves open; none: a run
};
// Each run pumps more than 1,000 times; the unattended one spends the last 2,000 in its closing pause.
constexpr Story kRuns[] = {{"manual run", "click cmdKILLALL", false, ""},
                           {"unattended run", "do runAutoKill_AutoRun", true, ""}};
constexpr Story kModalWindows[] = {{"modal wizard", "click autoKillsetup", false, "frmAutoKill"},
                                   {"modal General Setup", "do Get_MSN8_Profile", false, "frmOptions"}};

struct Event {
  std::string_view name;
  std::vector<std::string> commands;
  bool ends;         // the program, really
  bool hides;        // the window of a manual run
  int further_runs;  // that it starts and that come to their end
};

const std::vector<Event>& Events() {
  static const std::vector<Event> events = {
      {"watcher tick", {"window close IEFrame", "do Timer1_Timer"}, false, true, 1},
      {"hot key", {"hotkey 143"}, false, false, 1},
      {"interval tick", std::vector<std::string>(15, "do Timer_AutoKill_Timer"), false, false, 1},
      {"tray click", {"tray 513"}, false, false, 0},
      {"tray menu", {"tray 517", "click PopUp_RunAutoKill"}, false, false, 1},
      {"Boss Key", {"chord 1 32", "chord 1 32"}, false, false, 0},
      {"close", {"close frmMain"}, false, true, 0},
      {"end", {"chord 1 32", "close frmMain", "close frmMain"}, true, true, 0},
      {"confirmed end", {"answer yes", "do popShutdownHK_Click"}, true, true, 0},
  };
  return events;
}

// The event comes at that pump of a run, or inside the modal window.
void Check(const Story& story, const Event& event, int pump) {
  const std::string modal(story.modal);
  std::string script = "reg add HKCU\\Software\\Microsoft\\MSN6 LastRunFrom sz C:\\MSN\n";
  for (const char* value : {"QBBuild", "WIN_StartRun", "WIN_RecentDoc"}) {
    script +=
        "reg add \"HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData\" " + std::string(value) + " sz 1\n";
  }
  script +=
      "start\nchoose SftTabs1 4\ntick chkWin_All\nchoose SftTabs1 0\ntick chkIE_all\n"
      "window open IEFrame Page\nadvance 1s\n";
  // Those that are due in the same round come in this order.
  const std::string moment = modal.empty() ? "during " + std::to_string(pump) + " " : "";
  std::string events;
  for (const std::string& command : event.commands) events += moment + command + "\n";
  const std::string begin = "window open \"MSN6 Window\" Page\n" + std::string(story.command) + "\n";
  script += modal.empty() ? events + begin : begin + "expect forms has \"" + modal + " visible\"\n" + events;
  if (!modal.empty() && !event.ends) {
    script += "expect forms has \"" + modal + " visible\"\nclose " + modal + "\nexpect forms lacks " + modal + "\n";
  }
  if (event.ends) {
    script +=
        "expect running is no\nexpect hotkeys is\nexpect tray is \"no icon\"\nexpect windows lacks hidden\n"
        "expect timers is\nstart\nexpect hotkeys has \"95 8 90\"\n";
  } else {
    const std::string hidden = story.unattended || event.hides ? "true" : "false";
    script +=
        "expect get ManualRun is false\nexpect get UnattendedRun is false\nexpect get cmdKILLALL.Enabled is true\n"
        "expect get MainWindowHidden is " +
        hidden +
        "\nexpect tray is icon\nexpect windows lacks hidden\n"
        "expect hotkeys has \"143 3 32\"\nexpect timers has \"Timer1 1000 on\" \"Timer_AutoKill 60000 off\"\n";
  }
  script += "log\n";
  test::Rehearsal rehearsal;
  const std::string where =
      std::string(event.name) + " at pump " + std::to_string(pump) + " of a " + std::string(story.name);
  const std::vector<std::string> lines = rehearsal.Hold(script, where);
  if (event.ends) return;
  EXPECT_EQ(std::count(lines.begin(), lines.end(), " - Successful!  Your privacy is protected."),
            (modal.empty() ? 1 : 0) + event.further_runs)
      << where;
}

TEST(Reentry, LeavesTheStateOfTheRules) {
  for (const Event& event : Events()) {
    for (const Story& run : kRuns) {
      for (int pump : {1, 100, 1000}) Check(run, event, pump);
    }
    for (const Story& window : kModalWindows) Check(window, event, 0);
  }
}

}  // namespace
}  // namespace qb
