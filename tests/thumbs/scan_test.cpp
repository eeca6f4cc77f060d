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
    rehearsal.Play(std::string(kDisks) + "windows " + c.windows +
                   "\nstart\nclick cmdThumbs\nadvance 600ms\nexpect list lstThumbs is " + c.list +
                   "\nexpect get Thumbs_Located is " + (c.list == twice ? "2" : "3") +
                   "\nexpect get frmThumbs.lstThumbs.ListCount is " + (c.list == twice ? "2" : "3") + "\n");
    EXPECT_EQ(rehearsal.status(), rehearse::Status::Held) << c.windows << "\n" << rehearsal.printed();
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
  rehearsal.Play(
      "windows 10.0\nmkdir \"C:\\Users\\user\\Local Settings\\Application Data\"\nstart\nclick cmdThumbs\n"
      "advance 600ms\nexpect list lstThumbs is C:\\t\\sub\\Thumbs.db\nclick cmdDeleteAll\n"
      "expect text C:\\victim\\letter.txt is keep-this-letter\nexpect exists C:\\t\\sub\\Thumbs.db is no\n");
  EXPECT_EQ(rehearsal.status(), rehearse::Status::Held) << rehearsal.printed();
}

}  // namespace
}  // namespace qb
