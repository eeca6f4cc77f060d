// Hot keys of the whole desktop, the program's icon in the tray, and what a window needs to hear of them: a procedure
// in front of its own. The mouse cursor, too.
#pragma once

#include <functional>

#include "platform/types.h"

namespace qb {

inline constexpr std::uint32_t kMessageMouseMove = 0x200;  // WM_MOUSEMOVE
inline constexpr std::uint32_t kMessageHotKey = 0x312;     // WM_HOTKEY: wParam is the id, lParam modifiers | key << 16

// Modifiers of RegisterHotKey.
inline constexpr std::uint32_t kModifierAlt = 1;
inline constexpr std::uint32_t kModifierControl = 2;
inline constexpr std::uint32_t kModifierShift = 4;
inline constexpr std::uint32_t kModifierWindows = 8;

// Messages and flags of Shell_NotifyIconA.
inline constexpr std::uint32_t kTrayAdd = 0;     // NIM_ADD
inline constexpr std::uint32_t kTrayModify = 1;  // NIM_MODIFY
inline constexpr std::uint32_t kTrayDelete = 2;  // NIM_DELETE
inline constexpr std::uint32_t kTrayMessageIconTip = 7;
// NOTIFYICONDATAA_V1_SIZE in a 64-bit program.
inline constexpr std::uint32_t kTrayRecordSize = 104;
inline constexpr std::size_t kTrayTipSize = 64;  // of which the last is a zero

inline constexpr std::int32_t kIndexWindowProcedure = -4;  // GWL_WNDPROC
inline constexpr std::int32_t kIndexClassSmallIcon = -34;  // GCLP_HICONSM
inline constexpr std::uint32_t kCursorHand = 32649;        // IDC_HAND

// The first version of NOTIFYICONDATA.
struct NotifyIconData {
  std::uint32_t size = kTrayRecordSize;
  WindowHandle window = WindowHandle::None;
  std::uint32_t id = 0, flags = 0;
  std::uint32_t callback_message = 0;  // with the id as wParam and the mouse message as lParam
  IconHandle icon = IconHandle::None;
  std::string tip;  // cut to 63 characters
};

using WindowFunction =
    std::function<std::int64_t(WindowHandle window, std::uint32_t message, std::uint64_t wparam, std::int64_t lparam)>;

class HotKeysAndTray {
 public:
  virtual ~HotKeysAndTray() = default;

  // HotKeyTaken for a chord that is anyone's already, this program's other ids included.
  virtual Error RegisterHotKey(WindowHandle window, std::int32_t id, std::uint32_t modifiers, std::uint32_t key) = 0;
  virtual Error UnregisterHotKey(WindowHandle window, std::int32_t id) = 0;

  // False when an icon is added that is there, or one changed or removed that is not.
  virtual bool Shell_NotifyIconA(std::uint32_t message, const NotifyIconData& data) = 0;
  // The number of a message that all programs share by its name, as "TaskbarCreated"; 0 on failure.
  virtual std::uint32_t RegisterWindowMessageA(std::string_view name) = 0;
  // Index kIndexClassSmallIcon alone is known.
  virtual IconHandle GetClassLongPtrA(WindowHandle window, std::int32_t index) = 0;

  // Puts a procedure in front of a window's own and gives the one that stood there, or None. Index
  // kIndexWindowProcedure alone is known. The second form puts back what the first gave.
  virtual WindowProcedure SetWindowLongA(WindowHandle window, std::int32_t index, WindowFunction procedure) = 0;
  virtual WindowProcedure SetWindowLongA(WindowHandle window, std::int32_t index, WindowProcedure procedure) = 0;
  virtual std::int64_t CallWindowProcA(WindowProcedure procedure, WindowHandle window, std::uint32_t message,
                                       std::uint64_t wparam, std::int64_t lparam) = 0;

  // One of the system's own cursors by its number, or None.
  virtual CursorHandle LoadCursorA(std::uint32_t number) = 0;
  // Gives the cursor that was shown before.
  virtual CursorHandle SetCursor(CursorHandle cursor) = 0;
};

}  // namespace qb
