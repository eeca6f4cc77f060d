#include "view/win32/native_menu.h"

#include <algorithm>
#include <optional>
#include <string>

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
  accelerator.key = static_cast<WORD>(shortcut.front());
  return accelerator;
}

UINT StateOf(const MenuItem& item) {
  return (item.Enabled() ? MFS_ENABLED : MFS_DISABLED) | (item.Checked() ? MFS_CHECKED : MFS_UNCHECKED);
}

std::wstring TextOf(const MenuItem& item) {
  return Wide(item.shortcut.empty() ? item.Caption() : item.Caption() + '\t' + item.shortcut);
}

}  // namespace

NativeMenu::~NativeMenu() {
  // The menu bar itself goes with its window.
  if (accelerators_ != nullptr) ::DestroyAcceleratorTable(accelerators_);
}

int NativeMenu::CommandOf(MenuItem& item) {
  for (const auto& [command, known] : items_) {
    if (known == &item) return command;
  }
  const int command = items_.empty() ? kFirstCommand : items_.rbegin()->first + 1;
  items_[command] = &item;
  return command;
}

HMENU NativeMenu::Fill(HMENU menu, const std::vector<MenuItem*>& items) {
  bool separator_due = false;
  for (MenuItem* item : items) {
    if (item->popup || !item->Visible()) continue;
    // A separator with nothing on one side, or beside another, would look like a mistake.
    if (item->Separator()) {
      separator_due = ::GetMenuItemCount(menu) > 0;
      continue;
    }
    if (separator_due) ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    separator_due = false;
    std::wstring text = TextOf(*item);
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING | MIIM_ID | MIIM_STATE;
    info.dwTypeData = text.data();
    info.wID = static_cast<UINT>(CommandOf(*item));
    info.fState = StateOf(*item);
    if (!item->children.empty()) {
      info.fMask |= MIIM_SUBMENU;
      info.hSubMenu = Fill(::CreatePopupMenu(), item->children);
    }
    ::InsertMenuItemW(menu, static_cast<UINT>(::GetMenuItemCount(menu)), TRUE, &info);
  }
  return menu;
}

void NativeMenu::Build(HWND window, const std::vector<MenuItem*>& menus) {
  HMENU old = bar_;
  bar_ = Fill(::CreateMenu(), menus);
  if (::GetMenuItemCount(bar_) == 0) {
    ::DestroyMenu(bar_);
    bar_ = nullptr;
  }
  ::SetMenu(window, bar_);
  if (old != nullptr) ::DestroyMenu(old);

  std::vector<ACCEL> keys;
  for (const auto& [command, item] : items_) {
    if (auto key = Accelerator(item->shortcut, command)) keys.push_back(*key);
  }
  if (accelerators_ != nullptr) ::DestroyAcceleratorTable(accelerators_);
  accelerators_ = keys.empty() ? nullptr : ::CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
}

bool NativeMenu::Refresh(const MenuItem& item) {
  auto found = std::find_if(items_.begin(), items_.end(), [&](const auto& entry) { return entry.second == &item; });
  if (found == items_.end() || bar_ == nullptr) return !item.Visible() || item.InOpenPopup();
  if (!item.Visible()) return false;
  std::wstring text = TextOf(item);
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_STRING | MIIM_STATE;
  info.dwTypeData = text.data();
  info.fState = StateOf(item);
  return ::SetMenuItemInfoW(bar_, static_cast<UINT>(found->first), FALSE, &info) != FALSE;
}

bool NativeMenu::TranslateKey(HWND window, MSG& message) const {
  return accelerators_ != nullptr && ::TranslateAcceleratorW(window, accelerators_, &message) != 0;
}

MenuItem* NativeMenu::ItemOf(int command) const {
  auto found = items_.find(command);
  return found == items_.end() ? nullptr : found->second;
}

MenuItem* NativeMenu::Track(HWND window, MenuItem& menu) {
  HMENU popup = Fill(::CreatePopupMenu(), menu.children);
  POINT mouse{};
  ::GetCursorPos(&mouse);
  // Without the foreground the menu would stay when the user clicks elsewhere, and without the empty
  // message it would do so the next time.
  ::SetForegroundWindow(window);
  const int command =
      ::TrackPopupMenu(popup, TPM_RIGHTBUTTON | TPM_RETURNCMD | TPM_NONOTIFY, mouse.x, mouse.y, 0, window, nullptr);
  ::PostMessageW(window, WM_NULL, 0, 0);
  ::DestroyMenu(popup);
  return ItemOf(command);
}

}  // namespace qb::win32
