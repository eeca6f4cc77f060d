// Windows, timers, message boxes and the message pump of a machine.
#pragma once

#include <map>

#include "platform/machine/machine_state.h"
#include "platform/machine/machine_system.h"

namespace qb::machine {

class MachineMessages : public Desktop, public HotKeysAndTray, public Pump {
 public:
  // `hooks` are read at each call: whoever plays the machine sets them later.
  MachineMessages(MachineState& state, MachineProcesses& processes, std::function<void()>& on_pump,
                  std::function<bool()>& on_wait)
      : state_(state), processes_(processes), on_pump_(on_pump), on_wait_(on_wait) {}

  WindowHandle FindWindowA(std::optional<std::string_view> class_name, std::optional<std::string_view> title) override;
  WindowHandle GetWindow(WindowHandle window, std::uint32_t relation) override;
  bool ShowWindow(WindowHandle window, std::uint32_t command) override;
  bool OpenIcon(WindowHandle window) override;
  bool SetForegroundWindow(WindowHandle window) override;
  bool SetWindowTextA(WindowHandle window, std::string_view text) override;
  Error PostMessageA(WindowHandle window, std::uint32_t message, std::uint64_t wparam, std::int64_t lparam) override;
  BoxAnswer MessageBoxA(WindowHandle owner, std::string_view text, std::string_view title, std::uint32_t type) override;
  bool SetTimer(WindowHandle window, std::uint32_t id, std::uint32_t interval, std::function<void()> tick) override;
  bool KillTimer(WindowHandle window, std::uint32_t id) override;
  void PumpMessages() override;
  bool WaitMessage() override;

  // The world's side.
  std::uint64_t OpenOther(std::string_view class_name, std::string_view title, std::uint64_t parent);
  bool CloseOther(std::uint64_t handle);
  bool CloseOthers(std::string_view class_name);
  std::vector<OtherWindow> Others() const;
  WindowHandle CreateOwn(std::string_view class_name, std::string_view title, OwnWindow actions);
  void DestroyOwn(WindowHandle window);
  void SetOwnState(WindowHandle window, bool visible, std::string_view title);
  void OwnToFront(WindowHandle window);
  // Closes the windows and timers of programs that have ended.
  void EndAll();
  // Lets the clock run to now + ms, timers firing on the way.
  void Advance(std::uint64_t ms);

 private:
  struct Window {
    OtherWindow about;
    bool own = false;
    OwnWindow actions;
  };
  struct TimerState {
    std::uint64_t interval = 0, started = 0, due = 0;
    std::uint64_t order = 0;
    bool in_handler = false;
    std::function<void()> tick;
  };
  using TimerKey = std::pair<std::uint64_t, std::uint32_t>;
  struct Posted {
    std::uint64_t window = 0;
    std::uint32_t message = 0;
    std::uint64_t wparam = 0;
    std::int64_t lparam = 0;
  };
  Window* Find(std::uint64_t handle);
  void ToFront(std::uint64_t handle);
  bool HandOutPosted();
  void FireTimer(const TimerKey& key);
  // The timer that has been due longest by then.
  std::optional<TimerKey> NextDue(std::uint64_t now) const;

  MachineState& state_;
  MachineProcesses& processes_;
  std::function<void()>& on_pump_;
  std::function<bool()>& on_wait_;
  std::vector<Window> windows_;         // in the order of opening
  std::vector<std::uint64_t> z_order_;  // top first
  std::map<TimerKey, TimerState> timers_;
  std::deque<Posted> posted_;
  std::uint64_t next_other_ = 1;
  std::uint64_t next_own_ = 1001;
  std::uint64_t next_timer_ = 0;
};

}  // namespace qb::machine
