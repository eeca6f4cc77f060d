// The tool tips of one form's controls.
#pragma once

#include <map>
#include <string>

#include "platform/win32/windows_api.h"

namespace qb::win32 {

class ToolTips {
 public:
  // The tool tip windows are owned by `form` and go with it.
  explicit ToolTips(HWND form) : form_(form) {}
  // Gives the control a tip, another one, or none (an empty text). The title stands above the text.
  void Set(HWND control, const std::string& text, const std::string& title);

 private:
  struct Tip {
    std::string text, title;
  };
  // A tool tip window shows one title for all of its tips, so each title has a window of its own.
  HWND WindowFor(const std::string& title);

  HWND form_;
  std::map<std::string, HWND> windows_;  // by title
  std::map<HWND, Tip> tips_;
};

}  // namespace qb::win32
