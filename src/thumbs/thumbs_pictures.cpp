// The pictures in the caches and the pages that show them.
#include <new>
#include <stdexcept>

#include "runtime/folders.h"
#include "runtime/html_text.h"
#include "runtime/text.h"
#include "thumbs/picture_cut.h"
#include "thumbs/report_page.h"
#include "thumbs/thumbs_window.h"

namespace qb {

namespace {

// Both pages are written under fixed numbers, so that one of each can be open.
constexpr int kSinglePageNumber = 50;
constexpr int kReportSection = 1;
constexpr std::string_view kPageName = "THUMBS.DB";

// The folder of the second copies: at the root of the current drive.
constexpr std::string_view kRootCopies = "\\thumbs\\";
// The fourth byte of a picture, and what the second copy has in its place.
constexpr char kApp0 = '\xE0';
constexpr char kCopyMark = '\xC0';

}  // namespace

std::string frmThumbs::ReportPath(bool single) const {
  return needs_.data_folder + (single ? "\\Fernledger_thumbdb.html" : "\\Fernledger_thumbnails.html");
}

void frmThumbs::PrintPageLine(int file_number, std::string_view line) {
  StepOver(needs_.channels.PrintLine(file_number, HtmlText(platform().system, line)));
}

void frmThumbs::PrintLines(int file_number, const std::vector<std::string>& lines) {
  for (const std::string& line : lines) PrintPageLine(file_number, line);
}

void frmThumbs::Write_Header(int file_number) {
  PrintLines(file_number, HeaderLines(kReportSection, kPageName));
}

std::string frmThumbs::Read_Whole_File(const std::string& path) {
  Channels& channels = needs_.channels;
  const int number = channels.FreeNumber();
  std::string bytes;
  if (!Ok(channels.Open(number, path, ChannelMode::BinaryInput))) return bytes;
  const std::uint64_t length = channels.Length(number).value_or(0);
  try {
    // At once, so that the file is held once and in no more room than it takes.
    bytes.reserve(length);
    if (!Ok(channels.Get(number, 1, length, bytes))) bytes.clear();
  } catch (const std::bad_alloc&) {
    bytes.clear();
  } catch (const std::length_error&) {
    bytes.clear();
  }
  StepOver(channels.Close(number));
  return bytes;
}

void frmThumbs::Write_Image_File(const std::string& folder, const std::string& name, std::string_view data) {
  Channels& channels = needs_.channels;
  // The root of a drive is open to others: a junction in the folder's place leads the pictures nowhere.
  const std::string plain = WithoutBackslash(folder);
  if (!needs_.delete_path.IsPlainFolder(plain) && !Ok(platform().files.CreateDirectoryA(plain))) return;
  const int number = channels.FreeNumber();
  if (!Ok(channels.Open(number, folder + name, ChannelMode::Output))) return;
  StepOver(channels.PrintBytes(number, data));
  StepOver(channels.Close(number));
}

void frmThumbs::Split_Images(const std::string& path, std::int32_t& number, bool single) {
  Files& files = platform().files;
  lblStatus.SetCaption("Loading " + path + "...");
  std::string bytes = Read_Whole_File(path);
  lblStatus.SetCaption("Splitting images from " + path + "...");
  const std::size_t count = CountPictures(bytes);
  lblStatus.SetCaption("Extracting images from " + path + "...");
  StepOver(pBar.SetValue(0));
  // The number of the report's channel is never one of a cache file.
  if (number == kReportNumber) ++number;
  const int page = single ? kSinglePageNumber : kReportNumber;
  std::size_t start = FindPictureStart(bytes);
  for (std::size_t i = 1; i <= count; ++i) {
    const std::size_t next = FindPictureStart(bytes, start + kPictureStart.size());
    const std::string_view picture = std::string_view(bytes).substr(start, next - start);
    const std::string index = std::to_string(i);
    // Deliberate: nothing reads this copy, which is no JPEG by its mark, and nothing removes it.
    char& mark = bytes[start + kPictureStart.size() - 1];
    mark = kCopyMark;
    // There anybody may have put a link: it is replaced, and what it leads to keeps its content.
    const std::string folder(kRootCopies), copy = index + ".jpg";
    if (!IsLink(files, folder + copy) || Ok(files.DeleteFileA(folder + copy))) Write_Image_File(folder, copy, picture);
    mark = kApp0;
    Write_Image_File(needs_.data_folder + "\\thumbs\\", "t" + std::to_string(number) + "-" + index + ".jpg", picture);
    PrintPageLine(page, PictureLine(needs_.data_folder, number, i));
    ++needs_.totals.Thumbnails_Found;
    StepOver(pBar.SetMax(static_cast<int>(count)));
    StepOver(pBar.SetValue(static_cast<int>(i)));
    start = next;
    if (i % std::size_t{kPumpStep} == 0 && (!PumpMessages() || Scan_Cancelled_)) return;
  }
  // Deliberate: the number decides and not the flag, so the 51st file of a scan tries it too, at a page
  // that is not open.
  if (number == kSinglePageNumber) {
    PrintPageLine(kSinglePageNumber,
                  "<BR>"
                  "<BR>" +
                      OriginLine(lstThumbs.List(lstThumbs.ListIndex())));
  }
}

std::int32_t frmThumbs::Count_Images() {
  std::int32_t& found = needs_.totals.Thumbnails_Found;
  found = 0;
  lblStatus.SetCaption("Counting Thumbnail images located inside your Thumbs.db files...");
  StepOver(pBar.SetMax(lstThumbs.ListCount() - 1));
  for (int i = 0; i < lstThumbs.ListCount(); ++i) {
    const std::string path = lstThumbs.List(i);
    if (IsThumbsCache(path)) found += static_cast<std::int32_t>(CountPictures(Read_Whole_File(path)));
    StepOver(pBar.SetValue(i));
    if (i % kPumpStep == 0 && !PumpMessages()) return 0;
  }
  StepOver(pBar.SetValue(pBar.Max()));
  const std::int32_t counted = found;
  found = 0;
  return counted;
}

void frmThumbs::Open_Report() {
  // After a cancelled scan the number is still open, and this page goes on where that one stopped.
  StepOver(needs_.channels.Open(kReportNumber, ReportPath(false), ChannelMode::Output));
  Write_Header(kReportNumber);
}

void frmThumbs::Write_Report() {
  StepOver(pBar.SetValue(0));
  StepOver(pBar.SetMax(lstThumbs.ListCount()));
  const std::int32_t total = Count_Images();
  if (life().Over()) return;
  PrintLines(kReportNumber, IntroductionLines(false));
  PrintPageLine(kReportNumber, TotalsLine(total, lstThumbs.ListCount()));
  lblStatus.SetCaption("Processing images in your hidden thumbs.db files...");
  for (int i = 0; i < lstThumbs.ListCount(); ++i) {
    const std::string path = lstThumbs.List(i);
    if (IsThumbsCache(path)) {
      Split_Images(path, Thumbs_Index_, false);
      if (life().Over()) return;
      PrintPageLine(kReportNumber, "<BR>" + OriginLine(path));
      ++Thumbs_Index_;
    }
    StepOver(pBar2.SetValue(Thumbs_Index_));
    if (i % kPumpStep == 0 && (!PumpMessages() || Scan_Cancelled_)) return;
  }
  // Deliberate: one more than there are pictures. The figures that are shown and stored have it.
  ++needs_.totals.Thumbnails_Found;
  lblStatus.SetBold(true);
}

void frmThumbs::Close_Report(int file_number) {
  PrintLines(file_number, FootLines());
  StepOver(needs_.channels.Close(file_number));
}

void frmThumbs::lstThumbs_Click() {
  if (Report_Busy_) return;
  Report_Busy_ = true;
  StepOver(needs_.channels.Open(kSinglePageNumber, ReportPath(true), ChannelMode::Output));
  Write_Header(kSinglePageNumber);
  StepOver(Count_Images());
  if (life().Over()) return;
  PrintLines(kSinglePageNumber, IntroductionLines(true));
  if (const std::string path = lstThumbs.List(lstThumbs.ListIndex()); IsThumbsCache(path)) {
    std::int32_t number = kSinglePageNumber;
    Split_Images(path, number, true);
  }
  if (life().Over()) return;
  Close_Report(kSinglePageNumber);
  Report_Busy_ = false;
  StepOver(needs_.folders.Shell_Open(ReportPath(true)));
}

}  // namespace qb
