// The log tab of the main window: the lines of the runs, the bar, and the two counts.
#pragma once

#include <string>

#include "runtime/trace_counter.h"
#include "widgets/form.h"

namespace qb {

class LogPage {
 public:
  // `form` gets the page's controls.
  LogPage(Form& form, const TraceCounter& history_removed);

  Layout Arrangement();
  void AddLine(const std::string& line) { lstStatus.AddItem(line); }
  void SelectLastLine() { StepOver(lstStatus.SetListIndex(lstStatus.ListCount() - 1)); }
  void ShowJustKilled(const std::string& text) { lblJustKilled.SetCaption(text); }
  // The lifetime total as it stands now.
  void ShowTotal();
  ProgressBar& Bar() { return pBar; }
  const ProgressBar& Bar() const { return pBar; }

 private:
  void cmdClearLog_Click();

  Form& form_;
  const TraceCounter& history_removed_;
  ListBox lstStatus;
  ProgressBar pBar;
  Label lblJustKilled, lblQuillbarrowed;
  Button cmdClearLog;
};

}  // namespace qb
