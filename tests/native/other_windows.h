// Windows of another program than the one that is tried.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace native {

struct OtherWindow {
  std::wstring class_name, title;
  int show = SW_SHOWNORMAL;  // or SW_SHOWMINIMIZED or SW_SHOWMAXIMIZED
};

// A thread of their own answers for them.
class OtherWindows {
 public:
  // Opens them and waits until all are there.
  explicit OtherWindows(const std::vector<OtherWindow>& wanted);
  ~OtherWindows();
  OtherWindows(const OtherWindows&) = delete;
  OtherWindows& operator=(const OtherWindows&) = delete;

  // Where such a window stands when it is neither minimised nor maximised.
  static RECT NormalPlace(std::size_t index);
  std::size_t Visible() const;
  HWND operator[](std::size_t index) const { return windows_[index]; }

 private:
  void Live(const std::vector<OtherWindow>& wanted);

  std::vector<HWND> windows_;
  std::atomic<bool> open_ = false, over_ = false;
  std::thread thread_;  // the last, as it uses the others
};

}  // namespace native
