// The menus of a form as native menus, and their accelerator keys.
#pragma once

#include <map>
#include <string>
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

  // Builds menu bar and accelerators anew and hangs the bar on the window, unless that is null. Popup menus are left
  // out, and so is what is not visible, with its shortcuts. A form without a menu gets none. `captions` are those of
  // the visible menus of the bar, in order, with their access keys.
  void Build(HWND window, const std::vector<MenuItem*>& menus, const std::vector<std::string>& captions);
  // Null where there is none. It goes with the window that it hangs on.
  HMENU bar() const { return bar_; }
  // Shows a property that changed. Only a change of what is visible needs another Build: then false.
  bool Refresh(const MenuItem& item);
  bool TranslateKey(HWND window, MSG& message) const;
  // The item that a WM_COMMAND names; null if there is none.
  MenuItem* ItemOf(int command) const;
  // Brings the window to the foreground and opens a menu at the mouse; gives the item that the user chose, or null.
  // Returns when the menu is closed.
  MenuItem* Track(HWND window, MenuItem& menu);

 private:
  // An item as it was last put into a native menu.
  struct Entry {
    MenuItem* item = nullptr;
    HMENU menu = nullptr;
    std::string caption, caption_with_key;
  };
  HMENU Fill(HMENU menu, const std::vector<MenuItem*>& items, const std::vector<std::string>& captions);
  void Forget(HMENU menu);
  int CommandOf(const MenuItem& item);

  HMENU bar_ = nullptr;
  HACCEL accelerators_ = nullptr;
  std::map<int, Entry> shown_;               // what stands in a native menu now, by command
  std::map<const MenuItem*, int> commands_;  // of every item that was shown once
};

}  // namespace qb::win32
