// Names, paths, sharing and listing of a machine's files, as Windows has them.
#include "tests/platform/machine/machine_test.h"

namespace qb::test {
namespace {

using FilesOfMachine = MachineTest;

TEST_F(FilesOfMachine, PathsLeadWhereWindowsLeadsThem) {
  ASSERT_TRUE(world().MakeFile("C:\\Data\\Sub\\File One.txt", "x"));
  ASSERT_EQ(files().SetCurrentDirectoryA("C:\\Data"), Error::Success);
  struct Row {
    const char* path;
    Error error;
  };
  const Row rows[] = {
      {"c:\\data\\SUB\\file ONE.TXT", Error::Success},
      {"C:/Data/Sub/File One.txt", Error::Success},
      {"C:\\Data\\\\Sub\\File One.txt", Error::Success},
      {"C:\\Data\\.\\Nowhere\\..\\Sub\\File One.txt", Error::Success},  // dots are taken out of the text alone
      {"C:\\..\\..\\Data\\Sub\\File One.txt", Error::Success},
      {"C:\\Data\\Sub \\File One.txt. .", Error::Success},
      {"C:\\DATA\\SUB\\FILEON~1.TXT", Error::Success},
      {"\\Data\\Sub\\File One.txt", Error::Success},
      {"Sub\\File One.txt", Error::Success},
      {"C:Sub\\File One.txt", Error::Success},
      {"..\\Data\\Sub\\File One.txt", Error::Success},
      {"C:\\Data\\Sub\\No.txt", Error::FileNotFound},
      {"C:\\Data\\No\\No.txt", Error::PathNotFound},
      {"C:\\Data\\Sub\\File One.txt\\below", Error::PathNotFound},
      {"Q:\\Data", Error::PathNotFound},
      {"C:\\Data\\Sub\\a?b", Error::InvalidName},
      {"C:\\Data\\a|b", Error::InvalidName},
      {"C:\\Data\\a\"b", Error::InvalidName},
  };
  for (const Row& row : rows) EXPECT_EQ(files().GetFileAttributesA(row.path).error, row.error) << row.path;
}

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

TEST_F(FilesOfMachine, APathWithAZeroCharacterFailsWhole) {
  ASSERT_TRUE(world().MakeFile("C:\\Data\\keep", "keep"));
  const std::string_view bent("C:\\Data\\keep\0.txt", 17);
  EXPECT_EQ(TryOpen(bent, kGenericWrite, kCreateAlways), Error::InvalidName);
  EXPECT_EQ(files().DeleteFileA(bent), Error::InvalidName);
  EXPECT_EQ(files().SetFileAttributesA(bent, kAttributeHidden), Error::InvalidName);
  EXPECT_EQ(files().GetFileAttributesA(bent).error, Error::InvalidName);
  EXPECT_EQ(files().FindFirstFileA(bent).error, Error::InvalidName);
  EXPECT_EQ(files().MoveFileExA(bent, std::nullopt, kMoveDelayUntilReboot), Error::InvalidName);
  EXPECT_EQ(files().CopyFileA("C:\\Data\\keep", bent, false), Error::InvalidName);
  EXPECT_EQ(world().Content("C:\\Data\\keep"), "keep");
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
  EXPECT_EQ(ShortPath("c:\\long folder\\"), "C:\\LONGFO~1\\");
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

TEST_F(FilesOfMachine, SharingIsAskedBothWays) {
  constexpr std::uint32_t kBoth = kShareRead | kShareWrite;
  struct Row {
    std::uint32_t first, first_share, second, second_share;
    Error error;
  };
  const Row rows[] = {
      {kGenericRead, kShareRead, kGenericRead, kShareRead, Error::Success},
      {kGenericRead, kShareRead, kGenericWrite, kBoth, Error::SharingViolation},
      {kGenericWrite, kBoth, kGenericRead, kShareRead, Error::SharingViolation},  // the second must allow the first
      {kGenericWrite, kBoth, kGenericRead | kGenericWrite, kBoth, Error::Success},
      {kGenericRead, kShareNone, kGenericRead, kBoth, Error::SharingViolation},
      {kGenericRead, kBoth, kGenericRead, kShareNone, Error::SharingViolation},
  };
  ASSERT_TRUE(world().MakeFile("C:\\f.txt", "kept"));
  for (const Row& row : rows) {
    const auto first = files().CreateFileA("C:\\f.txt", row.first, row.first_share, kOpenExisting, 0);
    ASSERT_TRUE(first.ok());
    const auto second = files().CreateFileA("c:\\F.TXT", row.second, row.second_share, kOpenExisting, 0);
    EXPECT_EQ(second.error, row.error) << row.first << ' ' << row.first_share << ' ' << row.second;
    if (second.ok()) {
      EXPECT_EQ(files().CloseHandle(second.value), Error::Success);
    }
    EXPECT_EQ(files().CloseHandle(first.value), Error::Success);
  }
  EXPECT_EQ(world().OpenHandles(), 0u);
}

TEST_F(FilesOfMachine, WhatIsHeldOpenOrProtectedStaysAsItIs) {
  ASSERT_TRUE(world().MakeFolder("C:\\folder"));
  for (const char* name : {"held", "locked", "readonly", "hidden"}) {
    ASSERT_TRUE(world().MakeFile(std::string("C:\\") + name, name));
  }
  ASSERT_TRUE(world().MakeFile("C:\\empty", ""));
  const auto held = files().CreateFileA("C:\\held", kGenericRead, kShareRead | kShareWrite, kOpenExisting, 0);
  ASSERT_TRUE(held.ok());
  ASSERT_TRUE(world().Lock("C:\\locked"));
  ASSERT_TRUE(world().ChangeAttributes("C:\\readonly", {"+r"}));
  ASSERT_TRUE(world().ChangeAttributes("C:\\hidden", {"+h"}));
  // Also an empty one that was only just made.
  ASSERT_EQ(files().SetFileAttributesA("C:\\empty", kAttributeReadOnly), Error::Success);

  EXPECT_EQ(files().DeleteFileA("C:\\held"), Error::SharingViolation);
  EXPECT_EQ(files().DeleteFileA("C:\\locked"), Error::SharingViolation);
  EXPECT_EQ(files().DeleteFileA("C:\\readonly"), Error::AccessDenied);
  EXPECT_EQ(files().DeleteFileA("C:\\folder"), Error::AccessDenied);
  EXPECT_EQ(files().DeleteFileA("C:\\none"), Error::FileNotFound);
  EXPECT_EQ(files().MoveFileExA("C:\\locked", "C:\\elsewhere", 0), Error::SharingViolation);
  EXPECT_EQ(files().CopyFileA("C:\\hidden", "C:\\readonly", false), Error::AccessDenied);
  EXPECT_EQ(files().CopyFileA("C:\\hidden", "C:\\held", true), Error::FileExists);
  EXPECT_EQ(TryOpen("C:\\locked", kGenericRead), Error::SharingViolation);
  EXPECT_EQ(TryOpen("C:\\locked", kGenericWrite, kCreateAlways), Error::SharingViolation);
  EXPECT_EQ(TryOpen("C:\\readonly", kGenericWrite), Error::AccessDenied);
  EXPECT_EQ(TryOpen("C:\\readonly", kGenericWrite, kCreateAlways), Error::AccessDenied);
  EXPECT_EQ(TryOpen("C:\\empty", kGenericWrite), Error::AccessDenied);
  EXPECT_EQ(TryOpen("C:\\hidden", kGenericWrite, kCreateAlways), Error::AccessDenied);
  EXPECT_EQ(TryOpen("C:\\hidden", kGenericWrite, kCreateNew), Error::FileExists);
  EXPECT_EQ(TryOpen("C:\\folder", kGenericRead), Error::AccessDenied);
  EXPECT_EQ(TryOpen("C:\\none", kGenericRead), Error::FileNotFound);
  EXPECT_EQ(TryOpen("C:\\no\\ne", kGenericWrite, kCreateAlways), Error::PathNotFound);
  for (const char* name : {"held", "locked", "readonly", "hidden"}) {
    EXPECT_EQ(world().Content(std::string("C:\\") + name), name) << "a refused call changed it";
  }
  EXPECT_EQ(world().Attributes("C:\\readonly"), "ra");
  EXPECT_EQ(world().Exists("C:\\elsewhere"), "no");

  ASSERT_TRUE(world().Unlock("C:\\locked"));
  EXPECT_EQ(files().DeleteFileA("C:\\locked"), Error::Success);
  EXPECT_EQ(files().CloseHandle(held.value), Error::Success);
  EXPECT_EQ(files().DeleteFileA("C:\\held"), Error::Success);
  EXPECT_EQ(TryOpen("C:\\hidden", kGenericWrite, kCreateAlways, kAttributeHidden), Error::Success);
  EXPECT_EQ(world().Content("C:\\hidden"), "");
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

TEST_F(FilesOfMachine, PatternsMatchLongAndShortNames) {
  for (const char* name : {"b.txt", "A.TXT", "page.html", "noext", "two.dots.txt", "ab.txt"}) {
    ASSERT_TRUE(world().MakeFile(std::string("C:\\List\\") + name, "x"));
  }
  ASSERT_TRUE(world().MakeFolder("C:\\List\\sub"));
  using V = std::vector<std::string>;
  const std::pair<const char*, V> rows[] = {
      {"C:\\List\\*", {".", "..", "A.TXT", "ab.txt", "b.txt", "noext", "page.html", "sub", "two.dots.txt"}},
      {"C:\\List\\*.*", {".", "..", "A.TXT", "ab.txt", "b.txt", "noext", "page.html", "sub", "two.dots.txt"}},
      {"C:\\List\\*.TXT", {"A.TXT", "ab.txt", "b.txt", "two.dots.txt"}},
      {"C:\\List\\*.htm", {"page.html"}},  // by PAGE~1.HTM
      {"C:\\List\\?.txt", {"A.TXT", "b.txt"}},
      {"C:\\List\\noext", {"noext"}},
      {"C:\\List", {"List"}},
      {"C:\\List\\*.gif", {}},
  };
  for (const auto& [pattern, names] : rows) EXPECT_EQ(Names(pattern), names) << pattern;
  EXPECT_EQ(files().FindFirstFileA("C:\\List\\*.gif").error, Error::FileNotFound);
  EXPECT_EQ(files().FindFirstFileA("C:\\None\\*").error, Error::PathNotFound);
  const V root = Names("C:\\*");
  ASSERT_FALSE(root.empty());
  EXPECT_NE(root.front(), ".");
}

TEST_F(FilesOfMachine, AListingOutlivesWhatItLists) {
  for (int i = 0; i < 50; ++i) ASSERT_TRUE(world().MakeFile("C:\\Many\\f" + std::to_string(100 + i), "x"));
  auto first = files().FindFirstFileA("C:\\Many\\f*");
  ASSERT_TRUE(first.ok());
  std::size_t listed = 0;
  std::string name = first.value.data.name;
  for (;;) {
    ++listed;
    EXPECT_EQ(files().DeleteFileA("C:\\Many\\" + name), Error::Success) << name;
    auto next = files().FindNextFileA(first.value.handle);
    if (!next.ok()) {
      EXPECT_EQ(next.error, Error::NoMoreFiles);
      break;
    }
    name = next.value.name;
  }
  EXPECT_EQ(listed, 50u);
  EXPECT_EQ(files().RemoveDirectoryA("C:\\Many"), Error::Success);
  EXPECT_EQ(files().FindClose(first.value.handle), Error::Success);
  EXPECT_EQ(files().FindClose(first.value.handle), Error::InvalidHandle);
}

TEST_F(FilesOfMachine, FoldersGoOnlyWhenEmptyAndDrivesComeAndGo) {
  ASSERT_TRUE(world().MakeFile("C:\\Full\\f", "x"));
  EXPECT_EQ(files().RemoveDirectoryA("C:\\Full"), Error::DirNotEmpty);
  EXPECT_EQ(files().CreateDirectoryA("C:\\Full"), Error::AlreadyExists);
  EXPECT_EQ(files().CreateDirectoryA("C:\\A\\B"), Error::PathNotFound);
  EXPECT_NE(files().MoveFileExA("C:\\Full", "C:\\Full\\Inside", 0), Error::Success) << "into itself";
  EXPECT_EQ(world().Content("C:\\Full\\f"), "x");

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
