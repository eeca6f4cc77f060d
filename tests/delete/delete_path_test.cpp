// The folder walker on what only the host can put into a folder, and on very many entries.
#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/rehearsal.h"

namespace qb {
namespace {

using test::Rehearsal;

// A listing that gives what is no name, as a foreign file system or a bent conversion does. The names stand on the
// host.
TEST(DeletePath, WhatAListingGivesIsNeverAPath) {
  const char* const names[] = {"..\\..\\victim\\a.txt",
                               "..\\victim",
                               "C:\\victim\\a.txt",
                               "C:",
                               "sub\\..\\..\\victim\\a.txt",
                               "*",
                               "a?",
                               "x<",
                               "q\"",
                               "tab\there",
                               "\\"};
  for (bool folders : {false, true}) {
    Rehearsal rehearsal;
    rehearsal.Play("file C:\\victim\\a.txt keep\nfile C:\\t\\sub\\b x\nfile C:\\t\\ab keep\n");
    for (const char* name : names) {
      const auto bait = rehearsal.folder() / "drives" / "C" / "t" / "sub" / name;
      if (folders) std::filesystem::create_directories(bait / "a.txt");
      if (!folders) std::ofstream(bait) << "bait";
    }
    rehearsal.Reopen();
    rehearsal.Hold(
        "start\ndo Wipe_Folder_Files C:\\t\\sub\nexpect files C:\\victim is a.txt\n"
        "expect text C:\\victim\\a.txt is keep\nexpect text C:\\t\\ab is keep\n"
        "expect exists C:\\t\\sub\\b is no\n",
        folders ? "folders" : "files");
  }
}

TEST(DeletePath, AFolderOfTooManyEntriesStays) {
  constexpr std::size_t kOneTooMany = 32768;
  Rehearsal rehearsal;
  rehearsal.machine().gate().SetRecording(false);
  for (std::size_t i = 0; i < kOneTooMany; ++i) {
    ASSERT_TRUE(rehearsal.machine().MakeFile("C:\\t\\" + std::to_string(i), ""));
  }
  rehearsal.Hold("start\ndo Wipe_Folder_Files C:\\t\nexpect get HistoryRemoved is 0\n");
  EXPECT_EQ(rehearsal.machine().ListBelow("C:\\t")->size(), kOneTooMany);
  // One less is not too many: entries go until the program ends.
  rehearsal.Play("delete C:\\t\\7\nstart\nclose\nduring 4 close frmMain\ndo Wipe_Folder_Files C:\\t\n");
  EXPECT_EQ(rehearsal.machine().ListBelow("C:\\t")->size(), kOneTooMany - 3);
}

}  // namespace
}  // namespace qb
