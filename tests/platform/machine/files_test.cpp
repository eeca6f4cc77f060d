// Names, paths, sharing and listing of a machine's files, as Windows has them.
#include "tests/platform/machine/machine_test.h"

namespace qb::test {
namespace {

using FilesOfMachine = MachineTest;

TEST_F(FilesOfMachine, OnlyARelativePathHoldsAtMost259Characters) {
  const std::string part = '\\' + std::string(99, 'p');
  std::string folder = "C:";
  while (folder.size() < 1000) ASSERT_EQ(files().CreateDirectoryA(folder += part), Error::Success) << folder.size();
  EXPECT_EQ(TryOpen(folder + "\\sub\\..\\deep.txt", kGenericWrite, kCreateNew), Error::Success);
  EXPECT_EQ(Names(folder + "\\*.txt"), std::vector<std::string>{"deep.txt"});
  EXPECT_EQ(files().DeleteFileA(folder + "\\deep.txt"), Error::Success);
  EXPECT_EQ(files().SetCurrentDirectoryA("C:\\"), Error::Success);
  const std::string u_umlaut = "\xC3\xBC";  // one character of two bytes
  std::string dots;
  while (dots.size() < 250) dots += ".\\";
  EXPECT_EQ(TryOpen(dots + u_umlaut + "8901234.", kGenericWrite, kCreateNew), Error::Success);
  EXPECT_EQ(TryOpen(dots + u_umlaut + "89012345.", kGenericWrite, kOpenExisting), Error::PathNotFound);
  while (folder.size() < 32767) folder += part;
  EXPECT_EQ(TryOpen(folder, kGenericWrite, kCreateNew), Error::FilenameTooLong);
}

TEST_F(FilesOfMachine, NamesAreCaseBlindInEveryScriptAndKeepTheirCase) {
  struct Row {
    const char *made, *asked;
    bool same;
  };
  const Row rows[] = {
      {"Readme.TXT", "README.txt", true},
      {"\xC3\xA4rger.txt", "\xC3\x84RGER.TXT", true},                  // a umlaut
      {"\xD0\xB6\xD1\x83\xD0\xBA", "\xD0\x96\xD0\xA3\xD0\x9A", true},  // Cyrillic
      {"\xE2\xB1\xA5.txt", "\xC8\xBA.TXT", true},                      // the capital is a byte shorter in UTF-8
      {"stra\xC3\x9F"
       "e",
       "STRASSE", false},               // simple case only: no sharp s to SS
      {"\xFF\xFE", "\xFF\xFD", false},  // bytes that are no UTF-8
  };
  for (const Row& row : rows) {
    const std::string made = std::string("C:\\Case\\") + row.made, asked = std::string("C:\\Case\\") + row.asked;
    ASSERT_TRUE(world().MakeFile(made, "x")) << row.made;
    EXPECT_EQ(files().GetFileAttributesA(asked).ok(), row.same) << row.made;
    EXPECT_EQ(world().ListBelow("C:\\Case"), std::vector<std::string>{row.made});
    ASSERT_TRUE(world().Delete("C:\\Case"));

    ASSERT_TRUE(world().RegistryAddKey(std::string("HKCU\\Case\\") + row.made));
    EXPECT_EQ(world().ReadKey(std::string("HKCU\\case\\") + row.asked).has_value(), row.same) << row.made;
  }
  ASSERT_TRUE(world().MakeFile("C:\\Case\\name.txt", "x"));
  ASSERT_EQ(files().MoveFileExA("C:\\Case\\name.txt", "C:\\Case\\NAME.txt", 0), Error::Success);
  EXPECT_EQ(world().ListBelow("C:\\Case"), std::vector<std::string>{"NAME.txt"});
}

TEST_F(FilesOfMachine, ShortNamesFollowTheOrderOfMakingAndStay) {
  ASSERT_TRUE(world().MakeFile("C:\\Long folder\\Zebra file.text", "z"));
  ASSERT_TRUE(world().MakeFile("C:\\Long folder\\Zebra crossing.text", "a"));
  ASSERT_TRUE(world().MakeFile("C:\\Long folder\\plain.txt", "p"));
  EXPECT_EQ(ShortPath("C:\\long folder\\"), "C:\\LONGFO~1\\");
  // One that really has the name that would come next.
  ASSERT_TRUE(world().MakeFile("C:\\Long folder\\ZEBRAF~2.TEX", "r"));
  ASSERT_TRUE(world().MakeFile("C:\\Long folder\\Zebra files.text", "s"));
  struct Row {
    const char *name, *short_path;
  };
  const Row rows[] = {
      {"Zebra file.text", "C:\\LONGFO~1\\ZEBRAF~1.TEX"},  {"Zebra crossing.text", "C:\\LONGFO~1\\ZEBRAC~1.TEX"},
      {"plain.txt", "C:\\LONGFO~1\\PLAIN.TXT"},           {"ZEBRAF~2.TEX", "C:\\LONGFO~1\\ZEBRAF~2.TEX"},
      {"Zebra files.text", "C:\\LONGFO~1\\ZEBRAF~3.TEX"},
  };
  auto check = [&](const char* when) {
    for (const Row& row : rows) {
      EXPECT_EQ(ShortPath(std::string("C:\\Long folder\\") + row.name), row.short_path) << when;
      EXPECT_EQ(world().Content(row.short_path), world().Content(std::string("C:\\Long folder\\") + row.name)) << when;
    }
  };
  check("as made");
  SaveAndReopen();
  check("opened anew");

  TextBuffer buffer(260), too_small(4);
  const auto needed = files().GetShortPathNameA("C:\\Long folder", too_small);
  EXPECT_EQ(needed.value, 12u);  // with the closing zero
  StepOver(files().GetLongPathNameA("C:\\LONGFO~1\\ZEBRAF~3.TEX", buffer));
  EXPECT_EQ(buffer.text(), "C:\\Long folder\\Zebra files.text");
}

TEST_F(FilesOfMachine, AttributesAndTheirAbsenceOutliveTheMachine) {
  ASSERT_TRUE(world().MakeFile("C:\\a%=[;.txt", "x"));
  ASSERT_TRUE(world().MakeFile("C:\\plain.txt", "x"));
  ASSERT_TRUE(world().ChangeAttributes("C:\\a%=[;.txt", {"+r", "+h", "+s", "-a"}));
  EXPECT_FALSE(world().ChangeAttributes("C:\\plain.txt", {"+x"}));
  EXPECT_FALSE(world().ChangeAttributes("C:\\none.txt", {"+r"}));
  SaveAndReopen();
  EXPECT_EQ(world().Attributes("C:\\a%=[;.txt"), "rhs");
  ASSERT_TRUE(world().MakeFile("C:\\a%=[;.txt", "new"));
  EXPECT_EQ(world().Attributes("C:\\a%=[;.txt").find('r'), std::string::npos) << "a replaced file keeps none";
}

TEST_F(FilesOfMachine, WhatAnotherProgramHoldsStays) {
  ASSERT_TRUE(world().MakeFile("C:\\locked", "kept"));
  ASSERT_TRUE(world().Lock("C:\\locked"));
  EXPECT_EQ(files().DeleteFileA("C:\\locked"), Error::SharingViolation);
  EXPECT_EQ(files().MoveFileExA("C:\\locked", "C:\\elsewhere", 0), Error::SharingViolation);
  EXPECT_EQ(TryOpen("C:\\locked", kGenericRead), Error::SharingViolation);
  EXPECT_EQ(TryOpen("C:\\locked", kGenericWrite, kCreateAlways), Error::SharingViolation);
  EXPECT_EQ(TryOpen("C:\\locked", 0), Error::Success) << "its attributes can be asked for";
  EXPECT_EQ(world().Content("C:\\locked"), "kept");
  ASSERT_TRUE(world().Unlock("C:\\locked"));
  EXPECT_EQ(files().DeleteFileA("C:\\locked"), Error::Success);
}

// What was removed while it was open goes with its last handle, or with the program.
TEST_F(FilesOfMachine, WhatIsGoingGoesInTheEnd) {
  for (const bool reboot : {false, true}) {
    ASSERT_TRUE(world().MakeFile("C:\\Going\\f", "x"));
    const auto file = files().CreateFileA("C:\\Going\\f", 0, kShareNone, kOpenExisting, 0);
    ASSERT_TRUE(file.ok());
    ASSERT_EQ(files().DeleteFileA("C:\\Going\\f"), Error::Success);
    EXPECT_EQ(TryOpen("C:\\Going\\f", kGenericRead), Error::AccessDenied);
    EXPECT_EQ(TryOpen("C:\\Going\\f", kGenericWrite, kCreateNew), Error::AccessDenied);
    EXPECT_EQ(files().RemoveDirectoryA("C:\\Going"), Error::DirNotEmpty);
    if (reboot)
      world().Boot();
    else
      EXPECT_EQ(files().CloseHandle(file.value), Error::Success);
    EXPECT_EQ(world().ListBelow("C:\\Going"), std::vector<std::string>());
    const auto search = files().FindFirstFileA("C:\\Going\\*");
    ASSERT_TRUE(search.ok());
    EXPECT_EQ(files().RemoveDirectoryA("C:\\Going"), Error::Success);
    EXPECT_EQ(files().CreateDirectoryA("C:\\Going"), Error::AccessDenied);
    if (reboot)
      world().Boot();
    else
      EXPECT_EQ(files().FindClose(search.value.handle), Error::Success);
    EXPECT_EQ(world().Exists("C:\\Going"), "no");
  }
  EXPECT_EQ(world().OpenHandles(), 0u);
}

TEST_F(FilesOfMachine, DrivesComeAndGo) {
  ASSERT_TRUE(world().SetDrive('E', "removable"));
  ASSERT_TRUE(world().MakeFile("E:\\f", "x"));
  std::array<char, 64> roots{};
  EXPECT_EQ(files().GetLogicalDriveStringsA(roots).value, 8u);
  EXPECT_EQ(std::string_view(roots.data(), 9), std::string_view("C:\\\0E:\\\0\0", 9));
  EXPECT_EQ(files().GetDriveTypeA("E:\\"), DriveType::Removable);
  ASSERT_TRUE(world().SetDrive('E', "gone"));
  EXPECT_EQ(files().GetLogicalDriveStringsA(roots).value, 4u);
  EXPECT_EQ(files().GetDriveTypeA("E:\\"), DriveType::NoRoot);
  EXPECT_EQ(files().DeleteFileA("E:\\f"), Error::PathNotFound);
  EXPECT_FALSE(world().SetDrive('E', "floppy"));
}

}  // namespace
}  // namespace qb::test
