// The Boss Key: hides all windows of browsers and messengers, and brings them back as they were.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/desktop.h"
#include "settings/settings.h"

namespace qb {

class WindowHider {
 public:
  // `mark` sets the check mark of the menu entry that shows the state.
  WindowHider(Desktop& desktop, const Settings& settings, std::function<void(bool)> mark)
      : desktop_(desktop), settings_(settings), mark_(std::move(mark)) {}

  // The toggle, with the mark.
  void InvokeBossKey();
  // Each with the mark, whatever the state is.
  void MarkAndHide();
  void UnmarkAndShow();

  // Drops the list of the hide before and takes down every window as it stands now, hidden ones too.
  void Hide_Boss_Windows();
  // Replays the list from its end. The list stays: showing twice shows twice.
  void Show_Boss_Windows();
  bool Active() const { return active_; }
  // Shown, with an empty list and no mark.
  void Reset();

 private:
  struct HiddenWindow {
    WindowHandle window = WindowHandle::None;
    WindowPlacement placement;  // as it was before hiding
  };
  void Boss_Enum_Proc(WindowHandle window);
  std::string Get_Class_Name(WindowHandle window);
  std::string Get_Window_Title(WindowHandle window);

  Desktop& desktop_;
  const Settings& settings_;
  std::function<void(bool)> mark_;
  std::vector<HiddenWindow> hidden_windows_;
  bool active_ = false;
};

}  // namespace qb
