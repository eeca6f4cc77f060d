// The message pump of a machine, and its timers.
#include "platform/machine/operation.h"
#include "platform/machine/operations/operations.h"

namespace qb::machine {
namespace {

class MachinePump final : public Pump {
 public:
  MachinePump(MachineState& state, std::function<void()>& on_pump, std::function<bool()>& on_wait)
      : state_(state), on_pump_(on_pump), on_wait_(on_wait) {}

  Error PostMessageA(WindowHandle window, std::uint32_t message, std::uint64_t wparam, std::int64_t lparam) override {
    return gate_.Call<"PostMessageA">(window, message, wparam, lparam).ReturnsBool([&] {
      if (window == WindowHandle::None) return Error::Success;  // to the thread, where nobody hears it
      return state_.windows.Post(Plain(window), message, wparam, lparam) ? Error::Success : Error::InvalidWindow;
    });
  }

  bool SetTimer(WindowHandle window, std::uint32_t id, std::uint32_t interval, std::function<void()> tick) override {
    return gate_.Call<"SetTimer">(window, id, interval, kNull)
        .ReturnsAs(
            [&] {
              if (interval != 0) state_.timers.Set({Plain(window), id}, interval, state_.clock_ms, std::move(tick));
              return interval != 0;
            },
            [id](bool set) { return set ? id : 0; });
  }

  bool KillTimer(WindowHandle window, std::uint32_t id) override {
    // Who kills a timer may go at once: its tick must not come any more, whatever the gate says.
    const bool killed = state_.timers.Kill({Plain(window), id});
    return gate_.Call<"KillTimer">(window, id).ReturnsBool([killed] { return killed; });
  }

  void PumpMessages() override {
    if (!gate_.Powered()) return;
    // Time goes on although the call may fail, or whoever pumps until a time is reached would never end.
    state_.MoveClock(1);
    state_.outside.Pumped();
    if (!Ok(gate_.Enter(kOperationNumber<"PumpMessages">))) return;
    if (on_pump_) on_pump_();
    // What is posted meanwhile waits for the next round, or a message that posts itself again would never end.
    for (std::size_t waiting = state_.windows.Waiting(); waiting > 0 && gate_.Powered(); --waiting) {
      state_.windows.HandOutPosted();
    }
    // Those that are due now, each at most once.
    for (const Timers::Key& key : state_.timers.Due(state_.clock_ms)) {
      if (gate_.Powered() && state_.timers.Has(key)) state_.timers.Fire(key, state_.clock_ms);
    }
  }

  // On a machine time stands still between two rounds: a rest is as good as none.
  void RestAndPumpMessages() override { PumpMessages(); }

  bool WaitMessage() override {
    if (!gate_.Powered()) return false;
    if (!Ok(gate_.Enter(kOperationNumber<"WaitMessage">))) return on_wait_ && on_wait_();
    if (state_.windows.HandOutPosted()) return true;
    return on_wait_ && on_wait_() && gate_.Powered();
  }

 private:
  MachineState& state_;
  Gate& gate_ = state_.gate;
  std::function<void()>& on_pump_;
  std::function<bool()>& on_wait_;
};

}  // namespace

std::unique_ptr<Pump> MakePump(MachineState& state, std::function<void()>& on_pump, std::function<bool()>& on_wait) {
  return std::make_unique<MachinePump>(state, on_pump, on_wait);
}

}  // namespace qb::machine
