// The clock and the timers of a machine, and the end of it.
#include "tests/platform/machine/machine_test.h"

namespace qb::test {
namespace {

using TimeOfMachine = MachineTest;
using Ticks = std::vector<std::string>;

class Timers : public MachineTest {
 protected:
  void Start(std::uint32_t id, const std::string& name, std::uint32_t interval,
             const std::function<void()>& also = {}) {
    ASSERT_TRUE(pump().SetTimer(WindowHandle::None, id, interval, [this, name, also] {
      ticks_.push_back(name + std::to_string(world().ClockMs() - begun_));
      if (also) also();
    }));
  }
  void SetUp() override {
    MachineTest::SetUp();
    begun_ = world().ClockMs();
  }
  Ticks ticks_;
  std::uint64_t begun_ = 0;
};

TEST_F(Timers, FireInTheOrderThatTheyFallDue) {
  Start(1, "a", 1000);
  Start(2, "b", 400);
  world().Advance(2000);
  EXPECT_EQ(ticks_, (Ticks{"b400", "b800", "a1000", "b1200", "b1600", "a2000", "b2000"}));
  EXPECT_EQ(world().ClockMs() - begun_, 2000u);
}

TEST_F(Timers, DropTheTickThatIsDueInTheirOwnHandler) {
  bool nested = false;
  Start(1, "a", 1000, [&] {
    if (std::exchange(nested, true)) return;
    for (int i = 0; i < 1500; ++i) pump().PumpMessages();
  });
  Start(2, "b", 700);
  world().Advance(4000);
  EXPECT_EQ(ticks_, (Ticks{"b700", "a1000", "b1400", "b2100", "b2800", "a3000", "b3500", "a4000"}));
  EXPECT_EQ(world().ClockMs() - begun_, 4000u);
}

TEST_F(Timers, KilledByAnotherHandlerFireNoMore) {
  Start(1, "a", 500, [this] { StepOver(pump().KillTimer(WindowHandle::None, 2)); });
  Start(2, "b", 500);
  Start(3, "c", 500, [this] { StepOver(pump().KillTimer(WindowHandle::None, 3)); });
  world().Advance(1000);
  EXPECT_EQ(ticks_, (Ticks{"a500", "c500", "a1000"}));
}

TEST_F(Timers, APumpMovesTheClockThenAsksThenHandsOut) {
  Start(1, "t", 2);
  Ticks order;
  machine::OwnWindow actions;
  actions.message = [&](std::uint32_t message, std::uint64_t, std::int64_t) {
    order.push_back("message " + std::to_string(message));
  };
  const WindowHandle window = world().OwnWindowCreate("Form", "title", actions);
  world().on_pump = [&] { order.push_back("pump " + std::to_string(world().ClockMs() - begun_)); };
  EXPECT_EQ(pump().PostMessageA(window, kMessageClose, 0, 0), Error::Success);
  EXPECT_TRUE(order.empty()) << "a posted message waits for the pump";
  pump().PumpMessages();
  pump().PumpMessages();
  EXPECT_EQ(order, (Ticks{"pump 1", "message 16", "pump 2"}));
  EXPECT_EQ(ticks_, Ticks{"t2"});
  EXPECT_TRUE(world().gate().TakeCalls().size() <= 2u) << "rounds of the pump are not recorded";
  EXPECT_FALSE(pump().WaitMessage()) << "nothing can happen any more";
  int waits = 0;
  world().on_wait = [&] { return ++waits < 3; };
  EXPECT_TRUE(pump().WaitMessage());
  StepOver(pump().PostMessageA(window, kMessageClose, 0, 0));
  EXPECT_TRUE(pump().WaitMessage());
  EXPECT_EQ(order.back(), "message 16");
  world().OwnWindowDestroy(window);
  EXPECT_NE(pump().PostMessageA(window, kMessageClose, 0, 0), Error::Success);
}

TEST_F(TimeOfMachine, WithoutPowerNothingChangesAndEveryLoopEnds) {
  ASSERT_TRUE(world().MakeFile("C:\\f.txt", "kept"));
  const auto file = files().CreateFileA("C:\\f.txt", kGenericRead | kGenericWrite, kShareRead, kOpenExisting, 0);
  ASSERT_TRUE(file.ok());
  int ticks = 0;
  ASSERT_TRUE(pump().SetTimer(WindowHandle::None, 1, 1, [&] { ++ticks; }));
  world().on_wait = [] { return true; };
  world().gate().PowerOff();
  EXPECT_FALSE(files().WriteFile(file.value, "lost").ok());
  EXPECT_NE(files().SetEndOfFile(file.value), Error::Success);
  EXPECT_NE(files().DeleteFileA("C:\\f.txt"), Error::Success);
  EXPECT_NE(files().MoveFileExA("C:\\f.txt", "C:\\g.txt", 0), Error::Success);
  EXPECT_NE(files().CreateDirectoryA("C:\\new"), Error::Success);
  EXPECT_FALSE(files().CreateFileA("C:\\new.txt", kGenericWrite, 0, kCreateAlways, 0).ok());
  EXPECT_FALSE(registry().RegCreateKeyA(KeyHandle::CurrentUser, "New").ok());
  EXPECT_NE(registry().RegSetValueExA(KeyHandle::CurrentUser, "v", kRegSz, "x"), Error::Success);
  EXPECT_NE(world().platform().shell.SHEmptyRecycleBinA(WindowHandle::None, std::nullopt, 7), 0u);
  EXPECT_FALSE(pump().WaitMessage());
  EXPECT_NE(desktop().MessageBoxA(WindowHandle::None, "?", "T", kBoxYesNo), BoxAnswer::Yes);
  EXPECT_FALSE(world().platform().processes.GetExitCodeProcess(ProcessHandle{1}).ok());
  // A program that waits for an hour to pass, or for a tick, comes to its end.
  auto& system = world().platform().system;
  const std::uint64_t before = system.GetTickCount();
  EXPECT_GE(system.GetTickCount() - before, 3600000u);
  pump().PumpMessages();
  EXPECT_EQ(ticks, 0);
  EXPECT_EQ(HostRead(HostFolder() / "drives" / "C" / "f.txt"), "kept");
  Reopen();
  EXPECT_EQ(world().Exists("C:\\new"), "no");
  EXPECT_FALSE(world().ReadKey("HKCU\\New").has_value());
}

}  // namespace
}  // namespace qb::test
