// Starts Quillbarrow.exe and works it from outside, through ordinary window messages and the keyboard.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "platform/win32/windows_api.h"

namespace qb::native {

// Waits for what another process does. False if it has not come about after half a minute.
bool Within(const std::function<bool()>& condition);

// A window of another process, or none.
class Window {
 public:
  explicit Window(HWND handle = nullptr) : handle_(handle) {}
  HWND handle() const { return handle_; }
  explicit operator bool() const { return handle_ != nullptr; }
  bool Visible() const { return ::IsWindowVisible(handle_) != FALSE; }
  bool Enabled() const { return ::IsWindowEnabled(handle_) != FALSE; }
  std::wstring Text() const;
  std::wstring ClassName() const;

  // All controls of the window, shown or not.
  std::vector<Window> Children() const;
  // By class and text, access keys left out. The first that is visible, else the first.
  Window Child(const std::wstring& class_name, const std::wstring& text) const;

  // Posted and not sent: what the click starts may run for long or open a box.
  void Click() const { ::PostMessageW(handle_, BM_CLICK, 0, 0); }
  bool Checked() const { return ::SendMessageW(handle_, BM_GETCHECK, 0, 0) == BST_CHECKED; }
  // Clicks a check box that is not as wanted; false if it does not take the state.
  bool Tick(bool wanted = true) const;
  void Close() const { ::PostMessageW(handle_, WM_CLOSE, 0, 0); }
  std::vector<std::wstring> ListEntries() const;
  // Turns to a page of a tab strip.
  void TurnTo(int page) const;

 private:
  HWND handle_;
};

class RunningProgram {
 public:
  explicit RunningProgram(const std::wstring& arguments = {});
  // A program that still runs is ended.
  ~RunningProgram();
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  bool Runs() const;
  // Waits for its end; its exit code, or 0xFFFFFFFF if it has not ended.
  DWORD ExitCode() const;
  // The top-level window of that class whose title begins so; waits for it. `visible` asks for a visible one.
  Window Find(const wchar_t* class_name, const std::wstring& title, bool visible = true) const;
  Window MainWindow(bool visible = true) const {
    return Find(L"QuillbarrowWindow", L"Quillbarrow 2019 - Prot", visible);
  }

 private:
  Window FindNow(const wchar_t* class_name, const std::wstring& title, bool visible) const;
  PROCESS_INFORMATION process_{};
};

// Presses keys together and lets go of them, in the window that has the keyboard.
void PressKeys(std::initializer_list<WORD> keys);

}  // namespace qb::native
