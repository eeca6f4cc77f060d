#include "other_windows.h"

#include <algorithm>

#include "remote_program.h"

namespace native {

OtherWindows::OtherWindows(const std::vector<Wanted>& wanted) {
  std::string command = "C:\\windows_of_others.exe";
  for (const Wanted& window : wanted) {
    command += " \"" + window.class_name + "|" + window.title + "|" + std::to_string(window.show) + "\"";
  }
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process_);
  for (const Wanted& window : wanted) {
    HWND found = nullptr;
    WaitFor([&] {
      found = FindWindowA(window.class_name.c_str(), window.title.c_str());
      return found != nullptr && IsWindowVisible(found);
    });
    windows_.push_back(found);
  }
}

OtherWindows::~OtherWindows() {
  TerminateProcess(process_.hProcess, 0);
  WaitForSingleObject(process_.hProcess, 10000);
  CloseHandle(process_.hThread);
  CloseHandle(process_.hProcess);
}

RECT OtherWindows::NormalPlace(std::size_t index) {
  const auto step = static_cast<LONG>(index);
  return {100 + 40 * step, 60 + 30 * step, 100 + 40 * step + 300, 60 + 30 * step + 200};
}

bool OtherWindows::AllOpen() const {
  return std::all_of(windows_.begin(), windows_.end(), [](HWND window) { return IsWindowVisible(window) != FALSE; });
}

bool OtherWindows::Close(std::size_t index) const {
  HWND window = windows_[index];
  return PostMessageA(window, WM_CLOSE, 0, 0) && WaitFor([=] { return !IsWindow(window); });
}

}  // namespace native
