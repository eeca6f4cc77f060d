// Windows of other programs, the tray, procedures in front of a window's own, and the random source.
#include "platform/machine/world/tray.h"
#include "tests/platform/machine/machine_test.h"

namespace qb {
namespace {

class WindowsOfMachine : public test::MachineTest {
 protected:
  using Heard = std::vector<std::string>;

  HotKeysAndTray& tray() { return world().platform().hot_keys_and_tray; }
  // A window of the program whose own handling notes what it hears.
  WindowHandle OpenOwn() {
    machine::OwnWindow actions;
    actions.message = [this](std::uint32_t message, std::uint64_t wparam, std::int64_t lparam) {
      Note("own", message, wparam, lparam);
    };
    return world().OwnWindowCreate("Form", "title", actions);
  }
  void Note(const std::string& who, std::uint32_t message, std::uint64_t wparam, std::int64_t lparam) {
    heard_.push_back(who + " " + std::to_string(message) + " " + std::to_string(wparam) + " " + std::to_string(lparam));
  }
  Heard TakeHeard() { return std::exchange(heard_, {}); }

  Heard heard_;
};

TEST_F(WindowsOfMachine, ThousandsKeepTheirHandlesApartFromThoseOfTheProgram) {
  const WindowHandle own = OpenOwn();
  for (int i = 0; i < 2000; ++i) EXPECT_NE(world().WindowOpen("c", "", 0), static_cast<std::uint64_t>(own));
  EXPECT_EQ(world().Windows().size(), 2000u);
  EXPECT_TRUE(world().WindowCloseClass("C"));
  std::vector<WindowHandle> left;
  EXPECT_TRUE(desktop().EnumWindows([&](WindowHandle window) { return left.push_back(window), true; }));
  EXPECT_EQ(left, std::vector{own});
}

TEST_F(WindowsOfMachine, AHotKeyGoesToTheProcedureInFrontWhichMayGoWhileItRuns) {
  const WindowHandle window = OpenOwn();
  EXPECT_EQ(tray().RegisterHotKey(window, 127, 1, 90), Error::Success);
  WindowProcedure before = WindowProcedure::None;
  before =
      tray().SetWindowLongA(window, kIndexWindowProcedure,
                            [&](WindowHandle at, std::uint32_t message, std::uint64_t wparam, std::int64_t lparam) {
                              Note("front", message, wparam, lparam);
                              tray().CallWindowProcA(before, at, message, wparam, lparam);
                              // Gone while it runs, as at a real exit by a hot key.
                              tray().SetWindowLongA(window, kIndexWindowProcedure, before);
                              return 0;
                            });
  EXPECT_NE(before, WindowProcedure::None);
  EXPECT_TRUE(world().HotKey(127));
  EXPECT_EQ(TakeHeard(), (Heard{"front 786 127 5898241", "own 786 127 5898241"}));
  EXPECT_TRUE(world().HotKey(127));
  EXPECT_EQ(TakeHeard(), Heard{"own 786 127 5898241"});
  world().OwnWindowDestroy(window);
  EXPECT_TRUE(world().HotKeys().empty());
}

TEST_F(WindowsOfMachine, TheTrayKnowsOneIconAndItsMouse) {
  const WindowHandle window = OpenOwn();
  NotifyIconData icon;
  icon.window = window;
  icon.id = 1;
  icon.flags = kTrayMessageIconTip;
  icon.callback_message = kMessageMouseMove;
  EXPECT_FALSE(world().TrayMouse(517));
  EXPECT_TRUE(tray().Shell_NotifyIconA(kTrayAdd, icon));
  EXPECT_TRUE(world().TrayMouse(517));
  const std::uint32_t taskbar = tray().RegisterWindowMessageA("TaskbarCreated");
  world().RestartShell();
  EXPECT_FALSE(world().TrayIcon());
  EXPECT_EQ(TakeHeard(), (Heard{"own 512 1 517", "own " + std::to_string(taskbar) + " 0 0"}));
  EXPECT_TRUE(tray().Shell_NotifyIconA(kTrayAdd, icon));
  world().OwnWindowDestroy(window);
  EXPECT_TRUE(world().TrayIcon()) << "who forgets to remove its icon leaves it behind";
  EXPECT_FALSE(world().TrayMouse(513));
  EXPECT_FALSE(world().TrayIcon());
}

TEST_F(WindowsOfMachine, RandomBytesComeFromAnOpenContextAndAreTheSameInEachRehearsal) {
  const auto draw = [this] {
    RandomSource& source = world().platform().random_source;
    EXPECT_FALSE(source.CryptAcquireContextA({}, kEnhancedProvider, kProviderRsaFull, 0).ok()) << "there are no keys";
    auto context = source.CryptAcquireContextA({}, kEnhancedProvider, kProviderRsaFull, kCryptVerifyContext);
    std::string bytes(4096, '\0');
    EXPECT_EQ(source.CryptGenRandom(context.value, bytes), Error::Success);
    EXPECT_EQ(source.CryptReleaseContext(context.value, 0), Error::Success);
    EXPECT_EQ(source.CryptGenRandom(context.value, bytes), Error::InvalidHandle);
    EXPECT_EQ(world().OpenHandles(), 0u);
    return bytes;
  };
  const std::string first = draw(), second = draw();
  EXPECT_NE(first, second);
  // Each of 256 byte values is expected 16 times.
  for (int value = 0; value < 256; ++value) {
    const auto count = std::count(first.begin(), first.end(), static_cast<char>(value));
    EXPECT_TRUE(count > 1 && count < 45) << value << ": " << count;
  }
  Reopen();
  EXPECT_EQ(draw(), first);
}

}  // namespace
}  // namespace qb
