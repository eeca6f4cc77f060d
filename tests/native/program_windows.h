// What several stories do in the program's windows and at its icon.
#pragma once

#include "remote_program.h"

namespace native {

// --- the icon ---

void PostTray(HWND window, UINT mouse);
bool HasIcon(HWND window);
// How many of the program's chords somebody has.
int TakenChords();
// The main window of a program that lives hidden, as Windows starts it.
HWND Resident(const RemoteProgram& program);
// Whether the menu of the icon is open, or closed, after a while.
bool WaitPopup(bool open);
bool OpenPopup(HWND window);
// Presses Yes or No in the box of that title; false if it does not come or stays.
bool Answer(const RemoteProgram& program, const char* title, WORD button);

// --- the watcher ---

// The last browser window closes and starts a run, which shows the main window and hides it.
void LastBrowserCloses(HWND main_window);

// --- the wizard ---

// By its key; null if it does not come.
HWND OpenWizard(const RemoteProgram& program);
// Waits for a step, 1 to 3.
bool AtStep(HWND wizard, int step);

// --- cookies ---

// The two lists of cookies in a window: the Cookie Manager's, or those of the wizard's second step.
class CookieLists {
 public:
  explicit CookieLists(HWND window);
  bool IsOpen() const { return lists_.size() == 2; }
  // Entries in the order of the window.
  Texts ToDelete() const { return RemoteProgram::ListEntries(lists_[0]); }
  Texts ToKeep() const { return RemoteProgram::ListEntries(lists_[1]); }
  // Clicks the entry, then the button between the lists; false if one of them is not there.
  bool Keep(const std::string& entry) const { return Move(lists_[0], entry, " Keep Cookie >>"); }
  bool Remove(const std::string& entry) const { return Move(lists_[1], entry, " << Remove Cookie"); }

 private:
  bool Move(HWND list, const std::string& entry, const std::string& button) const;

  HWND window_ = nullptr;
  std::vector<HWND> lists_;  // to delete, to keep
};

// --- the audit ---

inline constexpr const char* kDoneViewing = "Quillbarrow - Are you done viewing Thumbs.db results?";
inline constexpr const char* kHelperCalls = "C:\\helper-calls.txt";
inline constexpr int kScanTime = 120000;

// Opens the audit by the button of the main window; it scans by itself. Null if it does not come.
HWND OpenAudit(const RemoteProgram& program);
bool WaitLabel(HWND window, const std::string& part);
// Pages go to the helper, which writes down in kHelperCalls what it was given.
void TakePages();

}  // namespace native
