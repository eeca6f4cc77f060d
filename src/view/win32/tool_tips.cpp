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

ToolTips::Heading ToolTips::HeadingOf(const Control& control) {
  if (control.kind() != ControlKind::Button) return {control.ToolTipTitle(), TipIcon::None, false};
  std::string title = control.ToolTipTitle();
  if (title.empty()) {
    // Without its access key, arrows and dots.
    for (char c : control.Caption()) {
      if (c != '&' && c != '<' && c != '>' && c != '.') title += c;
    }
    title.erase(0, title.find_first_not_of(' '));
    title.erase(title.find_last_not_of(' ') + 1);
  }
  return {title, static_cast<const Button&>(control).ToolTipIcon(), true};
}

HWND ToolTips::WindowFor(const Heading& heading) {
  HWND& window = windows_[heading];
  if (window != nullptr) return window;
  const DWORD style = WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX | (heading.balloon ? TTS_BALLOON : 0);
  window = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, style, 0, 0, 0, 0, form_, nullptr,
                             ::GetModuleHandleW(nullptr), nullptr);
  ::SendMessageW(window, TTM_SETMAXTIPWIDTH, 0, ::MulDiv(kWidestTip, static_cast<int>(DpiOf(form_)), 96));
  ::SendMessageW(window, TTM_SETDELAYTIME, TTDT_AUTOPOP, kShownFor);
  if (!heading.title.empty()) {
    // The marks of Windows, from TTI_NONE to TTI_ERROR, stand in the same order.
    ::SendMessageW(window, TTM_SETTITLEW, static_cast<WPARAM>(heading.icon),
                   reinterpret_cast<LPARAM>(Wide(heading.title).c_str()));
  }
  return window;
}

void ToolTips::Set(HWND window, const Control& control) {
  Give(window, {control.ToolTip(), HeadingOf(control)});
}

void ToolTips::Give(HWND window, Tip tip) {
  Tip& present = tips_[window];
  if (present == tip) return;
  std::wstring wide = Wide(tip.text);
  TOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = form_;
  tool.uId = reinterpret_cast<UINT_PTR>(window);
  tool.lpszText = wide.data();
  const auto tool_param = reinterpret_cast<LPARAM>(&tool);
  if (!present.text.empty()) ::SendMessageW(WindowFor(present.heading), TTM_DELTOOLW, 0, tool_param);
  if (!tip.text.empty()) ::SendMessageW(WindowFor(tip.heading), TTM_ADDTOOLW, 0, tool_param);
  present = std::move(tip);
}

void ToolTips::Refresh(HWND window, const Control& control) {
  if (tips_.count(window) != 0) Set(window, control);
}

}  // namespace qb::win32
