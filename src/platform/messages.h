// Windows of this and other programs, timers, message boxes and the message pump.
#pragma once

#include <functional>
#include <optional>

#include "platform/types.h"

namespace qb {

// Commands of ShowWindow.
inline constexpr std::uint32_t kShowHide = 0;
inline constexpr std::uint32_t kShowNormal = 1;
// Relation of GetWindow: the window above in z-order.
inline constexpr std::uint32_t kWindowPrevious = 3;
inline constexpr std::uint32_t kMessageClose = 0x10;  // WM_CLOSE

// Bits of MessageBoxA and its answers.
inline constexpr std::uint32_t kBoxOk = 0x0;
inline constexpr std::uint32_t kBoxYesNo = 0x4;
inline constexpr std::uint32_t kBoxStop = 0x10;
inline constexpr std::uint32_t kBoxQuestion = 0x20;
inline constexpr std::uint32_t kBoxInformation = 0x40;
enum class BoxAnswer : std::uint32_t { None = 0, Ok = 1, Cancel = 2, Yes = 6, No = 7 };

class Messages {
 public:
  virtual ~Messages() = default;

  virtual WindowHandle FindWindowA(std::optional<std::string_view> class_name,
                                   std::optional<std::string_view> title) = 0;
  virtual WindowHandle GetWindow(WindowHandle window, std::uint32_t relation) = 0;
  // True if the window was visible before.
  virtual bool ShowWindow(WindowHandle window, std::uint32_t command) = 0;
  virtual bool OpenIcon(WindowHandle window) = 0;
  virtual bool SetForegroundWindow(WindowHandle window) = 0;
  virtual bool SetWindowTextA(WindowHandle window, std::string_view text) = 0;
  virtual Error PostMessageA(WindowHandle window, std::uint32_t message, std::uint64_t wparam, std::int64_t lparam) = 0;

  // Modal; pumps messages while it stands. BoxAnswer::None if it could not be shown.
  virtual BoxAnswer MessageBoxA(WindowHandle owner, std::string_view text, std::string_view title,
                                std::uint32_t type) = 0;

  // Calls `tick` from the pump each `interval` ms until killed; an id that is running starts anew.
  // Gives false if the system has no timer left.
  virtual bool SetTimer(WindowHandle window, std::uint32_t id, std::uint32_t interval, std::function<void()> tick) = 0;
  virtual bool KillTimer(WindowHandle window, std::uint32_t id) = 0;

  // One round of the pump: hands out what is waiting (messages, timers that are due) and returns.
  virtual void PumpMessages() = 0;
  // Waits for the next message and hands it out; the loop of a modal window and of the idle program.
  // False when the program must leave its loops at once.
  virtual bool WaitMessage() = 0;
};

}  // namespace qb
