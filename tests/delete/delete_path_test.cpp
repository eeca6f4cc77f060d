// The quick wipe and the folder walker at their edges.
#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/rehearsal.h"

namespace qb {
namespace {

using test::Rehearsal;

TEST(DeletePath, EdgesOfTheWipeAndTheWalker) {
  struct Case {
    const char* what;
    const char* script;
  };
  const Case cases[] = {
      {"any size ends the same way, and only the first byte is written over",
       "file C:\\t\\one size 1\nfile C:\\t\\large size 1000000\nstart\ncalls\ndo Wipe_File C:\\t\\large\n"
       "expect calls FlushFileBuffers has \"FlushFileBuffers(#1) = 0\"\ndo Wipe_File C:\\t\\one\nexpect files C:\\t "
       "is\n"},
      {"a file that is not there is made and deleted",
       "mkdir C:\\t\nstart\ncalls\ndo Wipe_File C:\\t\\none\nexpect exists C:\\t\\none is no\n"
       "expect calls DeleteFileA is \"DeleteFileA(\"\"C:\\t\\none\"\") = 1\"\n"},
      {"a read-only file stays as it was",
       "file C:\\t\\a keep\nattrib C:\\t\\a +r\nstart\ndo Wipe_File C:\\t\\a\n"
       "expect text C:\\t\\a is keep\n"},
      {"what cannot be opened",
       "file C:\\t\\a x\nfile C:\\t\\b x\nlock C:\\t\\b\nstart\n"
       "expect do File_Can_Open C:\\t\\a is true\nexpect do File_Can_Open C:\\t\\b is false\n"
       "expect do File_Can_Open C:\\t is false\nexpect do File_Can_Open C:\\none is false\n"},
      {"a missing folder ends with the bar at its maximum",
       "start\ndo Wipe_Folder_Files C:\\none\nexpect get pBar.Value is 1000\nexpect get HistoryRemoved is 0\n"},
      {"only the top level is plainly deleted",
       "file C:\\t\\a x\nfile C:\\t\\sub\\b x\nstart\ncalls\ndo Delete_Folder_Files C:\\t\nexpect files C:\\t is "
       "sub\\\n"
       "expect get HistoryRemoved is 3\nexpect calls WriteFile lacks C:\\t\\a\n"},
      {"hidden and system entries count only when asked for",
       "file C:\\t\\a.x 1\nfile C:\\t\\b.x 1\nfile C:\\t\\c.x 1\nattrib C:\\t\\b.x +h\nattrib C:\\t\\c.x +s\nstart\n"
       "expect do Count_Matching_Files C:\\t\\*.x is 1\nexpect do Count_Matching_Files C:\\t\\*.x 1 is 2\n"
       "expect do Count_Matching_Files C:\\t\\*.x 1 1 is 3\n"},
      {"a junction is counted and left, one to its own parent too",
       "file C:\\keep\\a x\nfile C:\\t\\b x\nlink C:\\t\\j C:\\keep\nlink C:\\t\\loop C:\\t\nstart\n"
       "do Wipe_Folder_Files C:\\t\nexpect get HistoryRemoved is 3\nexpect exists C:\\keep\\a is file\n"
       "expect files C:\\t is j\\ loop\\\n"},
      {"a folder that is itself a junction is not entered, one behind a junction is",
       "file C:\\keep\\a x\nfile C:\\keep\\t\\b x\nlink C:\\j C:\\keep\nlink C:\\w C:\\WINDOWS\nfile C:\\WINDOWS\\c x\n"
       "start\ndo Wipe_Folder_Files C:\\j\ndo Delete_Folder_Files C:\\w\nexpect get HistoryRemoved is 0\n"
       "expect exists C:\\keep\\a is file\nexpect exists C:\\WINDOWS\\c is file\ndo Wipe_Folder_Files C:\\j\\t\n"
       "expect exists C:\\keep\\t\\b is no\n"},
      {"an error at one entry does not hide the rest, and one at every entry ends",
       "file C:\\t\\a x\nfile C:\\t\\b x\nfile C:\\t\\c x\nstart\nfail FindNextFileA 3 1392\n"
       "do Wipe_Folder_Files C:\\t\nexpect files C:\\t is\nfile C:\\t\\d x\nfail FindNextFileA every 1392\n"
       "do Wipe_Folder_Files C:\\t\nexpect text C:\\t\\d is x\n"},
      {"a close request that really ends the program stops the walk",
       "file C:\\t\\a x\nfile C:\\t\\b x\nfile C:\\t\\c x\nstart\nclose\nduring 3 close frmMain\n"
       "do Wipe_Folder_Files C:\\t\nexpect running is no\nexpect exists C:\\t\\a is no\nexpect exists C:\\t\\c is "
       "file\n"},
  };
  for (const Case& c : cases) {
    Rehearsal rehearsal;
    rehearsal.Play(c.script);
    EXPECT_EQ(rehearsal.status(), rehearse::Status::Held) << c.what << "\n" << rehearsal.printed();
  }
}

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
    rehearsal.Play(
        "start\ndo Wipe_Folder_Files C:\\t\\sub\nexpect files C:\\victim is a.txt\n"
        "expect text C:\\victim\\a.txt is keep\nexpect text C:\\t\\ab is keep\n"
        "expect exists C:\\t\\sub\\b is no\n");
    EXPECT_EQ(rehearsal.status(), rehearse::Status::Held) << folders << rehearsal.printed();
  }
}

