// The running Quillbarrow.exe, seen from outside: its windows and controls by class and text.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <initializer_list>

#include "stories.h"

namespace native {

inline constexpr const char* kMainTitle = "Quillbarrow 2019 - Protecting your Privacy since 1997!";

// Waits until the condition holds, looking every 20 ms; false if it never did.
template <typename Condition>
bool WaitFor(Condition condition, int milliseconds = 10000) {
  for (int waited = 0; waited <= milliseconds; waited += 20) {
    if (condition()) return true;
    Sleep(20);
  }
  return false;
}

bool Shown(HWND window);
bool WaitShown(HWND window, bool shown = true, int milliseconds = 10000);
bool WaitGone(HWND window);
bool WaitInFront(HWND window);  // until it has the keyboard
std::string ClassOf(HWND window);
std::vector<HWND> Children(HWND window);  // without those of children
// Presses keys together and lets go of them, in the window that has the keyboard.
void PressKeys(std::initializer_list<WORD> keys);
void PressBossKey(HWND main_window);

class RemoteProgram {
 public:
  // Starts the exe; arguments stand behind its name.
  explicit RemoteProgram(const std::string& arguments = "");
  // The copy that somebody else started, as soon as it has its window.
  static RemoteProgram ThatRuns();
  // Ends the process if it was started here and still runs.
  ~RemoteProgram();
  RemoteProgram(const RemoteProgram&) = delete;
  RemoteProgram& operator=(const RemoteProgram&) = delete;

  // Waits for the main window, hidden or shown; null after ten seconds.
  HWND MainWindow() const;
  // The same until it is shown.
  HWND ShownWindow() const;
  // A shown top-level window of this process with that title; null if there is none within a while.
  HWND Window(const std::string& title) const;
  bool Owns(HWND window) const;
  // A right click on the icon of whatever copy runs; false if there is none.
  static bool OpenIconMenu();
  std::size_t VisibleWindows() const;  // its top-level ones
  // A visible child of a window by class, and by text unless that is empty; null if there is none.
  static HWND Child(HWND window, const std::string& class_name, const std::string& text = "");
  static std::string Text(HWND window);
  // The text of the window's control that holds `part`; empty if none does.
  static std::string LabelWith(HWND window, const std::string& part);
  static Texts ListEntries(HWND list);
  // Picks a tab of the main window by the arrow keys; false if the strip does not follow.
  bool PickTab(int tab) const;
  // Clicks a check box or button of the main window; false if it is not there or takes no click.
  bool Click(const std::string& text) const;
  // The same in any window, as soon as it can be clicked, and without waiting for what the click starts.
  static bool PostClick(HWND window, const std::string& text);
  bool Ticked(const std::string& text) const;
  // Clicks the boxes of a tab that are to be ticked and are not, and those of `others` that are and are not wanted.
  bool Tick(int tab, const Texts& wanted, const Texts& others = {}) const;
  // Presses "Kill Now!" and waits for the end of the run: the button can be pressed again and the log has its
  // closing line. For the first run of this process.
  bool Kill() const;
  bool RunEnded() const;
  // The log's lines without date and time, and what stands below it on the killed traces. After RunEnded.
  Texts LogAndCount() const;
  bool Running(int wait_milliseconds = 0) const;
  bool EndedInOrder() const;  // within a while, with the exit code 0
  bool Hide() const;          // by a close request to the main window
  bool End() const;           // by one more; false if the program still runs

 private:
  explicit RemoteProgram(DWORD process);

  HWND Find(const std::string& title, bool shown, int milliseconds) const;

  PROCESS_INFORMATION process_{};
};

}  // namespace native
