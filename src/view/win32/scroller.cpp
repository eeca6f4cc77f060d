#include "view/win32/scroller.h"

#include "view/win32/metrics.h"

namespace qb::win32 {

namespace {

constexpr int kLinesOfView = 12;  // a line is that part of what is in sight

void SetBar(HWND window, int bar, bool needed, int content, int view, int offset) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = needed ? content - 1 : 0;
  // A page as large as the range makes Windows take the bar away.
  info.nPage = static_cast<UINT>(needed ? view : 1);
  info.nPos = offset;
  ::SetScrollInfo(window, bar, &info, TRUE);
}

// Where the user moved a bar to.
int Target(HWND window, int bar, WORD request, int offset, int view) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  switch (request) {
    case SB_LINEUP:
      return offset - view / kLinesOfView;
    case SB_LINEDOWN:
      return offset + view / kLinesOfView;
    case SB_PAGEUP:
      return offset - view;
    case SB_PAGEDOWN:
      return offset + view;
    case SB_TOP:
      return 0;
    case SB_BOTTOM:
      return offset + (1 << 24);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      ::GetScrollInfo(window, bar, &info);
      return info.nTrackPos;
    default:
      return offset;
  }
}

}  // namespace

Extent Scroller::Bars(UINT dpi) {
  return {SystemMetric(SM_CXVSCROLL, dpi), SystemMetric(SM_CYHSCROLL, dpi)};
}

void Scroller::Fit(HWND window, Extent content, UINT dpi) {
  if (fitting_) return;
  fitting_ = true;
  const Extent bars = Bars(dpi);
  RECT client{};
  ::GetClientRect(window, &client);
  const auto style = static_cast<DWORD>(::GetWindowLongW(window, GWL_STYLE));
  const Extent room{static_cast<int>(client.right) + ((style & WS_VSCROLL) != 0 ? bars.width : 0),
                    static_cast<int>(client.bottom) + ((style & WS_HSCROLL) != 0 ? bars.height : 0)};
  const ScreenFit fit = FitToRoom(content, room, bars);
  content_ = content;
  view_ = {room.width - (fit.scrolls_down ? bars.width : 0), room.height - (fit.scrolls_across ? bars.height : 0)};
  offset_ = {ScrollWithin(offset_.x, content.width, view_.width),
             ScrollWithin(offset_.y, content.height, view_.height)};
  SetBar(window, SB_VERT, fit.scrolls_down, content.height, view_.height, offset_.y);
  SetBar(window, SB_HORZ, fit.scrolls_across, content.width, view_.width, offset_.x);
  fitting_ = false;
}

bool Scroller::MoveTo(HWND window, POINT offset) {
  offset = {ScrollWithin(offset.x, content_.width, view_.width), ScrollWithin(offset.y, content_.height, view_.height)};
  if (offset.x == offset_.x && offset.y == offset_.y) return false;
  offset_ = offset;
  ::SetScrollPos(window, SB_HORZ, offset.x, TRUE);
  ::SetScrollPos(window, SB_VERT, offset.y, TRUE);
  return true;
}

bool Scroller::Take(HWND window, UINT message, WPARAM wparam) {
  POINT offset = offset_;
  if (message == WM_HSCROLL) {
    offset.x = Target(window, SB_HORZ, LOWORD(wparam), offset.x, view_.width);
  } else if (message == WM_VSCROLL) {
    offset.y = Target(window, SB_VERT, LOWORD(wparam), offset.y, view_.height);
  } else {
    UINT lines = 3;
    ::SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    wheel_ += GET_WHEEL_DELTA_WPARAM(wparam);
    const int notches = wheel_ / WHEEL_DELTA;
    wheel_ -= notches * WHEEL_DELTA;
    offset.y -=
        notches * static_cast<int>(lines == WHEEL_PAGESCROLL ? kLinesOfView : lines) * view_.height / kLinesOfView;
  }
  return MoveTo(window, offset);
}

bool Scroller::Show(HWND window, const RECT& place) {
  return MoveTo(window, {ScrollToShow(offset_.x, view_.width, offset_.x + place.left, offset_.x + place.right),
                         ScrollToShow(offset_.y, view_.height, offset_.y + place.top, offset_.y + place.bottom)});
}

}  // namespace qb::win32
