// Hot keys, the tray, window procedures and the cursor, answered by Windows.
#include <map>
#include <memory>
#include <utility>

#include "platform/win32/convert.h"
#include "platform/win32/factories.h"

// After the basic types of windows.h.
#include <shellapi.h>

namespace qb::win32 {
namespace {

// The window's property that holds what stands in front of its own procedure.
constexpr wchar_t kSubclassProperty[] = L"QuillbarrowSubclass";

static_assert(NOTIFYICONDATAA_V1_SIZE == kTrayRecordSize);

class Win32HotKeysAndTray final : public HotKeysAndTray {
 public:
  Error RegisterHotKey(WindowHandle window, std::int32_t id, std::uint32_t modifiers, std::uint32_t key) override {
    return FromBool(::RegisterHotKey(Unwrap<HWND>(window), id, modifiers, key));
  }
  Error UnregisterHotKey(WindowHandle window, std::int32_t id) override {
    return FromBool(::UnregisterHotKey(Unwrap<HWND>(window), id));
  }

  bool Shell_NotifyIconA(std::uint32_t message, const NotifyIconData& data) override {
    NOTIFYICONDATAW native{};
    native.cbSize = data.size == kTrayRecordSize ? NOTIFYICONDATAW_V1_SIZE : data.size;
    native.hWnd = Unwrap<HWND>(data.window);
    native.uID = data.id;
    native.uFlags = data.flags;
    native.uCallbackMessage = data.callback_message;
    native.hIcon = Unwrap<HICON>(data.icon);
    TextBuffer tip(kTrayTipSize);
    tip.FillCut(data.tip);
    Wide(tip.text()).copy(native.szTip, kTrayTipSize - 1);
    return ::Shell_NotifyIconW(message, &native) != FALSE;
  }
  std::uint32_t RegisterWindowMessageA(std::string_view name) override {
    return ::RegisterWindowMessageW(Wide(name).c_str());
  }
  IconHandle GetClassLongPtrA(WindowHandle window, std::int32_t index) override {
    return static_cast<IconHandle>(::GetClassLongPtrW(Unwrap<HWND>(window), index));
  }

  WindowProcedure SetWindowLongA(WindowHandle window, std::int32_t index, WindowFunction procedure) override {
    const auto native = Unwrap<HWND>(window);
    auto subclass = std::make_unique<WindowFunction>(std::move(procedure));
    if (index != GWLP_WNDPROC || !::SetPropW(native, kSubclassProperty, subclass.get())) return WindowProcedure::None;
    subclasses_[window] = std::move(subclass);
    return Put(native, reinterpret_cast<LONG_PTR>(&Subclassed));
  }
  WindowProcedure SetWindowLongA(WindowHandle window, std::int32_t index, WindowProcedure procedure) override {
    if (index != GWLP_WNDPROC || procedure == WindowProcedure::None) return WindowProcedure::None;
    const WindowProcedure before = Put(Unwrap<HWND>(window), static_cast<LONG_PTR>(procedure));
    ::RemovePropW(Unwrap<HWND>(window), kSubclassProperty);
    subclasses_.erase(window);
    return before;
  }
  std::int64_t CallWindowProcA(WindowProcedure procedure, WindowHandle window, std::uint32_t message,
                               std::uint64_t wparam, std::int64_t lparam) override {
    return ::CallWindowProcW(Unwrap<WNDPROC>(procedure), Unwrap<HWND>(window), message, wparam, lparam);
  }

  CursorHandle LoadCursorA(std::uint32_t number) override {
    return Wrap<CursorHandle>(::LoadCursorW(nullptr, MAKEINTRESOURCEW(number)));
  }
  CursorHandle SetCursor(CursorHandle cursor) override {
    return Wrap<CursorHandle>(::SetCursor(Unwrap<HCURSOR>(cursor)));
  }

 private:
  // The windows of this program are Unicode ones: the A function would have Windows convert each message.
  static WindowProcedure Put(HWND window, LONG_PTR procedure) {
    return static_cast<WindowProcedure>(::SetWindowLongPtrW(window, GWLP_WNDPROC, procedure));
  }
  static LRESULT CALLBACK Subclassed(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const auto* subclass = static_cast<const WindowFunction*>(::GetPropW(window, kSubclassProperty));
    if (subclass == nullptr) return ::DefWindowProcW(window, message, wparam, lparam);
    const WindowFunction procedure = *subclass;  // it may take itself away
    return procedure(Wrap<WindowHandle>(window), message, wparam, lparam);
  }

  std::map<WindowHandle, std::unique_ptr<WindowFunction>> subclasses_;
};

}  // namespace

std::unique_ptr<HotKeysAndTray> MakeHotKeysAndTray() {
  return std::make_unique<Win32HotKeysAndTray>();
}

}  // namespace qb::win32
