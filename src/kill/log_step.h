// The log line and the bar of one step of a run.
#pragma once

#include <cstdint>
#include <string>

#include "kill/kill_needs.h"
#include "kill/run_display.h"

namespace qb {

inline constexpr std::int16_t kLogSearching = 1;
inline constexpr std::int16_t kLogProtected = 22;
inline constexpr std::int16_t kLogThumbsKilled = 29;
inline constexpr std::int16_t kLogThumbsFound = 30;

// The text of a code from 1 to 54, from " - " on; empty for any other code.
std::string LogText(int code, const ThumbTotals& thumbs);
// The present date and time as every line of the log begins with them.
std::string LogTime(System& system);

class RunLog {
 public:
  RunLog(const KillNeeds& needs, RunDisplay& display) : needs_(needs), display_(display) {}

  // Writes the line of the code, selects the last line and fills the bar, pumping messages after each
  // step. Nothing happens in an unattended run in Stealth mode. A code outside 1 to 54 writes no line.
  void Log_Step(std::int16_t code);
  // Adds a line of another text, with date and time, and selects it.
  void AddLine(const std::string& text);

 private:
  const KillNeeds needs_;
  RunDisplay& display_;
};

}  // namespace qb
