#include "view/win32/tool_tips.h"

#include "view/win32/metrics.h"
#include "view/win32/wide_text.h"
// After the basic types of windows.h.
#include <commctrl.h>

namespace qb::win32 {

namespace {

constexpr int kWidestTip = 360;      // pixels at 96 dots per inch
constexpr LPARAM kShownFor = 20000;  // ms; some tips are long

}  // namespace

HWND ToolTips::WindowFor(const std::string& title) {
  HWND& window = windows_[title];
  if (window != nullptr) return window;
  window = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0,
                             0, form_, nullptr, ::GetModuleHandleW(nullptr), nullptr);
  ::SendMessageW(window, TTM_SETMAXTIPWIDTH, 0, ::MulDiv(kWidestTip, static_cast<int>(DpiOf(form_)), 96));
  ::SendMessageW(window, TTM_SETDELAYTIME, TTDT_AUTOPOP, kShownFor);
  if (!title.empty()) {
    ::SendMessageW(window, TTM_SETTITLEW, TTI_NONE, reinterpret_cast<LPARAM>(Wide(title).c_str()));
  }
  return window;
}

void ToolTips::Set(HWND control, const std::string& text, const std::string& title) {
  Tip& present = tips_[control];
  if (present.text == text && present.title == title) return;
  std::wstring wide = Wide(text);
  TOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = form_;
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  tool.lpszText = wide.data();
  const auto tool_param = reinterpret_cast<LPARAM>(&tool);
  if (!present.text.empty()) ::SendMessageW(WindowFor(present.title), TTM_DELTOOLW, 0, tool_param);
  if (!text.empty()) ::SendMessageW(WindowFor(title), TTM_ADDTOOLW, 0, tool_param);
  present = {text, title};
}

}  // namespace qb::win32
