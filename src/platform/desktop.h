// Windows of this and other programs, and message boxes.
#pragma once

#include <functional>
#include <optional>

#include "platform/text_buffer.h"
#include "platform/types.h"

namespace qb {

// Commands of ShowWindow.
inline constexpr std::uint32_t kShowHide = 0;
inline constexpr std::uint32_t kShowNormal = 1;
inline constexpr std::uint32_t kShowMinimized = 2;
inline constexpr std::uint32_t kShowMaximized = 3;
// Relation of GetWindow: the window above in z-order.
inline constexpr std::uint32_t kWindowPrevious = 3;

// Bits of MessageBoxA and its answers.
inline constexpr std::uint32_t kBoxOk = 0x0;
inline constexpr std::uint32_t kBoxYesNo = 0x4;
inline constexpr std::uint32_t kBoxStop = 0x10;
inline constexpr std::uint32_t kBoxQuestion = 0x20;
inline constexpr std::uint32_t kBoxInformation = 0x40;
enum class BoxAnswer : std::uint32_t { None = 0, Ok = 1, Cancel = 2, Yes = 6, No = 7 };

struct Point {
  std::int32_t x = 0, y = 0;
};
struct Rectangle {
  std::int32_t left = 0, top = 0, right = 0, bottom = 0;
};

inline constexpr std::uint32_t kPlacementLength = 44;

// WINDOWPLACEMENT. That of a hidden window tells how it would be shown.
struct WindowPlacement {
  std::uint32_t length = 0, flags = 0;
  std::uint32_t show_command = 0;
  Point minimized, maximized;
  Rectangle normal;
};

class Desktop {
 public:
  virtual ~Desktop() = default;

  virtual WindowHandle FindWindowA(std::optional<std::string_view> class_name,
                                   std::optional<std::string_view> title) = 0;
  // Looks among the children of `parent` (None: the windows of the desktop) behind `after`, in z-order.
  virtual WindowHandle FindWindowExA(WindowHandle parent, WindowHandle after,
                                     std::optional<std::string_view> class_name,
                                     std::optional<std::string_view> title) = 0;
  // Calls `visit` with each window of the desktop, top one first, until it gives false.
  virtual bool EnumWindows(const std::function<bool(WindowHandle)>& visit) = 0;
  // Both cut to the buffer and give the length without the closing zero; 0 for an empty text or no such window.
  virtual std::uint32_t GetClassNameA(WindowHandle window, TextBuffer& name) = 0;
  virtual std::uint32_t GetWindowTextA(WindowHandle window, TextBuffer& title) = 0;
  virtual std::uint32_t GetWindowTextLengthA(WindowHandle window) = 0;
  // Both refuse a placement whose length is not kPlacementLength.
  virtual Error GetWindowPlacement(WindowHandle window, WindowPlacement& placement) = 0;
  virtual Error SetWindowPlacement(WindowHandle window, const WindowPlacement& placement) = 0;
  virtual WindowHandle GetWindow(WindowHandle window, std::uint32_t relation) = 0;
  // True if the window was visible before.
  virtual bool ShowWindow(WindowHandle window, std::uint32_t command) = 0;
  virtual bool OpenIcon(WindowHandle window) = 0;
  virtual bool SetForegroundWindow(WindowHandle window) = 0;
  virtual bool SetWindowTextA(WindowHandle window, std::string_view text) = 0;

  // Modal; pumps messages while it stands. BoxAnswer::None if it could not be shown.
  virtual BoxAnswer MessageBoxA(WindowHandle owner, std::string_view text, std::string_view title,
                                std::uint32_t type) = 0;
};

}  // namespace qb
