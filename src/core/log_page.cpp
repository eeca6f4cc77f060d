#include "core/log_page.h"

#include "kill/log_step.h"
#include "runtime/text.h"

namespace qb {

namespace {

constexpr const char* kCountTip = "This is the amount of history traces that Quillbarrow has deleted!";

}  // namespace

LogPage::LogPage(Form& form, const TraceCounter& history_removed)
    : form_(form),
      history_removed_(history_removed),
      lstStatus(form, "lstStatus"),
      pBar(form, "pBar"),
      lblJustKilled(form, "lblJustKilled", ""),
      lblQuillbarrowed(form, "lblQuillbarrowed", ""),
      cmdClearLog(form, "cmdClearLog", " Clear Log") {
  cmdClearLog.SetIcon(ButtonIcon::Clear);
  lblJustKilled.SetToolTip(kCountTip);
  lblQuillbarrowed.SetToolTip(kCountTip);
  cmdClearLog.Click = [this] { cmdClearLog_Click(); };
}

Layout LogPage::Arrangement() {
  return Page({Layout(lstStatus).Stretched(), pBar, lblJustKilled, Row({lblQuillbarrowed, cmdClearLog})});
}

void LogPage::ShowTotal() {
  lblQuillbarrowed.SetCaption("Quillbarrow has killed roughly " + NumberText(history_removed_.Value()) +
                              " history traces since installation.");
}

void LogPage::cmdClearLog_Click() {
  lstStatus.Clear();
  lblJustKilled.SetCaption("");
  lstStatus.AddItem(LogTime(form_.platform().system) + " - Quillbarrow log cleared.");
}

}  // namespace qb
