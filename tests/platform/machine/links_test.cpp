// Junctions lead where they lead inside the machine; links of the host lead nowhere.
#include "tests/platform/machine/machine_test.h"

namespace qb::test {
namespace {

namespace fs = std::filesystem;

class LinksOfMachine : public MachineTest {
 protected:
  void SetUp() override {
    MachineTest::SetUp();
    outside_ = Beside() / "outside";
    fs::create_directories(outside_ / "below");
    HostWrite(outside_ / "secret.txt", "secret");
    HostWrite(outside_ / "below" / "deep.txt", "deep");
  }

  // Everything that the program and the world can do with a path; none of it may reach what is outside.
  void TryAll(const std::string& folder, const std::string& file) {
    SCOPED_TRACE(file);
    EXPECT_FALSE(files().CreateFileA(file, kGenericRead, kShareRead, kOpenExisting, 0).ok());
    EXPECT_FALSE(files().CreateFileA(file, kGenericWrite, kShareRead, kOpenExisting, 0).ok());
    EXPECT_FALSE(files().CreateFileA(file, kGenericWrite, kShareRead, kCreateAlways, 0).ok());
    EXPECT_FALSE(files().CreateFileA(folder + "\\new.txt", kGenericWrite, kShareRead, kCreateNew, 0).ok());
    EXPECT_NE(files().CopyFileA(file, "C:\\stolen.txt", false), Error::Success);
    EXPECT_NE(files().CopyFileA("C:\\Data\\mine.txt", file, false), Error::Success);
    EXPECT_NE(files().CopyFileA("C:\\Data\\mine.txt", folder + "\\new.txt", false), Error::Success);
    EXPECT_NE(files().CreateDirectoryA(folder + "\\new"), Error::Success);
    EXPECT_EQ(world().Content(file), std::nullopt);
    EXPECT_FALSE(world().MakeFile(folder + "\\new.txt", "x"));
    for (const std::string& name : Names(folder + "\\*")) EXPECT_TRUE(name == "." || name == "..") << name;
    StepOver(files().DeleteFileA(file));
    StepOver(files().MoveFileExA(file, "C:\\stolen.txt", kMoveReplaceExisting));
    StepOver(files().RemoveDirectoryA(folder));
    world().Delete(file);
    world().Delete(folder);
    ExpectOutsideUntouched();
    EXPECT_NE(world().Content("C:\\stolen.txt"), "secret");
  }
  void ExpectOutsideUntouched() {
    EXPECT_EQ(HostRead(outside_ / "secret.txt"), "secret");
    EXPECT_EQ(HostRead(outside_ / "below" / "deep.txt"), "deep");
    EXPECT_EQ(std::distance(fs::recursive_directory_iterator(outside_), fs::recursive_directory_iterator()), 3);
  }

