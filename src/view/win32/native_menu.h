// The menus of a form as native menus, and their accelerator keys.
#pragma once

#include <map>
#include <vector>

#include "platform/win32/windows_api.h"
#include "widgets/controls.h"

namespace qb::win32 {

class NativeMenu {
 public:
  NativeMenu() = default;
  ~NativeMenu();
  NativeMenu(const NativeMenu&) = delete;
  NativeMenu& operator=(const NativeMenu&) = delete;

  // Builds menu bar and accelerators anew and hangs the bar on the window. Popup menus are left out, and
  // so is what is not visible. A form without a menu gets none.
  void Build(HWND window, const std::vector<MenuItem*>& menus);
  // Shows a property that changed. Only a change of what is visible needs another Build: then false.
  bool Refresh(const MenuItem& item);
  bool TranslateKey(HWND window, MSG& message) const;
  // The item that a WM_COMMAND names; null if there is none.
  MenuItem* ItemOf(int command) const;
  // Opens a menu at the mouse; gives the item that the user chose, or null. Returns when it is closed.
  MenuItem* Track(HWND window, MenuItem& menu);

 private:
  HMENU Fill(HMENU menu, const std::vector<MenuItem*>& items);
  int CommandOf(MenuItem& item);

  HMENU bar_ = nullptr;
  HACCEL accelerators_ = nullptr;
  std::map<int, MenuItem*> items_;  // by command
};

}  // namespace qb::win32
