// What comes while a message box stands: the box is answered all the same, and under a program that has ended the
// answer changes nothing any more.
#include <gtest/gtest.h>

#include <utility>

#include "tests/support/resident_program.h"

namespace qb {
namespace {

constexpr const char* kStore = "HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData";

// What the user clicks to get a box, and what is stored by an answer of Yes and of No.
struct Asker {
  std::string_view control;
  std::string_view setting, yes, no;
  int ticked;  // the box before the click
};
constexpr Asker kAskers[] = {
    {"mnuShutDown", "", "", "", 0},
    {"cmdKILLALL", "", "", "", 0},
    {"chkAK_LastWinClosed", "AutoRun", "0", "1", 1},
    {"chkAK_WinStart", "AK_WinStart", "0", "1", 1},
    {"chk_HideIcon", "HideIcon", "1", "0", 0},
    {"chk_DoNotAutoKill", "AutoRun", "0", "1", 0},
};

enum class Event { WatcherTick, IntervalTick, HotKey, TrayClick, Close, End };
constexpr Event kEvents[] = {Event::WatcherTick, Event::IntervalTick, Event::HotKey,
                             Event::TrayClick,   Event::Close,        Event::End};

void Happen(Event event, machine::Machine& machine, Program& program) {
  switch (event) {
    case Event::WatcherTick:
      machine.WindowCloseClass("IEFrame");
      program.resident().auto_kill.Timer1_Timer();
      break;
    case Event::IntervalTick:
      for (int minute = 0; minute < 15; ++minute) program.resident().auto_kill.Timer_AutoKill_Timer();
      break;
    case Event::HotKey:
      EXPECT_TRUE(machine.HotKey(143));
      break;
    case Event::TrayClick:
      EXPECT_TRUE(machine.TrayMouse(513));
      break;
    case Event::Close:
      EXPECT_FALSE(program.main_window().Unload());
      break;
    case Event::End:
      EXPECT_TRUE(machine.Chord(1, 32));
      StepOver(program.main_window().Unload());
      EXPECT_TRUE(program.main_window().Unload());
      break;
  }
}

std::string Stored(machine::Machine& machine) {
  std::string all;
  const auto key = machine.ReadKey(kStore);
  for (const machine::RegistryValue& value : key ? key->values : std::vector<machine::RegistryValue>()) {
    all += value.name + "=" + value.data + "\n";
  }
  return all;
}

void Check(const Asker& asker, Event event, bool yes) {
  test::ResidentProgram resident;
  machine::Machine& machine = resident.machine();
  Program& program = resident.program();
  machine.RegistrySetValue(kStore, {"WIN_StartRun", 1, "1"});
  const std::uint64_t browser = machine.WindowOpen("IEFrame", "News", 0);
  machine.WindowOpen("MSN6 Window", "Page", 0);
  program.resident().auto_kill.Timer1_Timer();
  machine.AddAnswers({yes ? "yes" : "no", yes ? "yes" : "no"});
  std::string stored_at_end;
  bool stood = false;  // an answer may bring a second box
  machine.on_box = [&] {
    if (std::exchange(stood, true)) return;
    Happen(event, machine, program);
    stored_at_end = Stored(machine);
  };
  Control* control = program.main_window().Find(asker.control);
  EXPECT_EQ(control->Property("Value").value_or("0"), std::to_string(asker.ticked)) << asker.control;
  control->UserMouseDown();
  control->UserClick();

  EXPECT_TRUE(stood) << "no box";
  for (const machine::OtherWindow& window : machine.Windows()) EXPECT_TRUE(window.shown);
  StepOver(machine.WindowClose(browser));
  const bool ends = event == Event::End || (asker.control == "mnuShutDown" && yes);
  EXPECT_EQ(program.Ended(), ends);
  EXPECT_EQ(machine.HotKeys().size(), ends ? 0U : 6U);
  const RunState& run = program.services().run;
  if (ends) {
    EXPECT_FALSE(machine.TrayIcon());
    if (event == Event::End) {
      EXPECT_EQ(Stored(machine), stored_at_end);
    }
    return;
  }
  EXPECT_EQ(machine.TrayIcon(), asker.control != "chk_HideIcon" || !yes);
  EXPECT_FALSE(run.UnattendedRun);
  EXPECT_FALSE(run.ManualRun);
  EXPECT_EQ(program.main_window().Find("cmdKILLALL")->Property("Enabled"), "true");
  EXPECT_EQ(run.MainWindowHidden, event == Event::WatcherTick || event == Event::Close);
  EXPECT_EQ(program.resident().auto_kill.HoldCount(), event == Event::WatcherTick ? 1 : 0);
  EXPECT_EQ(program.main_window().interval().Minutes(), 15);
  if (!asker.setting.empty()) {
    const std::string line = std::string(asker.setting) + "=" + std::string(yes ? asker.yes : asker.no) + "\n";
    EXPECT_NE(Stored(machine).find(line), std::string::npos) << line << "of\n" << Stored(machine);
  }
}

TEST(Reentry, ABoxIsAnsweredWhateverCameUnderIt) {
  for (const Asker& asker : kAskers) {
    for (Event event : kEvents) {
      for (bool yes : {false, true}) {
        SCOPED_TRACE(std::string(asker.control) + ", event " + std::to_string(static_cast<int>(event)) +
                     (yes ? ", yes" : ", no"));
        Check(asker, event, yes);
      }
    }
  }
}

}  // namespace
}  // namespace qb