  fs::path outside_;
};

TEST_F(LinksOfMachine, LinksOfTheHostLeadNowhere) {
  const fs::path drive = HostFolder() / "drives" / "C";
  ASSERT_TRUE(world().MakeFile("C:\\Data\\mine.txt", "mine"));
  fs::create_symlink(outside_, drive / "folder");
  fs::create_symlink(outside_ / "secret.txt", drive / "Data" / "secret.txt");
  fs::create_symlink(outside_ / "none.txt", drive / "Data" / "dangling.txt");
  fs::create_symlink(outside_, HostFolder() / "drives" / "D");
  SaveAndReopen();
  EXPECT_EQ(world().Exists("C:\\folder\\secret.txt"), "no");
  EXPECT_EQ(world().Exists("D:\\secret.txt"), "no");
  StepOver(TryOpen("C:\\Data\\dangling.txt", kGenericWrite, kCreateAlways));
  EXPECT_FALSE(fs::exists(outside_ / "none.txt"));
  EXPECT_EQ(files().MoveFileExA("C:\\Data\\dangling.txt", "C:\\moved.txt", 0), Error::AccessDenied);
  TryAll("D:", "D:\\secret.txt");
  TryAll("C:\\folder\\below", "C:\\folder\\below\\deep.txt");
  TryAll("C:\\folder", "C:\\folder\\secret.txt");
  EXPECT_FALSE(files().CreateFileA("C:\\Data\\secret.txt", kGenericRead, kShareRead, kOpenExisting, 0).ok());
  EXPECT_FALSE(files().CreateFileA("C:\\Data\\secret.txt", kGenericWrite, kShareRead, kCreateAlways, 0).ok());
  world().Delete("C:\\Data");
  ExpectOutsideUntouched();
}

TEST_F(LinksOfMachine, ALinkPlantedWhileTheMachineRunsLeadsNowhere) {
  const fs::path drive = HostFolder() / "drives" / "C";
  ASSERT_TRUE(world().MakeFile("C:\\Data\\mine.txt", "mine"));
  ASSERT_TRUE(world().MakeFile("C:\\Swapped\\secret.txt", "own"));
  ASSERT_TRUE(world().MakeFile("C:\\Swapped\\below\\deep.txt", "own"));
  ASSERT_TRUE(files().GetFileAttributesA("C:\\Swapped\\below\\deep.txt").ok());
  fs::remove_all(drive / "Swapped");
  fs::create_symlink(outside_, drive / "Swapped");
  EXPECT_FALSE(files().CreateFileA("C:\\Swapped\\secret.txt", kGenericRead, kShareRead, kOpenExisting, 0).ok());
  EXPECT_FALSE(files().CreateFileA("C:\\Swapped\\secret.txt", kGenericWrite, kShareRead, kCreateAlways, 0).ok());
  EXPECT_NE(files().DeleteFileA("C:\\Swapped\\below\\deep.txt"), Error::Success);
  EXPECT_EQ(world().Content("C:\\Swapped\\secret.txt"), std::nullopt);
  world().Delete("C:\\Swapped");
  ExpectOutsideUntouched();
}

TEST_F(LinksOfMachine, SavingReplacesALinkInsteadOfWritingThroughIt) {
  HostWrite(Beside() / "victim.reg", "victim");
  for (const char* name : {"registry.reg", "machine.ini", "urlcache.ini"}) {
    std::string problem;
    ASSERT_TRUE(world().Save(problem)) << problem;
    const fs::path file = HostFolder() / name;
    fs::remove(file);
    fs::create_symlink(Beside() / "victim.reg", file);
    StepOver(world().Save(problem));
    EXPECT_EQ(HostRead(Beside() / "victim.reg"), "victim") << name;
    fs::remove(file);
    ASSERT_TRUE(world().Save(problem)) << problem;
  }
}

TEST_F(LinksOfMachine, AFileWithAnotherNameOnTheHostIsCopiedBeforeItChanges) {
  const fs::path drive = HostFolder() / "drives" / "C";
  for (const char* name : {"cut.txt", "put.txt", "gone.txt"}) {
    HostWrite(Beside() / name, "ours");
    fs::create_hard_link(Beside() / name, drive / name);
  }
  Reopen();
  EXPECT_EQ(TryOpen("C:\\cut.txt", kGenericWrite, kCreateAlways), Error::Success);
  EXPECT_EQ(world().Content("C:\\cut.txt"), "");
  auto put = files().CreateFileA("C:\\put.txt", kGenericRead | kGenericWrite, kShareRead, kOpenExisting, 0);
  ASSERT_TRUE(put.ok());
  EXPECT_TRUE(files().WriteFile(put.value, "X").ok());
  EXPECT_EQ(files().CloseHandle(put.value), Error::Success);
  EXPECT_EQ(world().Content("C:\\put.txt"), "Xurs");
  EXPECT_EQ(files().DeleteFileA("C:\\gone.txt"), Error::Success);
  for (const char* name : {"cut.txt", "put.txt", "gone.txt"}) EXPECT_EQ(HostRead(Beside() / name), "ours") << name;
}

TEST_F(LinksOfMachine, JunctionsThatLeadInCirclesOrOutEnd) {
  ASSERT_TRUE(world().MakeLink("C:\\A\\loop", "C:\\A"));
  ASSERT_TRUE(world().MakeLink("C:\\One", "C:\\Two"));
  EXPECT_FALSE(world().MakeLink("C:\\One", "C:\\Two")) << "the name is taken";
  ASSERT_TRUE(world().MakeLink("C:\\Two", "C:\\One"));
  world().MakeLink("C:\\Up", "C:\\..\\..\\..\\outside");
  world().MakeLink("C:\\Host", outside_.string());
  ASSERT_TRUE(world().MakeFile("C:\\A\\f.txt", "x"));
  EXPECT_EQ(TryOpen("C:\\A\\loop\\loop\\loop\\f.txt", kGenericRead), Error::Success);
  for (const char* path : {"C:\\One\\f.txt", "C:\\Up\\secret.txt", "C:\\Host\\secret.txt"}) {
    EXPECT_NE(TryOpen(path, kGenericRead), Error::Success) << path;
    EXPECT_NE(TryOpen(path, kGenericWrite, kCreateAlways), Error::Success) << path;
  }
  EXPECT_TRUE(world().ListBelow("C:\\").has_value()) << "listing a circle ends";
  ExpectOutsideUntouched();
}

}  // namespace
}  // namespace qb::test
