#include "cookie_window.h"

#include <algorithm>

namespace native {

CookieWindow::CookieWindow(RemoteProgram& program) {
  if (!program.PostClick(program.MainWindow(), "Cookie Manager...")) return;
  window_ = program.Window("Quillbarrow 2019 - Cookie Manager");
  if (window_ == nullptr || !WaitFor([&] { return IsWindowVisible(window_) != FALSE; })) return;
  std::vector<HWND> lists;
  for (HWND child = GetWindow(window_, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    char class_name[64] = "";
    GetClassNameA(child, class_name, sizeof class_name);
    if (std::string(class_name) == "ListBox") lists.push_back(child);
  }
  if (lists.size() != 2) return;
  auto left_edge = [](HWND list) {
    RECT place{};
    GetWindowRect(list, &place);
    return place.left;
  };
  if (left_edge(lists[0]) > left_edge(lists[1])) std::swap(lists[0], lists[1]);
  delete_list_ = lists[0];
  keep_list_ = lists[1];
}

bool CookieWindow::ClickEntry(HWND list, const std::string& entry) {
  const std::vector<std::string> entries = RemoteProgram::ListEntries(list);
  const auto found = std::find(entries.begin(), entries.end(), entry);
  if (found == entries.end()) return false;
  const auto index = static_cast<WPARAM>(found - entries.begin());
  RECT place{};
  if (SendMessageA(list, LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&place)) == LB_ERR) return false;
  const LPARAM point = MAKELPARAM(place.left + 5, (place.top + place.bottom) / 2);
  SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, point);
  SendMessageA(list, WM_LBUTTONUP, 0, point);
  return SendMessageA(list, LB_GETSEL, index, 0) > 0;
}

bool CookieWindow::Press(const std::string& text) const {
  HWND button = RemoteProgram::Child(window_, "Button", text);
  if (button == nullptr || !IsWindowEnabled(button)) return false;
  SendMessageA(button, BM_CLICK, 0, 0);
  return true;
}

bool CookieWindow::Save() {
  HWND button = RemoteProgram::Child(window_, "Button", " Save Cookie Setup");
  // Posted, since the button goes with its window.
  return button != nullptr && PostMessageA(button, BM_CLICK, 0, 0) && WaitFor([&] { return !IsWindow(window_); });
}

}  // namespace native
