// Windows of this and other programs, and message boxes.
#pragma once

#include <optional>

#include "platform/types.h"

namespace qb {

// Commands of ShowWindow.
inline constexpr std::uint32_t kShowHide = 0;
inline constexpr std::uint32_t kShowNormal = 1;
// Relation of GetWindow: the window above in z-order.
inline constexpr std::uint32_t kWindowPrevious = 3;

// Bits of MessageBoxA and its answers.
inline constexpr std::uint32_t kBoxOk = 0x0;
inline constexpr std::uint32_t kBoxYesNo = 0x4;
inline constexpr std::uint32_t kBoxStop = 0x10;
inline constexpr std::uint32_t kBoxQuestion = 0x20;
inline constexpr std::uint32_t kBoxInformation = 0x40;
enum class BoxAnswer : std::uint32_t { None = 0, Ok = 1, Cancel = 2, Yes = 6, No = 7 };

class Desktop {
 public:
  virtual ~Desktop() = default;

  virtual WindowHandle FindWindowA(std::optional<std::string_view> class_name,
                                   std::optional<std::string_view> title) = 0;
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