// With or without a closing backslash, only the form that stands here is caught, in any case.
TEST(DeletePath, RefusesTenFolders) {
  const std::string refused[] = {"c:\\",
                                 "C:\\Windows",
                                 "D:\\WINDOWS\\",
                                 "C:\\WINNT",
                                 "D:\\WINNT\\",
                                 "C:\\Program Files",
                                 "C:\\WINNT\\SYSTEM\\",
                                 "D:\\WINDOWS\\SYSTEM\\",
                                 "D:\\PROGRAM FILES\\",
                                 "d:\\"};
  std::string script = "drive D fixed\nfile C:\\WINDOWS\\a x\nfile \"C:\\Program Files\\a\" x\n";
  for (const char* folder : {"D:\\WINDOWS\\SYSTEM", "C:\\WINNT\\SYSTEM", "D:\\WINNT", "\"D:\\PROGRAM FILES"}) {
    script += std::string("file ") + folder + "\\a" + (folder[0] == '"' ? "\"" : "") + " x\n";
  }
  script += "start\n";
  for (const std::string& folder : refused) {
    script += "do Wipe_Folder_Files \"" + folder +
              "\"\nexpect boxes has \"stop | Quillbarrow | Error # 69!  Please report to \"\n";
  }
  script += "expect get HistoryRemoved is 0\nexpect get pBar.Value is 0\n";
  for (std::string folder : refused) {
    folder.back() == '\\' ? folder.pop_back() : folder.push_back('\\');
    if (folder.size() > 2) script += "do Wipe_Folder_Files \"" + folder + "\"\n";
  }
  Rehearsal rehearsal;
  rehearsal.Play(script +
                 "expect boxes is\nexpect exists C:\\WINNT\\SYSTEM\\a is no\nexpect exists C:\\WINDOWS\\a is no\n");
  EXPECT_EQ(rehearsal.status(), rehearse::Status::Held) << rehearsal.printed();
}

TEST(DeletePath, AFolderOfTooManyEntriesStays) {
  constexpr std::size_t kOneTooMany = 32768;
  Rehearsal rehearsal;
  rehearsal.machine().gate().SetRecording(false);
  for (std::size_t i = 0; i < kOneTooMany; ++i) {
    ASSERT_TRUE(rehearsal.machine().MakeFile("C:\\t\\" + std::to_string(i), ""));
  }
  rehearsal.Play("start\ndo Wipe_Folder_Files C:\\t\nexpect get HistoryRemoved is 0\n");
  EXPECT_EQ(rehearsal.status(), rehearse::Status::Held) << rehearsal.printed();
  EXPECT_EQ(rehearsal.machine().ListBelow("C:\\t")->size(), kOneTooMany);
  // One less is not too many: entries go until the program ends.
  rehearsal.Play("delete C:\\t\\7\nstart\nclose\nduring 4 close frmMain\ndo Wipe_Folder_Files C:\\t\n");
  EXPECT_EQ(rehearsal.machine().ListBelow("C:\\t")->size(), kOneTooMany - 3);
}

}  // namespace
}  // namespace qb
