// The file analyzer where the console cannot lead it: what it raises, the stack that it takes, and every failure on the
// way.
#include "delete/file_analyzer/file_analyzer.h"

#include <pthread.h>

#include <optional>

#include "tests/platform/machine/machine_test.h"

namespace qb {
namespace {

using Texts = std::vector<std::string>;

constexpr int kPathFileAccess = 75;

class FileAnalyzer : public test::MachineTest {
 protected:
  void SetUp() override {
    MachineTest::SetUp();
    channels_.emplace(files(), world().platform().system);
    analyzer_.emplace(world().platform(), *channels_, life_);
    world().MakeFolder("C:\\a");
  }
  // What a routine opens it also closes, however it ends.
  void TearDown() override { EXPECT_EQ(world().OpenHandles(), 0U); }

  // C:\a\full: files of every protection in two levels, and a junction to C:\kept with its one file.
  void MakeFullFolder() {
    world().MakeFile("C:\\kept\\mine.txt", "not yours");
    world().MakeFile("C:\\a\\full\\one.txt", "1");
    world().MakeFile("C:\\a\\full\\deep\\two.txt", "22");
    world().MakeFile("C:\\a\\full\\deep\\three.log", "333");
    ASSERT_TRUE(world().ChangeAttributes("C:\\a\\full\\one.txt", {"+r", "+h", "+s"}));
    ASSERT_TRUE(world().ChangeAttributes("C:\\a\\full\\deep", {"+r", "+h"}));
    ASSERT_TRUE(world().MakeLink("C:\\a\\full\\link", "C:\\kept"));
  }

  Lifetime life_;
  std::optional<Channels> channels_;
  std::optional<clsFileAnalyzer> analyzer_;
};

TEST_F(FileAnalyzer, TellsOfEachFolderWithAHitOuterFoldersFirst) {
  MakeFullFolder();
  Texts hits;
  analyzer_->Search_Hit = [&](const Texts& names, const std::string& folder) {
    hits.push_back(folder + ":");
    for (const std::string& name : names) hits.back() += " " + name;
  };
  EXPECT_EQ(analyzer_->Search("C:\\a\\full", "*", EntryKind::Both, true, false), 5);
  EXPECT_EQ(analyzer_->Search("C:\\a\\full", "*.LOG", EntryKind::Files, true, false), 1);
  EXPECT_EQ(hits, (Texts{"C:\\a\\full\\: deep link one.txt", "C:\\a\\full\\deep\\: three.log two.txt",
                         "C:\\a\\full\\deep\\: three.log"}));
}

TEST_F(FileAnalyzer, TakesTheActiveWindowForAnOwner) {
  world().MakeFile("C:\\a\\page.htm", "");
  WindowHandle owner = WindowHandle::None;
  analyzer_->active_window = [] { return static_cast<WindowHandle>(7); };
  EXPECT_EQ(analyzer_->Execute("C:\\a\\page.htm", 1, "", false, owner), 0);
  EXPECT_EQ(owner, static_cast<WindowHandle>(7));
}

// Each level of a recursion would take some hundred bytes of the stack, which on Windows has 1 MiB; paths hold 16,000
// levels.
TEST_F(FileAnalyzer, AsksNothingOfTheStackForFoldersInsideEachOther) {
  constexpr int kLevels = 250;
#if defined(__has_feature)
  constexpr bool kSanitized = __has_feature(address_sanitizer);
#else
  constexpr bool kSanitized = false;
#endif
  constexpr std::size_t kStack =
      std::size_t{1024} * (kSanitized ? 512 : 128);  // a copy of a file takes half of the smaller
  std::string deepest = "C:\\a\\full";
  for (int level = 0; level < kLevels; ++level) deepest += "\\d";
  ASSERT_TRUE(world().MakeFile(deepest + "\\x.txt", "x"));
  pthread_attr_t attributes;
  pthread_t thread;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStack), 0);
  auto work = [](void* analyzer) -> void* {
    auto& worker = *static_cast<clsFileAnalyzer*>(analyzer);
    EXPECT_EQ(worker.Search("C:\\a\\full", "x.txt", EntryKind::Files, true, false), 1);
    EXPECT_EQ(worker.GetFolderSize("C:\\a\\full").Text(), "1");
    EXPECT_EQ(worker.CopyFolder("C:\\a\\full", "C:\\a\\copy", false, false, false), 0);
    EXPECT_EQ(worker.DeleteFolder("C:\\a\\full"), 0);
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, work, &*analyzer_), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  EXPECT_EQ(world().Exists("C:\\a\\full"), "no");
  EXPECT_EQ(world().Content("C:\\a\\copy" + deepest.substr(9) + "\\x.txt"), "x");
}

// Each operation is made to fail at its first, second, third ... call: the number must say so, what lies
// behind the link must stay, and no handle may be left open.
TEST_F(FileAnalyzer, ReportsEveryFailureOfAFolderCopyAndDelete) {
  for (const char* operation :
       {"CreateDirectoryA", "CopyFileA", "SetFileAttributesA", "DeleteFileA", "RemoveDirectoryA"}) {
    std::uint32_t nth = 1;
    for (int number = 1; number != 0; ++nth) {
      ASSERT_LT(nth, 50U) << operation;
      world().Delete("C:\\a\\full");
      world().Delete("C:\\a\\copy");
      MakeFullFolder();
      world().gate().SetFault(operation, nth, 5);
      number = analyzer_->CopyFolder("C:\\a\\full", "C:\\a\\copy", false, false, false);
      if (number == 0) number = analyzer_->DeleteFolder("C:\\a\\full");
      world().gate().ClearFaults();
      EXPECT_EQ(world().Content("C:\\kept\\mine.txt"), "not yours") << operation << nth;
      EXPECT_EQ(world().OpenHandles(), 0U) << operation << nth;
      if (number != 0) {
        EXPECT_EQ(number, kPathFileAccess) << operation << nth;
        EXPECT_EQ(world().Exists("C:\\a\\full"), "folder") << operation << nth;
      }
    }
    EXPECT_GT(nth, 2U) << operation << " was never called";
    EXPECT_EQ(world().Exists("C:\\a\\full"), "no") << operation;
  }
}

}  // namespace
}  // namespace qb
