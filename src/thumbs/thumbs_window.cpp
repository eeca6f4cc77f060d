#include "thumbs/thumbs_window.h"

#include "delete/file_analyzer/file_analyzer.h"
#include "runtime/text.h"
#include "thumbs/report_page.h"

namespace qb {

namespace {

constexpr int kScanMax = 100;
constexpr std::string_view kCancelled = "SCAN CANCELED";

// Each tick of the counters lets messages run, but for one in so many entries.
constexpr std::int32_t kQuietTick = 10000;

// On Windows of these version codes the caches of a user lie in one place; code 8 is never detected.
bool CachesInLocalData(std::int16_t version) {
  return version == 6 || version == 7 || version == 8;
}

constexpr std::string_view kFixedDrive = "Fixed";

}  // namespace

frmThumbs::frmThumbs(const FormHost& host, const ThumbsNeeds& needs)
    : Form(host, "frmThumbs", "Quillbarrow 2019 - Thumbs.db Scan and Removal Screen"),
      needs_(needs),
      walk_(host.platform.files, *this),
      cShred(host.platform, host.life),
      Label2(*this, "Label2", "Quillbarrow 2019 - Thumbs.db Scan and Removal "),
      Label1(
          *this, "Label1",
          "Thumbs.db are Windows hidden image files that contain the history of what images you have viewed on your "
          "PC over the lifetime of your Windows. This is a huge invasion to your privacy as anyone can access these "
          "files and see what pictures and images you have viewed on your computer and Windows will NOT remove these "
          "files by itself... leaving years of your tracks and web history on your computer!"),
      lblClickInfo(
          *this, "lblClickInfo",
          "Click on the hidden Thumbs.db file below to see the contents (or wait until scan is done to see all "
          "images):"),
      lblStatus(*this, "lblStatus", ""),
      lblCount(*this, "lblCount", ""),
      lblThumbsCount(*this, "lblThumbsCount", ""),
      lblKills(*this, "lblKills", ""),
      lblClickHere(*this, "lblClickHere", "Click this Button --->"),
      lblClickHere2(*this, "lblClickHere2", "to Remove Above Files"),
      Label3(*this, "Label3", "For more info on thumbs.db files look at the Wikipedia entry:"),
      lblURL(*this, "lblURL", std::string(kThumbsArticle)),
      lstThumbs(*this, "lstThumbs"),
      pBar(*this, "pBar"),
      pBar2(*this, "pBar2"),
      cmdScan(*this, "cmdScan", "SCAN PC FOR HIDDEN THUMBS.DB"),
      cmdDeleteAll(*this, "cmdDeleteAll", " DELETE ALL THUMBS.DB"),
      cmdCancel(*this, "cmdCancel", " CLOSE"),
      Timer1(*this, "Timer1", 100, false),
      TimerStartScan(*this, "TimerStartScan", 500, false),
      TimerClickHere(*this, "TimerClickHere", 350, false) {
  cmdScan.SetToolTip(
      "Click to Scan your PC for hidden Thumbs.db files.  These files contain your history of what images you have "
      "looked at on your computer.",
      "Scan for Hidden Thumbs.db Files");
  cmdCancel.SetToolTip("Click to Cancel Scan and Close the Thumbs.db Scan and Removal Screen.",
                       "Close Thumbs.db Scan and Removal Screen");
  cmdDeleteAll.SetToolTip("Click to Delete ALL of the above Thumbs.db files in the box above.",
                          "Delete All Thumbs.db Files");
  lstThumbs.SetToolTip(
      "Click the Thumbs.db file you wish to see your image viewing history on.  If you don't see any, click the Scan "
      "button below.");
  cmdScan.Click = [this] { cmdScan_Click(); };
  cmdDeleteAll.Click = [this] { cmdDeleteAll_Click(); };
  cmdCancel.Click = [this] { StepOver(Unload()); };
  cmdCancel.SetCancelButton(true);
  cmdScan.SetIcon(ButtonIcon::Search);
  cmdDeleteAll.SetIcon(ButtonIcon::Kill);
  cmdCancel.SetIcon(ButtonIcon::Cancel);
  lstThumbs.Click = [this] { lstThumbs_Click(); };
  lblURL.Click = [this] { needs_.folders.Open_URL(kThumbsArticle, needs_.data_folder, Window()); };
  Timer1.Tick = [this] { Timer1_Timer(); };
  TimerStartScan.Tick = [this] { TimerStartScan_Timer(); };
  TimerClickHere.Tick = [this] { TimerClickHere_Timer(); };
  Arrange(Column({Label2, Label1, Row({Label3, lblURL}), lblClickInfo, Layout(lstThumbs).Stretched(), lblStatus, pBar,
                  pBar2, Row({lblCount, lblThumbsCount}),
                  Row({cmdScan, lblClickHere, cmdDeleteAll, lblClickHere2, cmdCancel}), lblKills}));
}

// --- the life of the window ---

// What the last opening of the window left in its controls.
void frmThumbs::ResetControls() {
  lstThumbs.Clear();
  lstThumbs.SetHorizontalExtent(0);
  for (Label* label : {&lblCount, &lblThumbsCount}) label->SetCaption("");
  for (Label* label : {&lblStatus, &lblClickHere, &lblClickHere2}) label->SetBold(false);
  for (ProgressBar* bar : {&pBar, &pBar2}) {
    StepOver(bar->SetValue(0));
    StepOver(bar->SetMax(kScanMax));
    bar->SetVisible(false);
  }
  for (Timer* timer : {&Timer1, &TimerStartScan, &TimerClickHere}) timer->SetTimerEnabled(false);
  Enable_Buttons();
  cmdCancel.SetEnabled(true);
  cmdCancel.SetCaption(" CLOSE");
  Scan_Cancelled_ = Scan_Running_ = No_Prompt_On_Close_ = Report_Busy_ = false;
  Thumbs_Index_ = 0;
}

void frmThumbs::Form_Load() {
  Center();
  ResetControls();
  Scan_Done_ = false;
  Files_Searched_ = 0;
  needs_.totals.Thumbs_Located = 0;
  needs_.totals.Thumbs_Deleted = 0;
  HideClickHere();
  ReadTotals();
  ShowKills();
  lblStatus.SetCaption("Initializing Thumbs.db scan...");
  TimerStartScan.SetTimerEnabled(true);
}

void frmThumbs::Form_QueryUnload(bool& cancel, UnloadMode /*mode*/) {
  if (No_Prompt_On_Close_) return;
  if (Scan_Running_) {
    const BoxAnswer answer = platform().desktop.MessageBoxA(
        Window(),
        "Are you sure you want to cancel the Quillbarrow hidden Thumbs.db Scan?\r\n\r\nThe scan will take less than 5 "
        "minutes and is essential for knowing what your Image Viewing history traces are on your computer!",
        "Quillbarrow - Cancel Thumbs.db Scan", kBoxYesNo | kBoxQuestion);
    if (life().Over()) return;
    Scan_Cancelled_ = answer == BoxAnswer::Yes;
    // The cancelled scan ends by itself; until then its window stands.
    cancel = true;
    return;
  }
  if (!Scan_Done_) return;
  if (UpperCase(lblStatus.Caption()).starts_with(kCancelled)) {
    Scan_Cancelled_ = false;
    CloseAndWipe();
    return;
  }
  const BoxAnswer answer = platform().desktop.MessageBoxA(
      Window(),
      "Are you done viewing your Quillbarrow hidden Thumbs.db Fernledger results in your web browser?\r\n\r\n"
      "Quillbarrow needs to remain open to view your Thumbnail results.",
      "Quillbarrow - Are you done viewing Thumbs.db results?", kBoxYesNo | kBoxQuestion);
  if (life().Over()) return;
  if (answer == BoxAnswer::Yes) {
    CloseAndWipe();
  } else {
    cancel = true;
  }
}

void frmThumbs::CloseAndWipe() {
  No_Prompt_On_Close_ = true;
  StepOver(Unload());
  needs_.delete_path.Wipe_Folder_Files(needs_.data_folder + "\\thumbs");
}

void frmThumbs::CloseWithProgram() {
  if (!Loaded()) return;
  const bool pictures = Scan_Running_ || Scan_Done_;
  Scan_Cancelled_ = Scan_Running_;
  No_Prompt_On_Close_ = true;
  if (pictures) {
    CloseAndWipe();
  } else {
    StepOver(Unload());
  }
}

void frmThumbs::Form_Unload(bool& /*cancel*/) {
  needs_.settings.Save(Setting::HistoryRemoved);
  needs_.settings.Save(Setting::ThumbsKilled);
}

void frmThumbs::ReadTotals() {
  for (Setting total : {Setting::ThumbsKilled, Setting::ThumbPicsCountTotal}) {
    needs_.settings.SetNumber(total, needs_.settings.StoredNumber(total, "0"));
  }
}

void frmThumbs::AddToTotals() {
  const auto add = [this](Setting total, std::int32_t count) {
    // A sum that does not fit leaves the total as it is.
    const auto sum = RoundToInt32(static_cast<double>(needs_.settings.Number(total)) + count);
    if (sum) needs_.settings.SetNumber(total, *sum);
  };
  add(Setting::ThumbsKilled, needs_.totals.Thumbs_Deleted);
  add(Setting::ThumbPicsCountTotal, needs_.totals.Thumbnails_Found);
}

void frmThumbs::ShowKills() {
  const Settings& settings = needs_.settings;
  lblKills.SetCaption("Quillbarrow has killed a total of " +
                      std::to_string(settings.Number(Setting::ThumbPicsCountTotal)) + " images in " +
                      std::to_string(settings.Number(Setting::ThumbsKilled)) + " Thumbs.db files since installed.");
}

bool frmThumbs::PumpMessages() {
  return PumpAndLive(platform(), life());
}

void frmThumbs::SetButtons(bool enabled) {
  cmdScan.SetEnabled(enabled);
  cmdDeleteAll.SetEnabled(enabled);
}

void frmThumbs::HideClickHere() {
  lblClickHere.SetVisible(false);
  lblClickHere2.SetVisible(false);
  TimerClickHere.SetTimerEnabled(false);
}

// --- the timers ---

void frmThumbs::TimerStartScan_Timer() {
  cmdScan_Click();
  TimerStartScan.SetTimerEnabled(false);
}

void frmThumbs::ShowSearched() {
  lblCount.SetCaption(std::to_string(Files_Searched_) + " files searched");
  lblThumbsCount.SetCaption(std::to_string(needs_.totals.Thumbs_Located) + " Thumbs.db located");
}

void frmThumbs::Timer1_Timer() {
  ShowSearched();
  if (Files_Searched_ % kQuietTick != 0 && !PumpMessages()) return;
  // A sign of life: the bar tells nothing of how far the scan is.
  StepOver(pBar.SetValue(pBar.Value() >= kScanMax ? 0 : pBar.Value() + 1));
}

void frmThumbs::TimerClickHere_Timer() {
  for (Label* label : {&lblClickHere, &lblClickHere2}) {
    label->SetVisible(true);
    label->SetBold(!label->Bold());
  }
}

// --- the scan ---

void frmThumbs::cmdScan_Click() {
  pBar.SetVisible(true);
  StepOver(pBar.SetValue(0));
  StepOver(pBar.SetMax(kScanMax));
  Scan_Cancelled_ = false;
  Scan_Running_ = true;
  No_Prompt_On_Close_ = false;
  HideClickHere();
  cmdCancel.SetCaption(" CANCEL");
  needs_.totals.Thumbs_Located = 0;
  needs_.totals.Thumbnails_Found = 0;
  Timer1.SetTimerEnabled(true);
  Disable_Buttons();
  Scan_Drives();
  if (life().Over()) return;
  if (Scan_Cancelled_) return EndCancelled();
  ShowSearched();
  if (lstThumbs.ListCount() == 0) return EndWithoutFind();
  Open_Report();
  pBar2.SetVisible(true);
  StepOver(pBar2.SetValue(0));
  StepOver(pBar2.SetMax(lstThumbs.ListCount()));
  Write_Report();
  if (life().Over()) return;
  if (Scan_Cancelled_) return EndCancelled();
  EndWithReport();
}

void frmThumbs::Scan_Drives() {
  const std::int16_t version = needs_.folders.Get_Version_Code();
  Files_Searched_ = 0;
  lstThumbs.Clear();
  Timer1.SetTimerEnabled(true);
  if (!PumpMessages()) return;
  clsFileAnalyzer analyzer(platform(), needs_.channels, life());
  const std::vector<std::string> drives = analyzer.GetDrives();
  for (std::size_t i = 0; i < drives.size(); ++i) {
    lblStatus.SetCaption("Searching " + drives[i] + " for hidden Thumbs.db files...");
    if (analyzer.GetDriveTypeName(drives[i]) == kFixedDrive) {
      if (!PumpMessages()) return;
      // Deliberate: the one folder is walked once for each fixed disk, and what is in it listed as often.
      walk_.Find_Thumbs(CachesInLocalData(version) ? needs_.folders.Get_Special_Folder(kLocalData) : drives[i]);
      if (life().Over()) return;
    }
    StepOver(pBar.SetValue(static_cast<int>(i)));
  }
  Timer1.SetTimerEnabled(false);
}

void frmThumbs::CacheFound(const std::string& path) {
  List_Add_Path(lstThumbs, path);
  ++needs_.totals.Thumbs_Located;
}

void frmThumbs::List_Add_Path(ListBox& list, const std::string& path) {
  constexpr int kMargin = 10;
  list.AddItem(path);
  const int width = watcher().TextWidth(*this, path) + kMargin;
  if (width > list.HorizontalExtent()) list.SetHorizontalExtent(width);
}

void frmThumbs::Do_Cancel() {
  lblStatus.SetCaption("Hidden Thumbs.db scan cancelled...");
  Enable_Buttons();
}

// What every end of a scan does.
void frmThumbs::EndScan(const std::string& status) {
  if (!status.empty()) lblStatus.SetCaption(status);
  Scan_Running_ = false;
  Scan_Done_ = true;
  Enable_Buttons();
  Timer1.SetTimerEnabled(false);
}

void frmThumbs::EndWithoutFind() {
  const std::string news = "Good news, there are ZERO Thumbs.db files found on your computer!";
  StepOver(pBar.SetValue(kScanMax));
  lblStatus.SetCaption(news);
  StepOver(platform().desktop.MessageBoxA(Window(), news, "Quillbarrow - No Thumbs.db files found!",
                                          kBoxOk | kBoxInformation));
  if (life().Over()) return;
  EndScan("");
  No_Prompt_On_Close_ = true;
  StepOver(Unload());
}

void frmThumbs::EndWithReport() {
  Close_Report(kReportNumber);
  EndScan("");
  StepOver(needs_.folders.Shell_Open(ReportPath(false)));
  pBar2.SetVisible(false);
  lblStatus.SetCaption("Done scanning your PC for hidden Thumbs.db files - LAUNCHING RESULTS IN BROWSER WINDOW!");
  StepOver(pBar.SetValue(pBar.Max()));
  cmdCancel.SetCaption(" CLOSE");
  lblCount.SetCaption("DONE -- " + std::to_string(Files_Searched_) + " files searched. ");
  lblThumbsCount.SetCaption(std::to_string(needs_.totals.Thumbnails_Found) + " thumbnails found in " +
                            std::to_string(needs_.totals.Thumbs_Located) + " hidden Thumbs.db files!");
  TimerClickHere.SetTimerEnabled(true);
}

void frmThumbs::EndCancelled() {
  EndScan("SCAN CANCELED! It is strongly recommended to re-start the Scan below.");
  pBar2.SetVisible(false);
  cmdCancel.SetCaption(" CLOSE");
  lblCount.SetCaption("CANCELED! -- " + std::to_string(Files_Searched_) + " files searched. ");
}

}  // namespace qb
