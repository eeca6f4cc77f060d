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

ToolTips::ToolTips(HWND form) : form_(form) {
  window_ = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0,
                              0, form, nullptr, ::GetModuleHandleW(nullptr), nullptr);
  ::SendMessageW(window_, TTM_SETMAXTIPWIDTH, 0, ::MulDiv(kWidestTip, static_cast<int>(DpiOf(form)), 96));
  ::SendMessageW(window_, TTM_SETDELAYTIME, TTDT_AUTOPOP, kShownFor);
}

void ToolTips::Set(HWND control, const std::string& text) {
  std::string& present = tips_[control];
  if (present == text) return;
  std::wstring wide = Wide(text);
  TOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = form_;
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  tool.lpszText = wide.data();
  const UINT step = present.empty() ? TTM_ADDTOOLW : text.empty() ? TTM_DELTOOLW : TTM_UPDATETIPTEXTW;
  ::SendMessageW(window_, step, 0, reinterpret_cast<LPARAM>(&tool));
  present = text;
}

}  // namespace qb::win32
