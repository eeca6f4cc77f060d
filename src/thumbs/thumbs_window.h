// The thumbnail audit: finds the picture caches of Windows on the fixed disks, shows what is in them as a
// web page, and shreds them.
#pragma once

#include <string>
#include <string_view>

#include "delete/delete_path.h"
#include "delete/shredder.h"
#include "environment/windows_folders.h"
#include "kill/run_state.h"
#include "runtime/channels.h"
#include "runtime/trace_counter.h"
#include "settings/settings.h"
#include "thumbs/disk_walk.h"
#include "widgets/form.h"

namespace qb {

// What the audit works with; all must outlive it.
struct ThumbsNeeds {
  Channels& channels;
  Settings& settings;
  WindowsFolders& folders;
  DeletePath& delete_path;
  TraceCounter& history_removed;
  ThumbTotals& totals;
  const std::string& data_folder;  // looked up at each use
};

class frmThumbs : public Form, private WalkObserver {
 public:
  frmThumbs(const FormHost& host, const ThumbsNeeds& needs);

  // The window goes with the program: nothing is asked, and the pictures in the data folder go too.
  void CloseWithProgram();

  // --- the scan ---
  void cmdScan_Click();
  void Scan_Drives();
  // The path goes into the list, which scrolls sideways to its widest entry.
  void List_Add_Path(ListBox& list, const std::string& path);
  void Reset_Results() { walk_.Reset_Results(); }
  void Enable_Buttons() { SetButtons(true); }
  void Disable_Buttons() { SetButtons(false); }
  void Do_Cancel() override;

  // --- the pictures and their pages ---
  // The bytes of a file; none if it cannot be opened or read.
  std::string Read_Whole_File(const std::string& path);
  // Makes the folder (one level) if it is not there, and replaces the file. `folder` ends with a backslash.
  void Write_Image_File(const std::string& folder, const std::string& name, std::string_view data);
  // Writes each picture of the cache twice and its line into the open page: that of one file if `single`,
  // else the whole report. `number` stands in the names of the pictures, and 11 becomes 12.
  void Split_Images(const std::string& path, std::int32_t& number, bool single);
  // The pictures in all listed caches.
  std::int32_t Count_Images();
  void Open_Report();
  void Write_Report();
  void Close_Report(int file_number);
  void lstThumbs_Click();

  // --- the delete flow ---
  void cmdDeleteAll_Click();
  void Shred_Thumbs_File(const std::string& path);

  clsShredder& Shredder() { return cShred; }

  // What can be asked for by name.
  std::int32_t Files_Searched() const { return Files_Searched_; }
  bool Scan_Cancelled() const override { return Scan_Cancelled_; }
  bool Scan_Running() const { return Scan_Running_; }
  bool Scan_Done() const { return Scan_Done_; }
  bool No_Prompt_On_Close() const { return No_Prompt_On_Close_; }
  bool Report_Busy() const { return Report_Busy_; }
  std::int32_t& Thumbs_Index() { return Thumbs_Index_; }

 protected:
  void Form_Load() override;
  void Form_QueryUnload(bool& cancel, UnloadMode mode) override;
  void Form_Unload(bool& cancel) override;

 private:
  // WalkObserver
  bool PumpMessages() override;
  void EntrySeen() override { ++Files_Searched_; }
  void CacheFound(const std::string& path) override;

  // Messages run, and the wish to cancel is met, once in so many pictures or files.
  static constexpr int kPumpStep = 10;
  // The channel of the whole report's page.
  static constexpr int kReportNumber = 11;

  void ResetControls();
  void SetButtons(bool enabled);
  void HideClickHere();
  void Timer1_Timer();
  void TimerStartScan_Timer();
  void TimerClickHere_Timer();
  void EndScan(const std::string& status);
  void EndWithReport();
  void EndWithoutFind();
  void EndCancelled();
  void CloseAndWipe();
  void ReadTotals();
  void AddToTotals();
  void ShowKills();
  void ShowSearched();
  std::string ReportPath(bool single) const;
  void PrintLines(int file_number, const std::vector<std::string>& lines);
  void PrintPageLine(int file_number, std::string_view line);
  void Write_Header(int file_number);

  ThumbsNeeds needs_;
  DiskWalk walk_;
  clsShredder cShred;
  std::int32_t Files_Searched_ = 0;  // directory entries seen in this scan
  bool Scan_Cancelled_ = false, Scan_Running_ = false, Scan_Done_ = false;
  bool No_Prompt_On_Close_ = false;  // the window closes itself
  bool Report_Busy_ = false;         // the page of one file is being made
  std::int32_t Thumbs_Index_ = 0;    // the number of the next cache file in the names of pictures

  HeadingLabel Label2;
  Label Label1, lblClickInfo, lblStatus, lblCount, lblThumbsCount, lblKills, lblClickHere, lblClickHere2, Label3;
  LinkLabel lblURL;
  ListBox lstThumbs;
  ProgressBar pBar, pBar2;
  Button cmdScan, cmdDeleteAll, cmdCancel;
  Timer Timer1, TimerStartScan, TimerClickHere;
};

}  // namespace qb
