#include "view/win32/heading.h"

#include <string>

#include "view/win32/button_icons.h"

namespace qb::win32 {

namespace {

constexpr int kBands = 128;  // more steps than the eye tells apart

BYTE Between(BYTE from, BYTE to, int step) {
  return static_cast<BYTE>(from + (to - from) * step / (kBands - 1));
}

void FillGradient(HDC dc, const RECT& area, COLORREF from, COLORREF to) {
  const int width = area.right - area.left;
  for (int band = 0; band < kBands; ++band) {
    const RECT stripe{area.left + width * band / kBands, area.top, area.left + width * (band + 1) / kBands,
                      area.bottom};
    HBRUSH brush = ::CreateSolidBrush(RGB(Between(GetRValue(from), GetRValue(to), band),
                                          Between(GetGValue(from), GetGValue(to), band),
                                          Between(GetBValue(from), GetBValue(to), band)));
    ::FillRect(dc, &stripe, brush);
    ::DeleteObject(brush);
  }
}

}  // namespace

void DrawHeading(const DRAWITEMSTRUCT& item, HFONT font) {
  const bool plain = HighContrast();
  RECT area = item.rcItem;
  if (plain) {
    ::FillRect(item.hDC, &area, ::GetSysColorBrush(COLOR_BTNFACE));
  } else {
    const COLORREF from = ::GetSysColor(COLOR_ACTIVECAPTION);
    const COLORREF to = ::GetSysColor(COLOR_GRADIENTACTIVECAPTION);
    // Where captions are of one colour, the title fades into its window.
    FillGradient(item.hDC, area, from, to != from ? to : ::GetSysColor(COLOR_BTNFACE));
  }
  std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(item.hwndItem)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(::GetWindowTextW(item.hwndItem, text.data(), static_cast<int>(text.size()))));
  ::SetBkMode(item.hDC, TRANSPARENT);
  ::SetTextColor(item.hDC, ::GetSysColor(plain ? COLOR_BTNTEXT : COLOR_CAPTIONTEXT));
  HGDIOBJ old = ::SelectObject(item.hDC, font);
  area.left += (area.bottom - area.top) / 4;
  ::DrawTextW(item.hDC, text.c_str(), -1, &area, DT_SINGLELINE | DT_VCENTER | DT_LEFT | DT_END_ELLIPSIS);
  ::SelectObject(item.hDC, old);
}

}  // namespace qb::win32
