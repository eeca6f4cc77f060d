// The tool tips of one form's controls.
#pragma once

#include <map>
#include <string>

#include "platform/win32/windows_api.h"

namespace qb::win32 {

class ToolTips {
 public:
  // Makes the tool tip window; it is owned by `form` and goes with it.
  explicit ToolTips(HWND form);
  // Gives the control a tip, another one, or none (an empty text).
  void Set(HWND control, const std::string& text);

 private:
  HWND form_;
  HWND window_ = nullptr;
  std::map<HWND, std::string> tips_;
};

}  // namespace qb::win32
