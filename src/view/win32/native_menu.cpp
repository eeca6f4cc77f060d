#include "view/win32/native_menu.h"

#include <algorithm>
#include <optional>
#include <string>

#include "view/placement/access_keys.h"
#include "view/win32/wide_text.h"

namespace qb::win32 {

namespace {

constexpr int kFirstCommand = 0x4000;  // above the numbers of the controls

// A shortcut as "Ctrl+S": any of the three modifiers, then one letter or digit.
std::optional<ACCEL> Accelerator(std::string_view shortcut, int command) {
  static constexpr std::pair<std::string_view, BYTE> kModifiers[] = {
      {"Ctrl+", FCONTROL}, {"Alt+", FALT}, {"Shift+", FSHIFT}};
  ACCEL accelerator{FVIRTKEY, 0, static_cast<WORD>(command)};
  for (auto [prefix, flag] : kModifiers) {
    if (!shortcut.starts_with(prefix)) continue;
    accelerator.fVirt |= flag;
    shortcut.remove_prefix(prefix.size());
  }
  if (shortcut.size() != 1) return std::nullopt;
  accelerator.key = static_cast<BYTE>(shortcut.front());
  return accelerator;
}

UINT StateOf(const MenuItem& item) {
  return (item.Enabled() ? MFS_ENABLED : MFS_DISABLED) | (item.Checked() ? MFS_CHECKED : MFS_UNCHECKED);
}

std::wstring TextOf(const std::string& caption, const MenuItem& item) {
  return Wide(item.shortcut.empty() ? caption : caption + '\t' + item.shortcut);
}

bool StandsInMenu(const MenuItem& item) {
  return item.Visible() && !item.popup;
}

std::vector<std::string> SharedKeys(const std::vector<MenuItem*>& items) {
  std::vector<std::string> captions;
  for (const MenuItem* item : items) {
    if (StandsInMenu(*item)) captions.push_back(item->Caption());
  }
  return WithAccessKeys(std::move(captions));
}

}  // namespace

NativeMenu::~NativeMenu() {
  // The menu bar itself goes with its window.
  if (accelerators_ != nullptr) ::DestroyAcceleratorTable(accelerators_);
}

int NativeMenu::CommandOf(const MenuItem& item) {
  return commands_.emplace(&item, kFirstCommand + static_cast<int>(commands_.size())).first->second;
}

HMENU NativeMenu::Fill(HMENU menu, const std::vector<MenuItem*>& items, const std::vector<std::string>& captions) {
  bool separator_due = false;
  auto caption = captions.begin();
  for (MenuItem* item : items) {
    if (!StandsInMenu(*item)) continue;
    const std::string& with_key = *caption++;
    // A separator with nothing on one side, or beside another, would look like a mistake.
    if (item->Separator()) {
      separator_due = ::GetMenuItemCount(menu) > 0;
      continue;
    }
    if (separator_due) ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    separator_due = false;
    std::wstring text = TextOf(with_key, *item);
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING | MIIM_ID | MIIM_STATE;
    info.dwTypeData = text.data();
    info.wID = static_cast<UINT>(CommandOf(*item));
    info.fState = StateOf(*item);
    shown_[CommandOf(*item)] = {item, menu, item->Caption(), with_key};
    if (!item->children.empty()) {
      info.fMask |= MIIM_SUBMENU;
      info.hSubMenu = Fill(::CreatePopupMenu(), item->children, SharedKeys(item->children));
    }
    ::InsertMenuItemW(menu, static_cast<UINT>(::GetMenuItemCount(menu)), TRUE, &info);
  }
  return menu;
}

// Nothing of a menu that is to be destroyed is shown any more, nor of those that open from it.
void NativeMenu::Forget(HMENU menu) {
  for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
    if (HMENU below = ::GetSubMenu(menu, i)) Forget(below);
  }
  std::erase_if(shown_, [menu](const auto& entry) { return entry.second.menu == menu; });
}

void NativeMenu::Build(HWND window, const std::vector<MenuItem*>& menus, const std::vector<std::string>& captions) {
  HMENU old = bar_;
  if (old != nullptr) Forget(old);
  bar_ = Fill(::CreateMenu(), menus, captions);
  if (::GetMenuItemCount(bar_) == 0) {
    ::DestroyMenu(bar_);
    bar_ = nullptr;
  }
  if (window != nullptr) ::SetMenu(window, bar_);
  if (old != nullptr) ::DestroyMenu(old);

  std::vector<ACCEL> keys;
  for (const auto& [command, entry] : shown_) {
    if (auto key = Accelerator(entry.item->shortcut, command)) keys.push_back(*key);
  }
  if (accelerators_ != nullptr) ::DestroyAcceleratorTable(accelerators_);
  accelerators_ = keys.empty() ? nullptr : ::CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
}

bool NativeMenu::Refresh(const MenuItem& item) {
  auto command = commands_.find(&item);
  auto found = command == commands_.end() ? shown_.end() : shown_.find(command->second);
  // Of a popup menu that is closed nothing is shown, and what becomes visible in an open one waits for the next time.
  const bool of_popup = [&] {
    for (const MenuItem* menu = &item; menu != nullptr; menu = menu->parent) {
      if (menu->popup) return true;
    }
    return false;
  }();
  if (found == shown_.end()) return of_popup || !item.Visible();
  if (!item.Visible() && !of_popup) return false;
  const Entry& entry = found->second;
  std::wstring text = TextOf(item.Caption() == entry.caption ? entry.caption_with_key : item.Caption(), item);
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_STRING | MIIM_STATE;
  info.dwTypeData = text.data();
  info.fState = StateOf(item);
  return ::SetMenuItemInfoW(entry.menu, static_cast<UINT>(found->first), FALSE, &info) != FALSE;
}

bool NativeMenu::TranslateKey(HWND window, MSG& message) const {
  return accelerators_ != nullptr && ::TranslateAcceleratorW(window, accelerators_, &message) != 0;
}

MenuItem* NativeMenu::ItemOf(int command) const {
  auto found = shown_.find(command);
  return found == shown_.end() ? nullptr : found->second.item;
}

MenuItem* NativeMenu::Track(HWND window, MenuItem& menu) {
  HMENU popup = Fill(::CreatePopupMenu(), menu.children, SharedKeys(menu.children));
  POINT mouse{};
  ::GetCursorPos(&mouse);
  // Without the foreground the menu would stay when the user clicks elsewhere, and without the empty
  // message it would do so the next time.
  ::SetForegroundWindow(window);
  const int command =
      ::TrackPopupMenu(popup, TPM_RIGHTBUTTON | TPM_RETURNCMD | TPM_NONOTIFY, mouse.x, mouse.y, 0, window, nullptr);
  ::PostMessageW(window, WM_NULL, 0, 0);
  MenuItem* chosen = ItemOf(command);
  Forget(popup);
  ::DestroyMenu(popup);
  return chosen;
}

}  // namespace qb::win32
