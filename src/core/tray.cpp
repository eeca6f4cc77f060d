#include "core/tray.h"

namespace qb {

namespace {

constexpr std::uint32_t kIconId = 1;
constexpr std::string_view kTip = "Quillbarrow: Right-Click Icon for Menu, Click to Open QB";

constexpr std::int64_t kLeftDown = 513, kLeftDoubleClick = 515, kRightUp = 517;

}  // namespace

Tray::Tray(Form& main_window, MenuItem& popup, const Settings& settings, const RunState& run,
           std::function<void()> show_main_window)
    : main_window_(main_window),
      popup_(popup),
      settings_(settings),
      run_(run),
      show_main_window_(std::move(show_main_window)) {}

NotifyIconData Tray::Record() const {
  const WindowHandle window = main_window_.Window();
  return {.window = window,
          .id = kIconId,
          .flags = kTrayMessageIconTip,
          .callback_message = kMessageMouseMove,
          .icon = System().GetClassLongPtrA(window, kIndexClassSmallIcon),
          .tip = std::string(kTip)};
}

HotKeysAndTray& Tray::System() const {
  return main_window_.platform().hot_keys_and_tray;
}

void Tray::Add_Tray_Icon() {
  record_ = Record();
  StepOver(System().Shell_NotifyIconA(kTrayAdd, record_));
}

void Tray::Remove_Tray_Icon() {
  StepOver(System().Shell_NotifyIconA(kTrayDelete, record_));
}

void Tray::MainWindowMessage(std::uint32_t message, std::uint64_t wparam, std::int64_t lparam) {
  if (message == kMessageMouseMove) {
    Form_MouseMove(wparam, lparam);
  } else if (message != 0 && message == taskbar_created_) {
    // The icons of the taskbar before it are gone.
    if (!settings_.On(Setting::HideIcon)) Add_Tray_Icon();
  }
}

void Tray::ListenForTaskbar() {
  taskbar_created_ = System().RegisterWindowMessageA("TaskbarCreated");
}

void Tray::Form_MouseMove(std::uint64_t wparam, std::int64_t lparam) {
  // A real move has its place over the window in lparam and the keys that are held in wparam.
  if (wparam != kIconId) return;
  switch (lparam) {
    case kLeftDown:
      if (!run_.UnattendedRun) show_main_window_();
      break;
    case kLeftDoubleClick:
      if (!settings_.On(Setting::Stealth)) show_main_window_();
      break;
    case kRightUp:
      SysTrayMouseEventHandler();
      break;
    default:
      break;
  }
}

void Tray::SysTrayMouseEventHandler() {
  StepOver(main_window_.platform().desktop.SetForegroundWindow(main_window_.Window()));
  main_window_.watcher().PopupMenu(main_window_, popup_);
}

}  // namespace qb
