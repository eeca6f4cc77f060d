// Windows, timers, message boxes and the message pump, answered by Windows.
#pragma once

#include <functional>
#include <map>
#include <utility>

#include "platform/desktop.h"
#include "platform/pump.h"
#include "platform/win32/windows_api.h"

namespace qb::win32 {

class Win32Messages : public Desktop, public Pump {
 public:
  // Takes a message before it is translated and handed out; true if that was all there is to do with it.
  using Filter = std::function<bool(MSG& message)>;

  Win32Messages();
  ~Win32Messages() override;
  Win32Messages(const Win32Messages&) = delete;
  Win32Messages& operator=(const Win32Messages&) = delete;

  // One filter for all messages that the pump takes; an empty one takes it away. The loops of message
  // boxes and menus belong to Windows and do not pass it.
  void SetFilter(Filter filter) { filter_ = std::move(filter); }

  // For work between two pumps that takes its time: lets the windows answer what other threads have sent them, so that
  // Windows does not take the program for a hung one, and leaves what is in the queue there.
  void AnswerSentMessages();
  // The same, unless a few milliseconds have not passed since the last time.
  void AnswerWhenDue();
  // While a window answers so. It puts off to the next pump what would make the program act.
  bool Answering() const { return answering_; }

  WindowHandle FindWindowA(std::optional<std::string_view> class_name, std::optional<std::string_view> title) override;
  WindowHandle FindWindowExA(WindowHandle parent, WindowHandle after, std::optional<std::string_view> class_name,
                             std::optional<std::string_view> title) override;
  bool EnumWindows(const std::function<bool(WindowHandle)>& visit) override;
  std::uint32_t GetClassNameA(WindowHandle window, TextBuffer& name) override;
  std::uint32_t GetWindowTextA(WindowHandle window, TextBuffer& title) override;
  std::uint32_t GetWindowTextLengthA(WindowHandle window) override;
  Error GetWindowPlacement(WindowHandle window, WindowPlacement& placement) override;
  Error SetWindowPlacement(WindowHandle window, const WindowPlacement& placement) override;
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
  void RestAndPumpMessages() override;
  bool WaitMessage() override;

 private:
  struct RunningTimer {
    UINT_PTR native_id = 0;
    std::function<void()> tick;
  };
  using TimerKey = std::pair<WindowHandle, std::uint32_t>;

  static LRESULT CALLBACK TimerWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  void Tick(UINT_PTR native_id);
  void HandOut(MSG& message);

  HWND timer_window_ = nullptr;
  UINT_PTR next_native_id_ = 1;
  std::map<TimerKey, RunningTimer> timers_;
  Filter filter_;
  bool quitting_ = false;  // WM_QUIT was taken from the queue
  bool answering_ = false;
  ULONGLONG answered_at_ = 0;  // milliseconds since Windows began
};

}  // namespace qb::win32
