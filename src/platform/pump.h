// The message pump of the program's thread: posted messages and timers.
#pragma once

#include <functional>

#include "platform/types.h"

namespace qb {

inline constexpr std::uint32_t kMessageClose = 0x10;  // WM_CLOSE

class Pump {
 public:
  virtual ~Pump() = default;

  virtual Error PostMessageA(WindowHandle window, std::uint32_t message, std::uint64_t wparam, std::int64_t lparam) = 0;

  // Calls `tick` from the pump each `interval` ms until killed; an id that is running starts anew.
  // Gives false if the system has no timer left.
  virtual bool SetTimer(WindowHandle window, std::uint32_t id, std::uint32_t interval, std::function<void()> tick) = 0;
  virtual bool KillTimer(WindowHandle window, std::uint32_t id) = 0;

  // One round of the pump: hands out what is waiting (messages, timers that are due) and returns.
  virtual void PumpMessages() = 0;
  // The same for a loop that only looks whether something has come about: rests until something is waiting, a few
  // milliseconds at most, so that the loop leaves the processor to others.
  virtual void RestAndPumpMessages() = 0;
  // Waits for the next message and hands it out; the loop of a modal window and of the idle program.
  // False when the program must leave its loops at once.
  virtual bool WaitMessage() = 0;
};

}  // namespace qb
