// The program's chords, which the whole desktop knows, and the window procedure that answers them.
#pragma once

#include <cstdint>

#include "bosskey/window_hider.h"
#include "platform/hot_keys_and_tray.h"
#include "settings/settings.h"

namespace qb {

// What chords do outside this folder.
class HotKeyHost {
 public:
  virtual ~HotKeyHost() = default;
  virtual void ShowMainWindow() = 0;
  virtual void RunAutoKillNow() = 0;
  virtual void FlipStrictMode() = 0;
  virtual void FlipTanglegate() = 0;
  // Any other message to the main window, before it reaches the window's own procedure.
  virtual void MainWindowMessage(std::uint32_t message, std::uint64_t wparam, std::int64_t lparam) = 0;
};

class HotKeys {
 public:
  HotKeys(HotKeysAndTray& system, const Settings& settings, WindowHider& hider, HotKeyHost& host)
      : system_(system), settings_(settings), hider_(hider), host_(host) {}

  // Registers the chords for the main window and puts the window procedure in front of its own. A chord
  // that another program holds does nothing here.
  void Register(WindowHandle main_window);
  // Takes both back.
  void Unregister(WindowHandle main_window);

  std::int64_t WindowProc(WindowHandle window, std::uint32_t message, std::uint64_t wparam, std::int64_t lparam);

 private:
  void Act(std::uint32_t modifiers, std::uint32_t key, std::uint64_t id);

  HotKeysAndTray& system_;
  const Settings& settings_;
  WindowHider& hider_;
  HotKeyHost& host_;
  WindowProcedure old_window_proc_ = WindowProcedure::None;
};

}  // namespace qb
