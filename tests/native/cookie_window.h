// The Cookie Manager of the running program, worked as a user does.
#pragma once

#include <string>
#include <vector>

#include "remote_program.h"

namespace native {

class CookieWindow {
 public:
  // Opens it by the button on the main window, whose first page is in front.
  explicit CookieWindow(RemoteProgram& program);
  bool IsOpen() const { return delete_list_ != nullptr && keep_list_ != nullptr; }
  // Entries in the order of the window.
  std::vector<std::string> ToDelete() const { return RemoteProgram::ListEntries(delete_list_); }
  std::vector<std::string> ToKeep() const { return RemoteProgram::ListEntries(keep_list_); }
  // Clicks the entry, then the button between the lists; false if one of them is not there.
  bool Keep(const std::string& entry) { return ClickEntry(delete_list_, entry) && Press(" Keep Cookie >>"); }
  bool Remove(const std::string& entry) { return ClickEntry(keep_list_, entry) && Press(" << Remove Cookie"); }
  // Saves, which closes the window; false if it stays.
  bool Save();

 private:
  static bool ClickEntry(HWND list, const std::string& entry);
  bool Press(const std::string& text) const;

  HWND window_ = nullptr, delete_list_ = nullptr, keep_list_ = nullptr;
};

}  // namespace native
