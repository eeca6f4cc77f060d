// Hot keys, the tray, window procedures and the cursor on a machine.
#include "platform/machine/operation.h"
#include "platform/machine/operations/operations.h"

namespace qb::machine {
namespace {

constexpr auto kProgramIcon = static_cast<IconHandle>(1);

WindowProcedure AsProcedure(std::uint64_t procedure) {
  return static_cast<WindowProcedure>(procedure);
}

class MachineHotKeysAndTray final : public HotKeysAndTray {
 public:
  explicit MachineHotKeysAndTray(MachineState& state) : state_(state) {}

  Error RegisterHotKey(WindowHandle window, std::int32_t id, std::uint32_t modifiers, std::uint32_t key) override {
    return gate_.Call<"RegisterHotKey">(window, id, modifiers, key).ReturnsBool([&] {
      if (!state_.windows.IsOwn(Plain(window))) return Error::InvalidWindow;
      return state_.hot_keys.Grant(Plain(window), {id, modifiers, key}) ? Error::Success : Error::HotKeyTaken;
    });
  }

  Error UnregisterHotKey(WindowHandle window, std::int32_t id) override {
    return gate_.Call<"UnregisterHotKey">(window, id).ReturnsBool([&] {
      if (!state_.windows.IsOwn(Plain(window))) return Error::InvalidWindow;
      return state_.hot_keys.Release(Plain(window), id) ? Error::Success : Error::HotKeyUnknown;
    });
  }

  bool Shell_NotifyIconA(std::uint32_t message, const NotifyIconData& data) override {
    return gate_.Call<"Shell_NotifyIconA">(message, kStructure).ReturnsBool([&] {
      if (data.size != kTrayRecordSize) return false;
      if (message == kTrayDelete) return state_.tray.Delete(data);
      if (!state_.windows.IsOwn(Plain(data.window))) return false;
      if (message == kTrayModify) return state_.tray.Modify(data);
      return message == kTrayAdd && state_.tray.Add(data);
    });
  }

  std::uint32_t RegisterWindowMessageA(std::string_view name) override {
    return gate_.Call<"RegisterWindowMessageA">(name).ReturnsValue([&] {
      std::vector<std::string>& names = state_.shared_messages;
      auto found = std::find_if(names.begin(), names.end(),
                                [&](const std::string& there) { return FoldName(there) == FoldName(name); });
      if (found == names.end()) found = names.insert(found, std::string(name));
      return kFirstSharedMessage + static_cast<std::uint32_t>(found - names.begin());
    });
  }

  IconHandle GetClassLongPtrA(WindowHandle window, std::int32_t index) override {
    return gate_.Call<"GetClassLongPtrA">(window, index).ReturnsValue([&] {
      return state_.windows.IsOwn(Plain(window)) && index == kIndexClassSmallIcon ? kProgramIcon : IconHandle::None;
    });
  }

  WindowProcedure SetWindowLongA(WindowHandle window, std::int32_t index, WindowFunction procedure) override {
    return gate_.Call<"SetWindowLongA">(window, index, kStructure).ReturnsValue([&] {
      return AsProcedure(
          index == kIndexWindowProcedure ? state_.windows.SetProcedure(Plain(window), std::move(procedure)) : 0);
    });
  }

  WindowProcedure SetWindowLongA(WindowHandle window, std::int32_t index, WindowProcedure procedure) override {
    return gate_.Call<"SetWindowLongA">(window, index, procedure).ReturnsValue([&] {
      return AsProcedure(index == kIndexWindowProcedure ? state_.windows.SetProcedure(Plain(window), Plain(procedure))
                                                        : 0);
    });
  }

  std::int64_t CallWindowProcA(WindowProcedure procedure, WindowHandle window, std::uint32_t message,
                               std::uint64_t wparam, std::int64_t lparam) override {
    return gate_.Call<"CallWindowProcA">(procedure, window, message, wparam, lparam).ReturnsValue([&] {
      return state_.windows.CallProcedure(Plain(procedure), Plain(window), message, wparam, lparam);
    });
  }

  CursorHandle LoadCursorA(std::uint32_t number) override {
    return gate_.Call<"LoadCursorA">(kNull, number).ReturnsValue([&] {
      constexpr std::uint32_t kFirst = 32512, kLast = 32651;  // IDC_ARROW, IDC_HELP
      return static_cast<CursorHandle>(number >= kFirst && number <= kLast ? number : 0);
    });
  }

  CursorHandle SetCursor(CursorHandle cursor) override {
    return gate_.Call<"SetCursor">(cursor).ReturnsValue([&] { return std::exchange(cursor_, cursor); });
  }

 private:
  MachineState& state_;
  Gate& gate_ = state_.gate;
  CursorHandle cursor_ = CursorHandle::None;
};

}  // namespace

std::unique_ptr<HotKeysAndTray> MakeHotKeysAndTray(MachineState& state) {
  return std::make_unique<MachineHotKeysAndTray>(state);
}

}  // namespace qb::machine
