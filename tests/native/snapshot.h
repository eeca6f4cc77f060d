// All files of drive C: and the registry, to see what a run changed.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace qb::native {

class Snapshot {
 public:
  // Takes one now. Files are told apart by attributes, size, time of writing and, up to 1 MB, content.
  static Snapshot Take();
  // What is not the same in `later`, one name a line, in order: "-C:\x" is gone, "+C:\x" is new, "*C:\x"
  // was changed. Keys and values begin with "HKCU\" or "HKLM\".
  std::vector<std::wstring> ChangesTo(const Snapshot& later) const;

 private:
  std::map<std::wstring, std::string> things_;  // name, and what can be seen of it
};

}  // namespace qb::native
