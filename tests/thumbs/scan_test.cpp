// Which disks a scan walks on each Windows, and where in a walk it can be cancelled.
#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/rehearsal.h"

namespace qb {
namespace {

using test::Rehearsal;

constexpr const char* kDisks =
    "drive D fixed\ndrive E cdrom\ndrive F remote\ndrive G removable\nfile C:\\a\\Thumbs.db x\nfile D:\\THUMBS.DB x\n"
    "file E:\\Thumbs.db x\nfile F:\\Thumbs.db x\nfile G:\\Thumbs.db x\n"
    "mkdir \"C:\\Users\\user\\Local Settings\\Application Data\"\n"
    "file C:\\Users\\user\\AppData\\Local\\Microsoft\\thumbcache_96.db x\n";

TEST(ThumbsScan, WalksTheFixedDisksOrTheLocalDataOnceForEach) {
  const std::string local = "\"C:\\Users\\user\\AppData\\Local\\Microsoft\\thumbcache_96.db\"";
  const std::string disks = "C:\\a\\Thumbs.db " + local + " D:\\THUMBS.DB";
  const std::string twice = local + " " + local;
  const struct {
    const char* windows;
    std::string list;
  } cases[] = {{"4.0 1", disks}, {"4.10 1", disks}, {"4.90 1", disks}, {"5.0", disks}, {"5.1", disks},
               {"6.0", twice},   {"6.1", twice},    {"6.2", disks},    {"10.0", disks}};
  for (const auto& c : cases) {
    Rehearsal rehearsal;
    rehearsal.Hold(std::string(kDisks) + "windows " + c.windows +
                       "\nstart\nclick cmdThumbs\nadvance 600ms\nexpect list lstThumbs is " + c.list +
                       "\nexpect get Thumbs_Located is " + (c.list == twice ? "2" : "3") +
                       "\nexpect get frmThumbs.lstThumbs.ListCount is " + (c.list == twice ? "2" : "3") + "\n",
                   c.windows);
  }
}

// Cancelled at any entry: what was listed stays, the rest is not walked, and the window can be closed without
// the other question.
TEST(ThumbsScan, CanBeCancelledAtAnyEntry) {
  std::int64_t last_searched = -1;
  for (int pump = 1; pump <= 36; ++pump) {
    Rehearsal rehearsal;
    auto lines =
        rehearsal.Play(std::string(kDisks) + "windows 10.0\nstart\nanswer yes\nduring " + std::to_string(pump) +
                       " close\nclick cmdThumbs\nadvance 501ms\nget Scan_Cancelled\nget Files_Searched\n"
                       "expect get Scan_Running is false\nexpect get cmdScan.Enabled is true\n"
                       "expect get frmThumbs.Timer1.Enabled is false\nboxes\n");
    ASSERT_EQ(rehearsal.status(), rehearse::Status::Held) << pump << "\n" << rehearsal.printed();
    ASSERT_GE(lines.size(), 2u) << rehearsal.printed();
    if (lines[0] == "false") {
      // The scan and its report were over before.
      EXPECT_GT(pump, 20);
      return;
    }
    EXPECT_NE(lines.back().find("Cancel Thumbs.db Scan"), std::string::npos) << rehearsal.printed();
    const std::int64_t searched = std::stoll(lines[1]);
    EXPECT_GE(searched, last_searched) << pump;
    last_searched = searched;
  }
  FAIL() << "no scan came to its end";
}

constexpr const char* kStart =
    "windows 10.0\nmkdir \"C:\\Users\\user\\Local Settings\\Application Data\"\nstart\nclick cmdThumbs\n";
constexpr const char* kPage = "\"C:\\Users\\user\\Local Settings\\Application Data\\Quillbarrow\\Fernledger_thumb";
constexpr const char* kPictures = "\"C:\\Users\\user\\Local Settings\\Application Data\\Quillbarrow\\thumbs\\";

// A cache of so many pictures, each of the four bytes and this one.
std::string Cache(const std::string& path, int pictures, const std::string& byte) {
  std::string line = "file " + path + " hex ";
  while (pictures-- > 0) line += "FFD8FFE0" + byte;
  return line + "\n";
}

// What runs at one pump of a scan, from the first entry (the third pump) to the unpacking: a wish to cancel ends it
// there, and a click shows its file and takes what was counted so far out of the figures, but no picture off a page.
TEST(ThumbsScan, MeetsWhatHappensInItsMiddle) {
  const std::string click = "choose lstThumbs 1", cancel = "close";
  const struct {
    int pump;
    std::string happens;
    const char* held;
  } cases[] = {
      {3, cancel, "expect get Files_Searched is 0\nexpect list lstThumbs is\n"},
      {16, cancel, "expect get Files_Searched is 13\n"},
      {29, cancel, "expect get Files_Searched is 26\nexpect list lstThumbs is C:\\t\\a.thumbs.db C:\\t\\b.thumbs.db\n"},
      {31, cancel, "expect files C:\\thumbs is 1.jpg 10.jpg 2.jpg 3.jpg 4.jpg 5.jpg 6.jpg 7.jpg 8.jpg 9.jpg\n"},
      {30, click, "6 29"},   // after the first file was counted
      {31, click, "28 22"},  // after ten of its pictures were unpacked
      {33, click, "28 7"},
  };
  for (const auto& c : cases) {
    Rehearsal rehearsal;
    std::string script = Cache("C:\\t\\a.thumbs.db", 25, "41") + Cache("C:\\t\\b.thumbs.db", 3, "42") + kStart +
                         "answer yes\nduring " + std::to_string(c.pump) + " " + c.happens + "\nadvance 501ms\n";
    if (c.happens == cancel) {
      script += std::string(c.held) + "expect get lblStatus.Caption has \"SCAN CANCELED!\"\nexpect opened is\n";
    } else {
      const std::string held = c.held;
      const std::size_t blank = held.find(' ');
      script += "expect get Thumbnails_Found is " + held.substr(blank + 1) + "\nexpect text " + kPage +
                "nails.html\" has \"<FONT COLOR=#FF0000>" + held.substr(0, blank) +
                "</FONT> Thumbnails\" t0-1.jpg t0-25.jpg t1-1.jpg t1-3.jpg </html>\nexpect text " + kPage +
                "nails.html\" lacks t50-\nexpect text " + kPage +
                "db.html\" has t50-1.jpg t50-3.jpg <B>C:\\t\\b.thumbs.db</B> </html>\nexpect text " + kPage +
                "db.html\" lacks t50-4 t0- t1-\nexpect opened is " + kPage + "db.html\" " + kPage + "nails.html\"\n";
    }
    rehearsal.Hold(script, std::to_string(c.pump));
  }
}

// Files are numbered from 0 and none is 11; the one of number 50 shares its names with the view of one file.
TEST(ThumbsScan, NumbersTheFilesOfItsPictures) {
  std::string script;
  for (int i = 10; i < 62; ++i) script += Cache("C:\\t\\" + std::to_string(i) + "thumbs.db", 1, std::to_string(i));
  const std::string fifty = std::string("expect hex ") + kPictures + "t50-1.jpg\" is FFD8FFE0";
  Rehearsal rehearsal;
  rehearsal.Hold(script + kStart + "advance 500ms\nexpect get lstThumbs.ListCount is 52\nexpect hex " + kPictures +
                 "t10-1.jpg\" is FFD8FFE020\nexpect exists " + kPictures + "t11-1.jpg\" is no\nexpect hex " +
                 kPictures + "t12-1.jpg\" is FFD8FFE021\nexpect hex " + kPictures +
                 "t13-1.jpg\" is FFD8FFE022\nexpect text " + kPage + "nails.html\" lacks t11-\nexpect exists " + kPage +
                 "db.html\" is no\n" + fifty + "59\nchoose lstThumbs 0\n" + fifty + "10\n");
}

// A listing that gives what is no name, as a foreign file system does: it leads the walk nowhere, and nothing that it
// names is shredded. The names stand on the host.
TEST(ThumbsScan, WhatAListingGivesIsNeverAPath) {
  Rehearsal rehearsal;
  rehearsal.Play("file C:\\victim\\letter.txt keep-this-letter\nfile C:\\t\\sub\\Thumbs.db 12345678\n");
  const auto folder = rehearsal.folder() / "drives" / "C" / "t" / "sub";
  std::ofstream(folder / "thumbcache_\\..\\..\\..\\victim\\letter.txt") << "bait";
  std::ofstream(folder / "thumbcache_*") << "bait";
  std::filesystem::create_directories(folder / "thumbs.db\\..");
  std::filesystem::create_directories(folder / "..\\..\\t");
  rehearsal.Reopen();
  rehearsal.Hold(std::string(kStart) +
                 "advance 600ms\nexpect list lstThumbs is C:\\t\\sub\\Thumbs.db\nclick cmdDeleteAll\n"
                 "expect text C:\\victim\\letter.txt is keep-this-letter\nexpect exists C:\\t\\sub\\Thumbs.db is no\n");
}

}  // namespace
}  // namespace qb
