// What a kill run is shown on.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "delete/progress.h"

namespace qb {

class RunDisplay : public Progress {
 public:
  // The state of a check box by its name.
  virtual bool Ticked(std::string_view box) const = 0;
  // Whether the user may start another run.
  virtual void EnableKill(bool enabled) = 0;
  virtual void ShowJustKilled(const std::string& text) = 0;
  // Adds a line at the end of the log. Selecting the last one scrolls to it.
  virtual void AddLine(const std::string& line) = 0;
  virtual void SelectLastLine() = 0;
  // Brings the log, or the first page of boxes, to the front.
  virtual void ShowLog() = 0;
  virtual void ShowBoxes() = 0;
  // Moves the window to the middle of the screen.
  virtual void Center() = 0;
  // The entries of the URL cache that a pass works on, or has left.
  virtual void ShowCacheUrls(const std::vector<std::string>& urls) = 0;
};

}  // namespace qb
