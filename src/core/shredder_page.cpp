#include "core/shredder_page.h"

#include "runtime/text.h"

namespace qb {

namespace {

constexpr int kMostOverwrites = 30;
// Deliberate: the variable in memory takes another default when the program starts.
constexpr std::string_view kDefaultCount = "7";

}  // namespace

ShredderPage::ShredderPage(Form& form, Settings& settings)
    : form_(form),
      settings_(settings),
      note_(
          form, "lblShredderNote",
          "Quillbarrow will securely delete Internet traces so that they can NOT be undeleted or recovered by others.  "
          "Below you can set how many times Quillbarrow overwrites your Internet history traces with completely random "
          "data:"),
      before_(form, "lblOverwriteBefore", "Overwrite your Internet traces"),
      after_(form, "lblOverwriteAfter", "times."),
      saved_(form, "lblSaved", ""),
      count_(form, "txtHistoryOverWrite"),
      save_(form, "cmd_Shredder_Save", " Save"),
      default_(form, "cmd_Shredder_Default", " Default") {
  save_.SetToolTip("Click to save the above Quillbarrow File Shredder secure delete settings.");
  default_.SetToolTip("Set File Shredder settings to Default");
  save_.SetIcon(ButtonIcon::Save);
  default_.SetIcon(ButtonIcon::Reset);
  save_.Click = [this] { cmd_Shredder_Save_Click(); };
  default_.Click = [this] { cmd_Shredder_Default_Click(); };
}

Layout ShredderPage::Arrangement() {
  return Page({note_, Row({before_, count_, after_}), Row({save_, default_}), saved_});
}

void ShredderPage::LoadFromSettings() {
  count_.SetText(settings_.StoredText(Setting::HistoryOW, kDefaultCount));
}

void ShredderPage::cmd_Shredder_Save_Click() {
  if (LeadingNumber(count_.Text()) > kMostOverwrites) {
    StepOver(form_.platform().desktop.MessageBoxA(
        form_.Window(), "The maximum you can set an Internet history trace to be overwritten is 30.",
        "Quillbarrow - File Shredder Max", kBoxOk | kBoxInformation));
    count_.SetText(std::to_string(kMostOverwrites));
  }
  SaveCount();
}

void ShredderPage::cmd_Shredder_Default_Click() {
  count_.SetText(std::string(kDefaultCount));
  SaveCount();
}

void ShredderPage::SaveCount() {
  // A number that does not fit leaves the count as it is, and that is stored again.
  if (auto count = RoundToInt16(LeadingNumber(count_.Text()))) settings_.SetNumber(Setting::HistoryOW, *count);
  settings_.Save(Setting::HistoryOW);
  saved_.SetCaption("Saved!  Traces will be overwritten " + settings_.TextForm(Setting::HistoryOW) + " times!");
}

}  // namespace qb
