// The scroll bars of a window whose content is larger than its room.
#pragma once

#include "platform/win32/windows_api.h"
#include "view/placement/screen_fit.h"

namespace qb::win32 {

class Scroller {
 public:
  // Shows the bars that a content of that size needs in the window as it is now, and hides the others.
  void Fit(HWND window, Extent content, UINT dpi);
  // How far the content is scrolled, in pixels.
  POINT Offset() const { return offset_; }
  // Takes WM_HSCROLL, WM_VSCROLL and WM_MOUSEWHEEL. True if the content has another place now.
  bool Take(HWND window, UINT message, WPARAM wparam);
  // Scrolls so far that a place of the client area, as it is now, is in sight. True if that moved the content.
  bool Show(HWND window, const RECT& place);
  // What the bars take away from the content: the width of one, the height of the other.
  static Extent Bars(UINT dpi);

 private:
  bool MoveTo(HWND window, POINT offset);

  Extent content_, view_;
  POINT offset_{};
  bool fitting_ = false;  // a bar that comes or goes changes the size of the window's inside
  int wheel_ = 0;         // turned so far, in what Windows calls a delta; a line is not complete yet
};

}  // namespace qb::win32
