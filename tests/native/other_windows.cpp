#include "other_windows.h"

#include <algorithm>

namespace native {

OtherWindows::OtherWindows(const std::vector<OtherWindow>& wanted) : thread_([this, &wanted] { Live(wanted); }) {
  open_.wait(false);
}

OtherWindows::~OtherWindows() {
  over_ = true;
  thread_.join();
}

RECT OtherWindows::NormalPlace(std::size_t index) {
  const auto step = static_cast<LONG>(index);
  return {100 + 40 * step, 60 + 30 * step, 100 + 40 * step + 300, 60 + 30 * step + 200};
}

std::size_t OtherWindows::Visible() const {
  return static_cast<std::size_t>(std::count_if(windows_.begin(), windows_.end(), IsWindowVisible));
}

void OtherWindows::Live(const std::vector<OtherWindow>& wanted) {
  for (const OtherWindow& one : wanted) {
    WNDCLASSW window_class{};
    window_class.lpfnWndProc = DefWindowProcW;
    window_class.hInstance = GetModuleHandleW(nullptr);
    window_class.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
    window_class.lpszClassName = one.class_name.c_str();
    // The class of dialog boxes is the system's own.
    if (one.class_name != L"#32770") RegisterClassW(&window_class);
    const RECT place = NormalPlace(windows_.size());
    windows_.push_back(CreateWindowExW(0, one.class_name.c_str(), one.title.c_str(), WS_OVERLAPPEDWINDOW, place.left,
                                       place.top, 300, 200, nullptr, nullptr, window_class.hInstance, nullptr));
    // The process's first command is replaced by that of whoever started it.
    ShowWindow(windows_.back(), SW_SHOWNORMAL);
    ShowWindow(windows_.back(), one.show);
  }
  open_ = true;
  open_.notify_all();
  while (!over_) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) DispatchMessageW(&message);
  }
  for (HWND window : windows_) DestroyWindow(window);
}

}  // namespace native
