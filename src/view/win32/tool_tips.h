// The tool tips of one form's controls.
#pragma once

#include <compare>
#include <map>
#include <string>

#include "platform/win32/windows_api.h"
#include "widgets/controls.h"

namespace qb::win32 {

class ToolTips {
 public:
  // The tool tip windows are owned by `form` and go with it.
  explicit ToolTips(HWND form) : form_(form) {}
  // Gives the control's window the tip of the control, another one, or none (an empty text). That of a button is
  // a balloon with a title and its mark; where it has no title, the button's caption is one.
  void Set(HWND window, const Control& control);
  // The same for a window that was given a tip before; nothing for another one.
  void Refresh(HWND window, const Control& control);
  // Gives the window a tip without a title, another one, or none.
  void Set(HWND window, const std::string& text) { Give(window, {text, {}}); }

 private:
  struct Heading {
    std::string title;
    TipIcon icon = TipIcon::None;
    bool balloon = false;
    // NOLINTNEXTLINE(modernize-use-nullptr): the zero is in what the compiler writes here
    friend auto operator<=>(const Heading&, const Heading&) = default;
  };
  struct Tip {
    std::string text;
    Heading heading;
    friend bool operator==(const Tip&, const Tip&) = default;
  };
  static Heading HeadingOf(const Control& control);
  void Give(HWND window, Tip tip);
  // A tool tip window shows one title for all of its tips, so each title has a window of its own.
  HWND WindowFor(const Heading& heading);

  HWND form_;
  std::map<Heading, HWND> windows_;
  std::map<HWND, Tip> tips_;
};

}  // namespace qb::win32
