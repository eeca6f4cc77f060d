#include "delete/file_analyzer/file_analyzer.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <map>
#include <memory>
#include <stdexcept>

#include "platform/machine/machine.h"
#include "runtime/text.h"
#include "tests/app/temp_folder.h"

namespace qb {
namespace {

using Names = std::vector<std::string>;

constexpr int kFileNotFound = 53, kFileExists = 58, kPermissionDenied = 70, kPathFileAccess = 75, kPathNotFound = 76;

class FileAnalyzer : public ::testing::Test {
 protected:
  FileAnalyzer() {
    std::string problem;
    machine_ = machine::Machine::Open((folder_.path() / "machine").string(), problem);
    if (machine_ == nullptr) throw std::runtime_error(problem);
    channels_ = std::make_unique<Channels>(machine_->platform().files, machine_->platform().system);
    analyzer_ = std::make_unique<clsFileAnalyzer>(machine_->platform(), *channels_, life_);
    machine_->MakeFolder("C:\\a");
  }
  // What a routine opens it also closes, however it ends.
  ~FileAnalyzer() override { EXPECT_EQ(machine_->OpenHandles(), 0U); }

  void ExpectError(int number, int wanted, const std::string& member) {
    EXPECT_EQ(number, wanted);
    EXPECT_EQ(analyzer_->LastError().Number, wanted);
    EXPECT_EQ(analyzer_->LastError().Source, "clsFileAnalyzer." + member);
    EXPECT_EQ(analyzer_->LastError().Description, Describe(wanted));
  }

  // C:\a\full: files of every protection in two levels, and a junction to C:\kept with its one file.
  void MakeFullFolder() {
    machine_->MakeFile("C:\\kept\\mine.txt", "not yours");
    machine_->MakeFile("C:\\a\\full\\one.txt", "1");
    machine_->MakeFile("C:\\a\\full\\deep\\two.txt", "22");
    machine_->MakeFile("C:\\a\\full\\deep\\three.log", "333");
    ASSERT_TRUE(machine_->ChangeAttributes("C:\\a\\full\\one.txt", {"+r", "+h", "+s"}));
    ASSERT_TRUE(machine_->ChangeAttributes("C:\\a\\full\\deep", {"+r", "+h"}));
    ASSERT_TRUE(machine_->MakeLink("C:\\a\\full\\link", "C:\\kept"));
  }

  Names CallsOf(const std::string& operation) {
    Names lines;
    for (const auto& call : machine_->gate().TakeCalls()) {
      if (call.operation == operation) lines.push_back(call.line);
    }
    return lines;
  }

