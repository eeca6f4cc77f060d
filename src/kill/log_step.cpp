#include "kill/log_step.h"

#include <iterator>

#include "kill/class_table.h"
#include "runtime/text.h"

namespace qb {

namespace {

constexpr int kUnattendedBar = 30;
constexpr int kManualBar = 80;

// By code, from 1. The two codes of the thumbnail audit are put together below.
constexpr std::string_view kTexts[] = {
    " - Searching...",
    " - Killing Internet Explorer's URL address droplist box... success!",
    " - Killing Internet Explorer's history file... success!",
    " - Killing Internet Explorer's temp files...(please wait)",
    " - Killing Internet Explorer's cookies... success!",
    " - Killing Windows Start button, Run droplist box... success!",
    " - Killing Windows Recent Documents list... success!",
    " - Killing AOL's droplist... success!",
    " - Killing Internet Explorer AutoComplete database... success!",
    " - Killing AOL's Cache... success!",
    " - Killing AOL's Cookies... success!",
    " - Killing INDEX.DAT files... in use!  All the INDEX.DAT files will be killed on reboot!",
    " - Killing INDEX.DAT files... in use!  All the INDEX.DAT files will be killed on reboot!",
    " - Killing Windows Media Player recent lists... success!",
    " - Killing Windows Recycle Bin... success!",
    " - Killing Mozilla FireFox URL address droplist box... success!",
    " - Killing Mozilla FireFox history file... success!",
    " - Killing Mozilla FireFox cache...(please wait)",
    " - Killing Mozilla FireFox cookies... success!",
    " - Killing Windows Fragmented Files (*.CHK)... success!",
    " - Killing Windows TEMP folder... success!",
    " - Successful!  Your privacy is protected.",
    " - Killing AOL's History files... success!",
    " - Killing MS Office recent file lists... success!",
    " - Killing Google Bar history list... success!",
    " - Killing Internet Explorer's Search History droplist... success!",
    " - Killing Mozilla FireFox AutoComplete... success!",
    " - Killing Mozilla FireFox Download List... success!",
    "",
    "",
    " - Killing Google Chrome Visited Sites history... success!",
    " - Killing Google Chrome History files... success!",
    " - Killing Google Chrome Cache files... success!",
    " - Killing Google Chrome Cookie files... success!",
    " - Killing Google Chrome AutoComplete files... success!",
    " - Killing Google Chrome Archived History file... success!",
    " - Killing Google Chrome Thumbnail files... success!",
    " - Killing Apple Safari History files... success!",
    " - Killing Apple Safari Cache files... success!",
    " - Killing Apple Safari Cookie files... success!",
    " - Killing Apple Safari Download files... success!",
    " - Killing Apple Safari AutoComplete files... success!",
    " - Killing Apple Safari Thumbnail files... success!",
    " - Killing Apple Safari Top Sites files... success!",
    " - Killing Google Chrome HTML5 LocalStorage files... success!",
    " - Killing Google Chrome Jump List Icons files... success!",
    " - Killing Google Chrome Session data files... success!",
    " - Killing Mozilla Firefox Jump List Icons/Cache files... success!",
    " - Killing Mozilla Firefox Session data files... success!",
    " - Killing Apple Safari HTML5 LocalStorage files... success!",
    " - Killing Apple Safari Session data files files... success!",
    " - Killing Google Chrome flash cookie data files files... success!",
    " - Killing Internet Explorer crash recovery data files... success!",
    " - Killing MS Edge browser history, cache, cookies and Web Cache... success!",
};

static_assert(std::size(kTexts) == kLastLogCode);

// A long step follows these lines and drives the bar itself.
bool LongStepFollows(int code) {
  return code == 4 || code == 18;
}

}  // namespace

std::string LogText(int code, const ThumbTotals& thumbs) {
  const std::string images = std::to_string(thumbs.Thumbnails_Found) + " images in ";
  if (code == kLogThumbsKilled) {
    return " - Killed and Shredded " + images + std::to_string(thumbs.Thumbs_Deleted) + " hidden Thumbs.db files!";
  }
  if (code == kLogThumbsFound) {
    return " - Found " + images + std::to_string(thumbs.Thumbs_Located) +
           (thumbs.Thumbs_Located != 0 ? " hidden Thumbs.db files!  NONE REMOVED!" : " hidden Thumbs.db files.");
  }
  const bool known = code >= 1 && static_cast<std::size_t>(code) <= std::size(kTexts);
  return known ? std::string(kTexts[code - 1]) : std::string();
}

std::string LogTime(System& system) {
  const SystemTime now = system.GetLocalTime();
  return DateText(now) + " " + TimeText(now);
}

void RunLog::AddLine(const std::string& text) {
  display_.AddLine(LogTime(needs_.platform.system) + text);
  display_.SelectLastLine();
}

void RunLog::Log_Step(std::int16_t code) {
  if (needs_.life.Over()) return;
  const std::int32_t stealth = needs_.settings.Number(Setting::Stealth);
  if (stealth != 0 && !(stealth == 1 && needs_.state.ManualRun)) return;
  display_.Center();

  const int steps = needs_.state.UnattendedRun ? kUnattendedBar : kManualBar;
  if (code == kLogProtected) {
    display_.SetValue(1);
    display_.SetMax(steps);
  }
  if (const std::string text = LogText(code, needs_.thumbs); !text.empty()) {
    display_.AddLine(LogTime(needs_.platform.system) + text);
  }
  display_.SelectLastLine();
  if (LongStepFollows(code)) return;

  display_.Refresh();
  display_.SetMax(steps);
  for (int value = 1; value <= steps; ++value) {
    display_.SetValue(value);
    if (!PumpAndLive(needs_.platform, needs_.life)) return;
  }
}

}  // namespace qb
