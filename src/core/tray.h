// The program's icon in the tray, and what the mouse does on it.
#pragma once

#include <cstdint>
#include <functional>

#include "kill/run_state.h"
#include "platform/hot_keys_and_tray.h"
#include "settings/settings.h"
#include "widgets/form.h"

namespace qb {

class Tray {
 public:
  // `show_main_window` brings the main window to the front.
  Tray(Form& main_window, MenuItem& popup, const Settings& settings, const RunState& run,
       std::function<void()> show_main_window);

  // Adding an icon that is there, or removing one that is not, does nothing.
  void Add_Tray_Icon();
  void Remove_Tray_Icon();
  // From now on a taskbar that is made anew gets the icon again.
  void ListenForTaskbar();

  // A message to the main window. The icon's events come as mouse moves.
  void MainWindowMessage(std::uint32_t message, std::uint64_t wparam, std::int64_t lparam);
  // Opens the popup menu with the main window in front, so that a click elsewhere closes it.
  void SysTrayMouseEventHandler();

 private:
  NotifyIconData Record() const;
  HotKeysAndTray& System() const;
  void Form_MouseMove(std::uint64_t wparam, std::int64_t lparam);

  Form& main_window_;
  MenuItem& popup_;
  const Settings& settings_;
  const RunState& run_;
  std::function<void()> show_main_window_;
  NotifyIconData record_;  // as it was added last
  std::uint32_t taskbar_created_ = 0;
};

}  // namespace qb