  test::TempFolder folder_;
  std::unique_ptr<machine::Machine> machine_;
  Lifetime life_;
  std::unique_ptr<Channels> channels_;
  std::unique_ptr<clsFileAnalyzer> analyzer_;
};

TEST(FileAnalyzerTexts, TakesPathsApart) {
  const struct {
    const char *path, *fixed, *name, *parent, *base, *drive;
  } kCases[] = {
      {"C", "C:\\", "C", "C", "C", "C:\\"},
      {"C:\\", "C:\\", "C:\\", "C:\\", "C:\\", "C:\\"},
      {"a.b", "a.b\\", "a.b", "a.b", "a", "a.b\\"},
      {"C:\\a", "C:\\a\\", "a", "C:\\", "a", "C:\\"},
      {"C:\\a\\b.txt", "C:\\a\\b.txt\\", "b.txt", "C:\\a\\", "b", "C:\\"},
      {"C:\\a\\b.c\\", "C:\\a\\b.c\\", "b.c", "C:\\a\\", "b", "C:\\"},
      {"C:\\a.b\\file", "C:\\a.b\\file\\", "file", "C:\\a.b\\", "", "C:\\"},
      {"C:\\a.b\\file.x.gz", "C:\\a.b\\file.x.gz\\", "file.x.gz", "C:\\a.b\\", "file.x", "C:\\"},
      {"file.txt", "file.txt\\", "file.txt", "", "file", "fil\\"},
      {"", "\\", "", "", "", "\\"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(clsFileAnalyzer::FixPath(c.path), c.fixed) << c.path;
    EXPECT_EQ(clsFileAnalyzer::GetPathName(c.path), c.name) << c.path;
    EXPECT_EQ(clsFileAnalyzer::GetParentFolder(c.path), c.parent) << c.path;
    EXPECT_EQ(clsFileAnalyzer::GetBaseName(c.path), c.base) << c.path;
    EXPECT_EQ(clsFileAnalyzer::GetPathDrive(c.path), c.drive) << c.path;
  }
}

TEST(FileAnalyzerTexts, GoesFromOneFolderToAnotherAndBack) {
  const struct {
    const char *from, *to, *relative;
  } kCases[] = {
      {"C:\\a\\b", "C:\\a\\c.txt", "..\\c.txt"},
      {"C:\\a\\b\\", "C:\\a\\b\\c.txt", "c.txt"},
      {"C:\\A\\b\\x", "C:\\a\\d\\e", "..\\..\\d\\e"},
      {"C:\\", "C:\\a", "a"},
      {"C:\\a\\b", "C:\\", "..\\..\\"},
      {"C:\\a\\b", "D:\\x.txt", "D:\\x.txt"},
      {"C:\\ab", "C:\\a", "..\\a"},
  };
  for (const auto& c : kCases) {
    const std::string relative = clsFileAnalyzer::GetRelativePath(c.from, c.to);
    EXPECT_EQ(relative, c.relative) << c.from << " to " << c.to;
    const std::string back = clsFileAnalyzer::GetAbsolutePath(relative, c.from);
    EXPECT_TRUE(SameText(back, c.to)) << back << " from " << c.from;
  }
  EXPECT_EQ(clsFileAnalyzer::GetAbsolutePath("..\\..\\..\\x", "C:\\a"), "C:\\x");
}

TEST(FileAnalyzerTexts, WritesSizesAndAttributes) {
  const struct {
    double size;
    int decimals;
    const char* text;
  } kSizes[] = {
      {0, 2, "0 Bytes"},
      {1023, 2, "1023 Bytes"},
      {1024, 2, "1 KB"},
      {2560, 0, "2 KB"},
      {1152, 2, "1.12 KB"},
      {1408, 2, "1.38 KB"},
      {1048575, 2, "1024 KB"},
      {1073741823, 0, "1024 MB"},
      {1073741824, 2, "1 GB"},
      {922337203685477.0, 1, "858993.5 GB"},
      {1025, 22, "1.0009765625 KB"},
      {4096, -1, ""},
      {4096, 23, ""},
  };
  for (const auto& c : kSizes) EXPECT_EQ(clsFileAnalyzer::ParseSize(*Currency::FromDouble(c.size), c.decimals), c.text);
  const std::map<std::int32_t, std::string> kAttributes = {
      {0, "Normal"},
      {-1, ""},
      {0x80, ""},
      {0x21, "Read Only, Archive"},
      {0x7F, "Read Only, Hidden, System, Volume, Directory, Archive, Alias"},
  };
  for (const auto& [number, text] : kAttributes) EXPECT_EQ(clsFileAnalyzer::GetAttributeNames(number), text);
}

TEST_F(FileAnalyzer, TellsWhatIsThere) {
  machine_->MakeFile("C:\\a\\long file name.Txt", "12345");
  machine_->MakeFile("C:\\a\\.hidden", "");
  const std::string file = "C:\\a\\long file name.Txt";
  for (const char* path : {"C:\\a", "C:\\a\\", "C:\\", "C:\\a\\*.txt", "c:\\A\\LONG FILE NAME.TXT"}) {
    EXPECT_TRUE(analyzer_->Exists(path)) << path;
  }
  for (const char* path : {"", "C:\\b", "C:\\a\\*.doc", "C:\\a\\none\\x", "Q:\\"}) {
    EXPECT_FALSE(analyzer_->Exists(path)) << path;
  }
  EXPECT_EQ(analyzer_->GetFileSize(file).Text(), "5");
  EXPECT_EQ(analyzer_->GetFileSize("C:\\a\\none").Text(), "0");
  EXPECT_EQ(analyzer_->GetFileExtension(file), "TXT");
  EXPECT_EQ(analyzer_->GetFileExtension("C:\\no.folder\\file"), "");
  EXPECT_EQ(analyzer_->GetPathAttributes("C:\\a\\none"), -1);
  EXPECT_FALSE(analyzer_->IsFolder("C:\\a\\none")) << "-1 has the bit of a folder";
  EXPECT_TRUE(analyzer_->IsFolder("C:\\a\\"));
  EXPECT_FALSE(analyzer_->PathHasSubfolders("C:\\a"));
  EXPECT_FALSE(analyzer_->IsEmpty("C:\\a"));
  machine_->MakeFolder("C:\\b.ext\\.git");
  EXPECT_TRUE(analyzer_->IsEmpty("C:\\b.ext"));
  EXPECT_TRUE(analyzer_->PathHasSubfolders("C:\\b.ext"));
  EXPECT_EQ(analyzer_->GetFileExtension("C:\\b.ext"), "");
  EXPECT_EQ(analyzer_->GetLongPath(analyzer_->GetShortPath(file)), file);
  EXPECT_EQ(analyzer_->GetLongPath("C:\\a\\none"), "");
}

TEST_F(FileAnalyzer, SaysWhetherSomebodyHoldsAFile) {
  machine_->MakeFile("C:\\a\\held.txt", "x");
  EXPECT_FALSE(analyzer_->IsFileInUse("C:\\a\\held.txt"));
  ASSERT_TRUE(machine_->ChangeAttributes("C:\\a\\held.txt", {"+r"}));
  EXPECT_FALSE(analyzer_->IsFileInUse("C:\\a\\held.txt")) << "refused, but nobody holds it";
  ASSERT_TRUE(machine_->ChangeAttributes("C:\\a\\held.txt", {"-r"}));
  ASSERT_TRUE(machine_->Lock("C:\\a\\held.txt"));
  EXPECT_TRUE(analyzer_->IsFileInUse("C:\\a\\held.txt\\"));
  machine_->Unlock("C:\\a\\held.txt");
  EXPECT_FALSE(analyzer_->IsFileInUse("C:\\a\\none"));
}

TEST_F(FileAnalyzer, MakesFilesInEveryMode) {
  const std::string path = "C:\\a\\x.tar.gz";
  EXPECT_EQ(analyzer_->CreateFile(path, "abcdef", CreateMode::Binary, false), 0);
  EXPECT_EQ(analyzer_->CreateFile(path, "XY", static_cast<CreateMode>(9), false), 0);
  EXPECT_EQ(machine_->Content(path), "XYcdef");
  EXPECT_EQ(analyzer_->CreateFile(path, "z", CreateMode::Append, false), 0);
  EXPECT_EQ(machine_->Content(path), "XYcdefz");
  EXPECT_EQ(analyzer_->CreateFile(path, "kept", CreateMode::Output, true), 0);
  EXPECT_EQ(analyzer_->CreateFile(path, "", CreateMode::Output, true), 0);
  EXPECT_EQ(machine_->Content(path), "XYcdefz");
  EXPECT_EQ(machine_->Content("C:\\a\\x.tar (2).gz"), "kept");
  EXPECT_EQ(machine_->Content("C:\\a\\x.tar (3).gz"), "");
  EXPECT_EQ(analyzer_->CreateFile(path, "new", CreateMode::Output, false), 0);
  EXPECT_EQ(machine_->Content(path), "new");
  EXPECT_EQ(analyzer_->BuildPath("C:\\a", "plain"), "C:\\a\\plain");
  ExpectError(analyzer_->CreateFile("C:\\none\\x", "", CreateMode::Binary, false), kPathNotFound, "CreateFile");

  const std::string temporary = analyzer_->GetTempFile("qb");
  EXPECT_EQ(analyzer_->GetParentFolder(temporary), analyzer_->GetSpecialFolder(15));
  EXPECT_EQ(machine_->Content(temporary), "");
}

TEST_F(FileAnalyzer, ReadsAStretchOfAFileThatMayNotBeWritten) {
  machine_->MakeFile("C:\\a\\x", "abcdef");
  ASSERT_TRUE(machine_->ChangeAttributes("C:\\a\\x", {"+r"}));
  const struct {
    std::uint64_t start, length;
    const char* text;
  } kCases[] = {{1, 6, "abcdef"}, {2, 3, "bcd"}, {5, 100, "ef"},       {7, 1, ""},
                {0, 3, ""},       {1, 0, ""},    {1, ~0ULL, "abcdef"}, {~0ULL, 1, ""}};
  for (const auto& c : kCases) EXPECT_EQ(analyzer_->GetFileContents("C:\\a\\x", c.start, c.length), c.text) << c.start;
  EXPECT_EQ(analyzer_->GetFileContents("C:\\a", 1, 10), "");
  EXPECT_EQ(analyzer_->GetFileContents("C:\\a\\none", 1, 10), "");
  EXPECT_EQ(machine_->Exists("C:\\a\\none"), "no") << "reading must not make the file";
}

TEST_F(FileAnalyzer, RenamesAndCopiesWithoutLosingATarget) {
  machine_->MakeFile("C:\\a\\x.txt", "x");
  machine_->MakeFile("C:\\a\\y.txt", "y");
  ExpectError(analyzer_->Rename("C:\\a\\x.txt", "C:\\a\\y.txt", false), kFileExists, "Rename");
  ExpectError(analyzer_->CopyFile("C:\\a\\x.txt", "C:\\a\\y.txt", false, false, false), kFileExists, "CopyFile");
  ExpectError(analyzer_->CopyFile("C:\\a\\none", "C:\\a\\y.txt", true, true, false), kFileNotFound, "CopyFile");
  ExpectError(analyzer_->CopyFile("C:\\a\\x.txt", "C:\\n\\y.txt", false, false, false), kPathNotFound, "CopyFile");
  EXPECT_EQ(machine_->Content("C:\\a\\x.txt"), "x");
  EXPECT_EQ(machine_->Content("C:\\a\\y.txt"), "y");

  EXPECT_EQ(analyzer_->CopyFile("C:\\a\\x.txt", "C:\\n\\m\\x.txt", false, false, true), 0);
  EXPECT_EQ(machine_->Content("C:\\n\\m\\x.txt"), "x");
  EXPECT_EQ(analyzer_->CopyFile("C:\\a\\x.txt", "C:\\a\\x.txt", true, true, false), 0);
  EXPECT_EQ(machine_->Content("C:\\a\\x.txt"), "x") << "moved onto itself";
  EXPECT_EQ(analyzer_->Rename("C:\\a\\x.txt", "C:\\a\\y.txt", true), 0);
  EXPECT_EQ(machine_->Content("C:\\a\\y (2).txt"), "x");
  EXPECT_EQ(analyzer_->CopyFile("C:\\a\\y.txt", "C:\\a\\y (2).txt", true, true, false), 0);
  EXPECT_EQ(machine_->Content("C:\\a\\y (2).txt"), "y");
  EXPECT_EQ(machine_->Exists("C:\\a\\y.txt"), "no");
  EXPECT_EQ(analyzer_->LastError().Number, kPathNotFound) << "a success leaves the record";
}

TEST_F(FileAnalyzer, MakesFolders) {
  ExpectError(analyzer_->CreateFolder("C:\\p\\q\\r", false), kPathNotFound, "CreateFolder");
  EXPECT_EQ(analyzer_->CreateFolder("C:\\p\\q\\r\\", true), 0);
  EXPECT_EQ(machine_->Exists("C:\\p\\q\\r"), "folder");
  ExpectError(analyzer_->CreateFolder("C:\\p\\q", true), kPathFileAccess, "CreateFolder");
}

TEST_F(FileAnalyzer, DeletesAWholeFolderButNothingBehindALink) {
  MakeFullFolder();
  EXPECT_EQ(analyzer_->DeleteFolder("C:\\a\\full\\"), 0);
  EXPECT_EQ(machine_->Exists("C:\\a\\full"), "no");
  EXPECT_EQ(machine_->Content("C:\\kept\\mine.txt"), "not yours");

  for (const char* path : {"C:\\a\\link", "C:\\a\\link\\", "C:\\a\\link\\\\"}) {
    ASSERT_TRUE(machine_->MakeLink("C:\\a\\link", "C:\\kept"));
    EXPECT_EQ(analyzer_->DeleteFolder(path), 0) << path;
    EXPECT_EQ(machine_->Exists("C:\\a\\link"), "no") << path;
    EXPECT_EQ(machine_->Content("C:\\kept\\mine.txt"), "not yours") << path;
  }
  ExpectError(analyzer_->DeleteFolder(""), kPathNotFound, "DeleteFolder");
  ExpectError(analyzer_->DeleteFolder("C:\\kept\\mine.txt"), kPathFileAccess, "DeleteFolder");
  EXPECT_EQ(machine_->Exists("C:\\kept\\mine.txt"), "file");
}

TEST_F(FileAnalyzer, StopsDeletingAtTheFirstFileThatIsHeld) {
  for (const char* name : {"1", "2", "3"}) machine_->MakeFile(std::string("C:\\a\\deep\\") + name, "x");
  ASSERT_TRUE(machine_->Lock("C:\\a\\deep\\2"));
  ExpectError(analyzer_->DeleteFolder("C:\\a"), kPermissionDenied, "DeleteFolder");
  machine_->Unlock("C:\\a\\deep\\2");
  EXPECT_EQ(machine_->ListBelow("C:\\a"), (Names{"deep\\", "deep\\2", "deep\\3"}));
  ExpectError(analyzer_->DeleteFile("C:\\a\\none"), kFileNotFound, "DeleteFile");
}

TEST_F(FileAnalyzer, CopiesFoldersWithoutTheirLinks) {
  MakeFullFolder();
  EXPECT_EQ(analyzer_->CopyFolder("C:\\a\\full", "C:\\new\\copy\\", false, false, true), 0);
  const Names kCopied = {"deep\\", "deep\\three.log", "deep\\two.txt", "one.txt"};
  EXPECT_EQ(machine_->ListBelow("C:\\new\\copy"), kCopied);
  ExpectError(analyzer_->CopyFolder("C:\\a\\full", "C:\\new\\copy", false, false, false), kFileExists, "CopyFolder");
  ExpectError(analyzer_->CopyFolder("C:\\none", "C:\\new\\x", false, false, false), kPathNotFound, "CopyFolder");
  ExpectError(analyzer_->CopyFolder("C:\\a\\full\\link\\", "C:\\new\\x", false, false, false), kPathFileAccess,
              "CopyFolder");
  EXPECT_EQ(machine_->Exists("C:\\new\\x"), "no");

  EXPECT_EQ(analyzer_->CopyFolder("C:\\new\\copy\\deep", "C:\\new\\copy\\deep\\in", false, true, false), 0);
  EXPECT_EQ(machine_->ListBelow("C:\\new\\copy\\deep"),
            (Names{"in\\", "in\\three.log", "in\\two.txt", "three.log", "two.txt"}));
  EXPECT_EQ(analyzer_->CopyFolder("C:\\new\\copy", "C:\\moved", true, false, false), 0);
  EXPECT_EQ(machine_->Exists("C:\\new\\copy"), "no");
  EXPECT_EQ(machine_->Content("C:\\moved\\one.txt"), "1");
}

TEST_F(FileAnalyzer, MovesToAnotherDrive) {
  MakeFullFolder();
  ASSERT_TRUE(machine_->SetDrive('D', "fixed"));
  EXPECT_EQ(analyzer_->CopyFile("C:\\a\\full\\one.txt", "D:\\one.txt", true, false, false), 0);
  EXPECT_EQ(machine_->Content("D:\\one.txt"), "1");
  EXPECT_EQ(machine_->Exists("C:\\a\\full\\one.txt"), "no");
  ASSERT_TRUE(machine_->MakeFile("D:\\full\\deep\\two.txt", "in the way"));
  ExpectError(analyzer_->CopyFolder("C:\\a\\full", "D:\\full", true, false, false), kFileExists, "CopyFolder");
  EXPECT_EQ(machine_->Content("C:\\a\\full\\deep\\two.txt"), "22") << "not all was copied, so all must stay";
  EXPECT_EQ(analyzer_->CopyFolder("C:\\a\\full", "D:\\full", true, true, false), 0);
  EXPECT_EQ(machine_->ListBelow("D:\\full"), (Names{"deep\\", "deep\\three.log", "deep\\two.txt"}));
  EXPECT_EQ(machine_->Content("D:\\full\\deep\\two.txt"), "22");
  EXPECT_EQ(machine_->Exists("C:\\a\\full"), "no");
  EXPECT_EQ(machine_->Content("C:\\kept\\mine.txt"), "not yours");
}

TEST_F(FileAnalyzer, SearchesFolderByFolder) {
  MakeFullFolder();
  Names hits;
  analyzer_->Search_Hit = [&](const Names& names, const std::string& folder) {
    std::string line = folder + ":";
    for (const std::string& name : names) line += " " + name;
    hits.push_back(line);
  };
  const struct {
    const char* pattern;
    EntryKind kind;
    bool recursive, match_case;
    int count;
    Names hits;
  } kCases[] = {
      {"*.*", EntryKind::Files, true, false, 3, {"C:\\a\\full\\: one.txt", "C:\\a\\full\\deep\\: three.log two.txt"}},
      {"*", EntryKind::Both, false, false, 3, {"C:\\a\\full\\: deep link one.txt"}},
      {"*", EntryKind::Folders, true, false, 2, {"C:\\a\\full\\: deep link"}},
      {"*.LOG", EntryKind::Files, true, false, 1, {"C:\\a\\full\\deep\\: three.log"}},
      {"*.LOG", EntryKind::Files, true, true, 0, {}},
      {"t?o.*", EntryKind::Both, true, true, 1, {"C:\\a\\full\\deep\\: two.txt"}},
  };
  for (const auto& c : kCases) {
    hits.clear();
    EXPECT_EQ(analyzer_->Search("C:\\a\\full", c.pattern, c.kind, c.recursive, c.match_case), c.count) << c.pattern;
    EXPECT_EQ(hits, c.hits) << c.pattern;
  }
  EXPECT_EQ(analyzer_->Search("C:\\a\\full\\link", "*", EntryKind::Both, true, false), 0);
  EXPECT_EQ(analyzer_->GetFolderSize("C:\\a\\full").Text(), "6");

  Names contents = {"before"};
  EXPECT_EQ(analyzer_->GetFolderContents("C:\\a\\full\\", EntryKind::Both, true, "*t*", contents), 3);
  EXPECT_EQ(contents,
            (Names{"before", "C:\\a\\full\\deep\\three.log", "C:\\a\\full\\deep\\two.txt", "C:\\a\\full\\one.txt"}));
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
  constexpr std::size_t kStack = (kSanitized ? 512 : 128) * 1024;  // a copy of a file takes half of the smaller
  std::string deepest = "C:\\a\\full";
  for (int level = 0; level < kLevels; ++level) deepest += "\\d";
  ASSERT_TRUE(machine_->MakeFile(deepest + "\\x.txt", "x"));
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
  ASSERT_EQ(pthread_create(&thread, &attributes, work, analyzer_.get()), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  EXPECT_EQ(machine_->Exists("C:\\a\\full"), "no");
  EXPECT_EQ(machine_->Content("C:\\a\\copy" + deepest.substr(9) + "\\x.txt"), "x");
}

TEST_F(FileAnalyzer, KeepsDatesInLocalTime) {
  machine_->MakeFile("C:\\a\\x", "x");
  constexpr PathTime kKinds[] = {PathTime::Created, PathTime::LastAccess, PathTime::LastWrite};
  // Setting one date leaves the other two.
  for (std::uint16_t hour = 1; PathTime kind : kKinds) {
    ASSERT_TRUE(analyzer_->SetPathDate("C:\\a\\x", SystemTime{2001, 2, 6, 3, hour++, 5, 6, 0}, kind));
  }
  for (std::uint16_t hour = 1; PathTime kind : kKinds) {
    const auto read = analyzer_->GetPathDate("C:\\a\\x", kind);
    ASSERT_TRUE(read);
    EXPECT_EQ(DateText(*read), "2001-02-03");
    EXPECT_EQ(read->hour, hour++);
  }
  EXPECT_FALSE(analyzer_->SetPathDate("C:\\a\\x", SystemTime{2001, 2, 0, 30}, PathTime::Created));
  EXPECT_FALSE(analyzer_->SetPathDate("C:\\a\\none", SystemTime(), PathTime::Created));
  EXPECT_FALSE(analyzer_->GetPathDate("C:\\a\\none", PathTime::Created));
}

TEST_F(FileAnalyzer, NamesDrives) {
  for (const auto& [letter, type] : std::map<char, std::string>{
           {'A', "removable"}, {'D', "cdrom"}, {'E', "removable"}, {'F', "remote"}, {'G', "ramdisk"}}) {
    ASSERT_TRUE(machine_->SetDrive(letter, type));
  }
  EXPECT_EQ(analyzer_->GetDrives(), (Names{"A:\\", "C:\\", "D:\\", "E:\\", "F:\\", "G:\\"}));
  const std::map<std::string, std::string> kNames = {
      {"A:\\", "Floppy"},    {"a:\\", "Removable"}, {"C:\\", "Fixed"},    {"D:\\", "CD-ROM"},
      {"E:\\", "Removable"}, {"F:\\", "Remote"},    {"G:\\", "RAM Disk"}, {"Q:\\", "Not Found"},
  };
  for (const auto& [root, name] : kNames) EXPECT_EQ(analyzer_->GetDriveTypeName(root), name) << root;
  EXPECT_EQ(analyzer_->GetDriveNumber("d"), 3);
  EXPECT_EQ(analyzer_->GetDriveNumber("Q:\\"), 0);
  EXPECT_FALSE(analyzer_->DriveExists("Q:\\"));
  EXPECT_EQ(analyzer_->GetSystemDrive(), "C:\\");
}

TEST_F(FileAnalyzer, MeasuresADrive) {
  DriveInfo info;
  DriveSpace space;
  EXPECT_EQ(analyzer_->GetDriveSpace("C:\\", space), 0);
  Currency sum = space.used;
  sum += space.free;
  EXPECT_EQ(sum, space.total);
  EXPECT_NEAR(space.percent_used, 100 * space.used.ToDouble() / space.total.ToDouble(), 0.005001);
  EXPECT_NE(analyzer_->GetDriveSpace("Q:\\", space), 0);
  EXPECT_NE(analyzer_->GetDriveInfo("Q:\\", info), 0);
  EXPECT_EQ(analyzer_->LastError().Number, 0) << "a code of Windows is no run-time error";
}

TEST_F(FileAnalyzer, FollowsAProgramToItsEnd) {
  ASSERT_TRUE(machine_->OutsideProgram("slow.exe", 3, 5));
  const std::string program = machine_->ProgramFolder() + "\\slow.exe";
  int pumps = 0;
  machine_->on_pump = [&] { ++pumps; };
  WindowHandle owner = WindowHandle::None;
  machine_->gate().TakeCalls();
  EXPECT_EQ(analyzer_->Execute(program, 0, "-h -q", true, owner), 0);
  EXPECT_GE(pumps, 5);
  const Names started = CallsOf("CreateProcessA");
  ASSERT_EQ(started.size(), 1U);
  EXPECT_NE(started[0].find('"' + program + "\" -h -q"), std::string::npos) << started[0];

  // A process that may not be asked counts as ended: the loop must not go on for ever.
  for (const char* operation : {"GetExitCodeProcess", "OpenProcess"}) {
    machine_->gate().SetFault(operation, 1, 5);
    EXPECT_EQ(analyzer_->Execute(program, 0, "", true, owner), 0) << operation;
  }
  machine_->gate().ClearFaults();
  ExpectError(analyzer_->Execute("C:\\a\\none.exe", 0, "", true, owner), kFileNotFound, "Execute");
}

TEST_F(FileAnalyzer, StartsTheProgramOfADocument) {
  machine_->MakeFile("C:\\a\\page.xyz", "");
  ASSERT_TRUE(machine_->OutsideProgram("viewer.exe", 0, 1));
  const std::string viewer = machine_->ProgramFolder() + "\\viewer.exe";
  WindowHandle owner = WindowHandle::None;
  machine_->gate().TakeCalls();
  ExpectError(analyzer_->Execute("C:\\a\\page.xyz", 0, "", true, owner), kPathFileAccess, "Execute");
  EXPECT_TRUE(CallsOf("CreateProcessA").empty());
  machine_->Associate("xyz", viewer);
  EXPECT_EQ(analyzer_->Execute("C:\\a\\page.xyz", 0, "", true, owner), 0);
  const Names started = CallsOf("CreateProcessA");
  ASSERT_EQ(started.size(), 1U);
  EXPECT_NE(started[0].find('"' + viewer + "\" C:\\a\\page.xyz\""), std::string::npos) << started[0];

  analyzer_->active_window = [] { return static_cast<WindowHandle>(7); };
  EXPECT_EQ(analyzer_->Execute("C:\\a\\page.xyz", 1, "", false, owner), 0);
  EXPECT_EQ(owner, static_cast<WindowHandle>(7));
  const int refused = analyzer_->Execute("C:\\a\\none.xyz", 1, "", false, owner);
  EXPECT_GT(refused, 0);
  EXPECT_LE(refused, 32);
}

// Each operation is made to fail at its first, second, third ... call: the number must say so, what lies
// behind the link must stay, and no handle may be left open.
TEST_F(FileAnalyzer, ReportsEveryFailureOfAFolderCopyAndDelete) {
  for (const char* operation :
       {"CreateDirectoryA", "CopyFileA", "SetFileAttributesA", "DeleteFileA", "RemoveDirectoryA"}) {
    std::uint32_t nth = 1;
    for (int number = 1; number != 0; ++nth) {
      ASSERT_LT(nth, 50U) << operation;
      machine_->Delete("C:\\a\\full");
      machine_->Delete("C:\\a\\copy");
      MakeFullFolder();
      machine_->gate().SetFault(operation, nth, 5);
      number = analyzer_->CopyFolder("C:\\a\\full", "C:\\a\\copy", false, false, false);
      if (number == 0) number = analyzer_->DeleteFolder("C:\\a\\full");
      machine_->gate().ClearFaults();
      EXPECT_EQ(machine_->Content("C:\\kept\\mine.txt"), "not yours") << operation << nth;
      EXPECT_EQ(machine_->OpenHandles(), 0U) << operation << nth;
      if (number != 0) {
        EXPECT_EQ(number, kPathFileAccess) << operation << nth;
        EXPECT_EQ(machine_->Exists("C:\\a\\full"), "folder") << operation << nth;
      }
    }
    EXPECT_GT(nth, 2U) << operation << " was never called";
    EXPECT_EQ(machine_->Exists("C:\\a\\full"), "no") << operation;
  }
}

}  // namespace
}  // namespace qb
