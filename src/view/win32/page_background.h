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

  // Asks the visual style that is in force now; a window must say which.
  void Update(HWND window);
  // Null before the first Update.
  HBRUSH brush() const { return brush_; }

 private:
  HBRUSH brush_ = nullptr;
};

}  // namespace qb::win32
