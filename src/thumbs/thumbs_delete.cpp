// The removal of what the scan found.
#include "thumbs/picture_cut.h"
#include "thumbs/thumbs_window.h"

namespace qb {

namespace {

constexpr std::int32_t kPasses = 8;

}  // namespace

void frmThumbs::cmdDeleteAll_Click() {
  ThumbTotals& totals = needs_.totals;
  ReadTotals();
  HideClickHere();
  Disable_Buttons();
  cmdCancel.SetEnabled(false);
  totals.Thumbs_Deleted = 0;
  StepOver(pBar.SetValue(0));
  // Deliberate: with one or two entries the bar keeps the maximum that it has.
  constexpr int kFewest = 3;
  if (lstThumbs.ListCount() >= kFewest) StepOver(pBar.SetMax(lstThumbs.ListCount() - 1));
  lblStatus.SetCaption("Deleting your hidden Thumbs.db files...");
  const int count = lstThumbs.ListCount();
  for (int i = 0; i < count; ++i) {
    const std::string path = lstThumbs.List(i);
    if (IsThumbsCache(path)) {
      Shred_Thumbs_File(path);
      if (life().Over()) return;
      ++totals.Thumbs_Deleted;
      lblStatus.SetCaption("Deleted and File Shredded " + path + "...");
    }
    StepOver(pBar.SetValue(i));
    if (i % kPumpStep == 0 && !PumpMessages()) return;
  }
  lstThumbs.Clear();
  StepOver(pBar.SetValue(pBar.Max()));
  const std::string done = "DONE!  Quillbarrow securely deleted " + std::to_string(totals.Thumbnails_Found) +
                           " images in " + std::to_string(totals.Thumbs_Deleted) + " Thumbs.db files!";
  lblStatus.SetCaption(done);
  lblCount.SetCaption(done);
  lblThumbsCount.SetCaption("");
  // Deliberate: the pictures are those of what ran last, a scan or the view of one file, and a second press
  // adds them once more.
  AddToTotals();
  ShowKills();
  needs_.settings.Save(Setting::HistoryRemoved);
  needs_.settings.Save(Setting::ThumbsKilled);
  needs_.settings.Save(Setting::ThumbPicsCountTotal);
  Enable_Buttons();
  cmdCancel.SetEnabled(true);
}

void frmThumbs::Shred_Thumbs_File(const std::string& path) {
  const auto refuse = [this](std::string_view title, std::string_view text) {
    StepOver(platform().desktop.MessageBoxA(Window(), text, title, kBoxOk | kBoxInformation));
  };
  if (path.empty()) return refuse("No File Selected!", "Please supply a file name before proceeding!");
  if (path.find('.') == std::string::npos) {
    return refuse("Invalid Input!", "File name is invalid! Please select a proper file before proceeding!");
  }
  if (!cShred.File_Exists(path)) {
    return refuse("Invalid Input!", "File does not exist! Please select a proper file before proceeding!");
  }
  cShred.p_Attributes = false;
  cShred.p_Passes = kPasses;
  cShred.p_SourceFile = path;
  cShred.File_Shred();
  if (life().Over()) return;
  needs_.history_removed.Add(1);
}

}  // namespace qb
