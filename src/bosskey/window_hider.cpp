#include "bosskey/window_hider.h"

#include "bosskey/window_classes.h"

namespace qb {

void WindowHider::InvokeBossKey() {
  active_ ? UnmarkAndShow() : MarkAndHide();
}

void WindowHider::MarkAndHide() {
  mark_(true);
  Hide_Boss_Windows();
}

void WindowHider::UnmarkAndShow() {
  mark_(false);
  Show_Boss_Windows();
}

void WindowHider::Reset() {
  active_ = false;
  hidden_windows_.clear();
  mark_(false);
}

void WindowHider::Hide_Boss_Windows() {
  active_ = true;
  hidden_windows_.clear();
  StepOver(desktop_.EnumWindows([this](WindowHandle window) {
    Boss_Enum_Proc(window);
    return true;
  }));
}

void WindowHider::Show_Boss_Windows() {
  active_ = false;
  for (auto record = hidden_windows_.rbegin(); record != hidden_windows_.rend(); ++record) {
    // One that was closed meanwhile fails.
    StepOver(desktop_.SetWindowPlacement(record->window, record->placement));
  }
}

void WindowHider::Boss_Enum_Proc(WindowHandle window) {
  const std::string class_name = Get_Class_Name(window);
  if (!BossKeyHides(class_name, Get_Window_Title(window), settings_)) return;
  HiddenWindow record;
  record.window = window;
  record.placement.length = kPlacementLength;
  StepOver(desktop_.GetWindowPlacement(window, record.placement));
  hidden_windows_.push_back(record);
  record.placement.show_command = kShowHide;
  StepOver(desktop_.SetWindowPlacement(window, record.placement));
}

std::string WindowHider::Get_Class_Name(WindowHandle window) {
  TextBuffer name(255);
  desktop_.GetClassNameA(window, name);
  return name.text();
}

std::string WindowHider::Get_Window_Title(WindowHandle window) {
  TextBuffer title(desktop_.GetWindowTextLengthA(window) + 1);
  desktop_.GetWindowTextA(window, title);
  return title.text();
}

}  // namespace qb
