// The colour behind the controls of a tab page, as the visual style of Windows paints it.
#pragma once

#include "platform/win32/windows_api.h"

namespace qb::win32 {

class PageBackground {
 public:
  PageBackground() = default;
  ~PageBackground();
  PageBackground(const PageBackground&) = delete;
  PageBackground& operator=(const PageBackground&) = delete;

  // As the visual style that is in force has it; a window must say which. Asked for once, and owned here.
  HBRUSH Brush(HWND window);
  // Another style may be in force now.
  void Forget();

 private:
  HBRUSH brush_ = nullptr;
};

}  // namespace qb::win32
