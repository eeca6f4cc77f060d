// The running Quillbarrow.exe, seen from outside: its windows and controls by class and text.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace native {

// Presses keys together and lets go of them, in the window that has the keyboard.
void PressKeys(std::initializer_list<WORD> keys);

class RemoteProgram {
 public:
  // Starts the exe; arguments stand behind its name.
  explicit RemoteProgram(const std::string& arguments);
  // Ends the process if it still runs.
  ~RemoteProgram();
  RemoteProgram(const RemoteProgram&) = delete;
  RemoteProgram& operator=(const RemoteProgram&) = delete;

  // Waits for the main window, hidden or shown; null after ten seconds.
  HWND MainWindow();
  // A top-level window of this process with that title; null if there is none within the time.
  HWND Window(const std::string& title, int milliseconds = 5000);
  bool Owns(HWND window) const;
  // A right click on the icon of whatever copy runs; false if there is none.
  static bool OpenIconMenu();
  int VisibleWindows() const;  // its top-level ones
  // A visible child of a window by class, and by text unless that is empty; null if there is none.
  static HWND Child(HWND window, const std::string& class_name, const std::string& text);
  static std::string Text(HWND window);
  static std::vector<std::string> ListEntries(HWND list);
  // Picks a tab of the main window by the arrow keys; false if the strip does not follow.
  bool PickTab(int tab);
  // Clicks a check box or button of the main window; false if it is not there or takes no click.
  bool Click(const std::string& text);
  // The same without waiting for what the click starts.
  bool PostClick(HWND window, const std::string& text);
  bool Ticked(const std::string& text);
  // Presses "Kill Now!" and waits for the end of the run: the button can be pressed again and the log has its
  // closing line. For the first run of this process.
  bool Kill();
  bool RunEnded();
  // The log's lines without date and time, and what stands below it on the killed traces. After RunEnded.
  std::vector<std::string> LogAndCount();
  bool Running(int wait_milliseconds = 0);
  // The exit code of a process that has ended; false if it cannot be asked.
  bool ExitCode(DWORD& code) const { return GetExitCodeProcess(process_.hProcess, &code) != FALSE; }
  void Close();  // posts a close request to the main window
  bool End();    // closes it twice, the first time only hides it; false if the program still runs

 private:
  PROCESS_INFORMATION process_{};
};

// Waits until the condition holds, looking every 20 ms; false if it never did.
template <typename Condition>
bool WaitFor(Condition condition, int milliseconds = 10000) {
  for (int waited = 0; waited <= milliseconds; waited += 20) {
    if (condition()) return true;
    Sleep(20);
  }
  return false;
}

}  // namespace native
