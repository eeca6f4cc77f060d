// Windows of other programs, held by a process of their own.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <string>
#include <vector>

namespace native {

class OtherWindows {
 public:
  struct Wanted {
    std::string class_name, title;
    int show;  // SW_SHOWNORMAL, SW_SHOWMINIMIZED or SW_SHOWMAXIMIZED
  };
  // Opens them and waits until all are there.
  explicit OtherWindows(const std::vector<Wanted>& wanted);
  ~OtherWindows();  // takes the process away, and all its windows
  OtherWindows(const OtherWindows&) = delete;
  OtherWindows& operator=(const OtherWindows&) = delete;

  // Where such a window stands when it is neither minimised nor maximised.
  static RECT NormalPlace(std::size_t index);
  bool AllOpen() const;
  HWND operator[](std::size_t index) const { return windows_[index]; }
  bool Close(std::size_t index) const;  // false if it is still there after a while

 private:
  PROCESS_INFORMATION process_{};
  std::vector<HWND> windows_;
};

}  // namespace native
