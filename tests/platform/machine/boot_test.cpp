// What outlives a run of the program: pending renames, WININIT.INI, the Recycle Bin, the machine's settings; and
// the gate that every call passes.
#include "tests/platform/machine/machine_test.h"

namespace qb::test {
namespace {

using BootOfMachine = MachineTest;

TEST_F(BootOfMachine, PendingRenamesAreDoneOnceInOrder) {
  for (const char* name : {"gone", "first", "blocked", "there", "bare"}) {
    ASSERT_TRUE(world().MakeFile(std::string("C:\\B\\") + name, name));
  }
  ASSERT_TRUE(world().MakeFile("C:\\B\\empty\\f", "x"));
  auto later = [&](const char* from, std::optional<std::string_view> to) {
    EXPECT_EQ(files().MoveFileExA(from, to, kMoveDelayUntilReboot), Error::Success) << from;
  };
  later("C:\\B\\gone", std::nullopt);
  later("C:\\B\\first", "C:\\B\\second");
  later("C:\\B\\second", "C:\\B\\third");  // only there once the line before is done
  later("C:\\B\\blocked", "C:\\B\\there");
  later("C:\\B\\empty", std::nullopt);
  later("C:\\B\\bare", "1");  // the new name hangs on the folder that is current now
  ASSERT_EQ(files().SetCurrentDirectoryA("C:\\WINDOWS"), Error::Success);
  EXPECT_EQ(world().Exists("C:\\B\\gone"), "file") << "nothing happens before the boot";
  SaveAndReopen();
  const auto pending = world().Pending();
  ASSERT_EQ(pending.size(), 6u);
  EXPECT_EQ(pending[0].from + "|" + pending[0].to, "C:\\B\\gone|");
  EXPECT_EQ(pending[1].from + "|" + pending[1].to, "C:\\B\\first|C:\\B\\second");
  // What held a file ends with the programs; a file that is read-only goes all the same.
  ASSERT_TRUE(world().ChangeAttributes("C:\\B\\gone", {"+r"}));
  ASSERT_TRUE(world().Lock("C:\\B\\gone"));
  ASSERT_TRUE(world().Lock("C:\\B\\there"));
  ASSERT_TRUE(files().CreateFileA("C:\\B\\first", kGenericRead, kShareNone, kOpenExisting, 0).ok());
  world().Boot();
  EXPECT_EQ(world().OpenHandles(), 0u);
  EXPECT_EQ(TryOpen("C:\\B\\there", kGenericRead), Error::Success);
  EXPECT_EQ(world().ListBelow("C:\\B"), (std::vector<std::string>{"blocked", "empty\\", "empty\\f", "there", "third"}));
  EXPECT_EQ(world().Content("C:\\B\\there"), "there") << "a target that is there makes the rename fail";
  EXPECT_EQ(world().Content("C:\\B\\third"), "first");
  EXPECT_EQ(world().Content("C:\\Program Files\\Quillbarrow\\1"), "bare");
  EXPECT_TRUE(world().Pending().empty());
  ASSERT_TRUE(world().MakeFile("C:\\B\\gone", "new"));
  world().Boot();
  EXPECT_EQ(world().Content("C:\\B\\gone"), "new") << "a rename is done once";
}

TEST_F(BootOfMachine, WininitIsCarriedOutOnce) {
  for (const char* name : {"one", "two", "three", "four"}) {
    ASSERT_TRUE(world().MakeFile(std::string("C:\\W\\") + name, name));
  }
  ASSERT_TRUE(world().MakeFile("C:\\WINDOWS\\WININIT.INI",
                               "[other]\r\nNUL=C:\\W\\four\r\n[rename]\r\nNUL=C:\\W\\one\r\n"
                               "nul=C:\\W\\two\r\nC:\\W\\moved=C:\\W\\three\r\nrubbish\r\nNUL=C:\\W\\none"));
  world().Boot();
  EXPECT_EQ(world().ListBelow("C:\\W"), (std::vector<std::string>{"four", "moved"}));
  EXPECT_EQ(world().Exists("C:\\WINDOWS\\WININIT.INI"), "no");
  ASSERT_TRUE(world().MakeFile("C:\\W\\one", "new"));
  world().Boot();
  EXPECT_EQ(world().Content("C:\\W\\one"), "new");
}

TEST_F(BootOfMachine, TheRecycleBinCountsKeepsAndEmpties) {
  ASSERT_TRUE(world().MakeFile("C:\\R\\same.txt", "1"));
  ASSERT_TRUE(world().Discard("C:\\R\\same.txt"));
  ASSERT_TRUE(world().MakeFile("C:\\R\\same.txt", "22"));
  ASSERT_TRUE(world().Discard("C:\\R"));
  EXPECT_FALSE(world().Discard("C:\\R"));
  EXPECT_EQ(world().RecycleCount(), 2u);
  SaveAndReopen();
  EXPECT_EQ(world().RecycleCount(), 2u);
  auto& shell = world().platform().shell;
  const auto info = shell.SHQueryRecycleBinA(std::nullopt);
  EXPECT_EQ(info.value.items, 2u);
  EXPECT_EQ(info.value.bytes, 3u);
  EXPECT_EQ(shell.SHEmptyRecycleBinA(WindowHandle::None, std::nullopt, 7), 0u);
  EXPECT_EQ(world().RecycleCount(), 0u);
}

TEST_F(BootOfMachine, SettingsAndTheClockGoOn) {
  world().SetWindowsVersion(4, 9, 1);
  world().SetUser("J\xC3\xB6rg =x");
  world().SetWindowsFolder("C:\\WIN98");
  world().SetProgramFolder("C:\\Tools\\QB");
  world().SetSpecialFolder(26, 1, "");
  world().SetSpecialFolder(28, 0, "C:\\Local");
  ASSERT_TRUE(world().SetDrive('E', "cdrom"));
  world().CacheAdd({"Cookie:user@a=b;[c]%41\r\n", 0x100001, "C:\\c.txt"});
  world().Advance(5000);
  const std::uint64_t files_time = world().platform().system.GetLocalTime().second;
  SaveAndReopen();
  auto& platform = world().platform();
  const auto version = platform.system.GetVersionExA().value;
  EXPECT_EQ(version.major * 100 + version.minor * 10 + version.platform_id, 491u);
  TextBuffer text(260);
  StepOver(platform.system.GetUserNameA(text));
  EXPECT_EQ(text.text(), "J\xC3\xB6rg =x");
  StepOver(platform.system.GetWindowsDirectoryA(text));
  EXPECT_EQ(text.text(), "C:\\WIN98");
  EXPECT_EQ(platform.shell.SHGetFolderPathA(26, text), 1u);
  EXPECT_EQ(platform.shell.SHGetFolderPathA(28, text), 0u);
  EXPECT_EQ(text.text(), "C:\\Local");
  EXPECT_EQ(platform.shell.SHGetFolderPathA(200, text), 0x80070057u);
  EXPECT_EQ(world().Exists("C:\\Tools\\QB\\Quillbarrow.exe"), "file");
  EXPECT_EQ(platform.files.GetDriveTypeA("E:\\"), DriveType::CdRom);
  ASSERT_EQ(world().Cache().size(), 1u);
  EXPECT_EQ(world().Cache()[0].url, "Cookie:user@a=b;[c]%41\r\n");
  EXPECT_EQ(world().Cache()[0].type, 0x100001u);
  const SystemTime now = platform.system.GetLocalTime();
  EXPECT_EQ(now.year, 2019);
  EXPECT_EQ(now.hour, 12);
  EXPECT_EQ(now.second, files_time);
}

TEST_F(BootOfMachine, ADamagedSettingsFileIsRefusedInOneLineAndLeftAlone) {
  std::string problem;
  ASSERT_TRUE(world().Save(problem)) << problem;
  for (const char* name : {"machine.ini", "urlcache.ini"}) {
    const std::string whole = HostRead(HostFolder() / name);
    const std::string bytes = whole + "no section, no value\n";
    HostWrite(HostFolder() / name, bytes);
    EXPECT_EQ(machine::Machine::Open(HostFolder().string(), problem), nullptr) << name;
    EXPECT_NE(problem, "");
    EXPECT_EQ(problem.find('\n'), std::string::npos) << problem;
    EXPECT_EQ(HostRead(HostFolder() / name), bytes);
    HostWrite(HostFolder() / name, whole);
  }
}

TEST_F(BootOfMachine, CallsAreWrittenWithAllTheirArguments) {
  auto& shell = world().platform().shell;
  ASSERT_TRUE(world().MakeFile("C:\\discarded", "x") && world().Discard("C:\\discarded"));
  world().gate().TakeCalls();
  StepOver(files().CreateFileA("C:\\no", kGenericRead, kShareRead, kOpenExisting, 0));
  StepOver(files().FlushFileBuffers(FileHandle{1}));
  StepOver(files().MoveFileExA("C:\\a", "C:\\b", 4));
  StepOver(files().MoveFileExA("C:\\a", std::nullopt, 4));
  StepOver(files().GetFileAttributesA("C:\\no \"x"));
  StepOver(registry().RegOpenKeyExA(KeyHandle::CurrentUser, "No Such", kKeyRead));
  shell.SHAddToRecentDocs(2, std::nullopt);
  StepOver(shell.SHEmptyRecycleBinA(WindowHandle{5}, std::nullopt, 7));
  pump().PumpMessages();
  StepOver(world().platform().system.GetTickCount());
  std::vector<std::string> lines;
  for (const auto& call : world().gate().TakeCalls()) lines.push_back(call.line);
  EXPECT_EQ(lines, (std::vector<std::string>{
                       "CreateFileA(\"C:\\no\", 2147483648, 1, null, 3, 0, null) = #18446744073709551615",
                       "FlushFileBuffers(#1) = 0",
                       "MoveFileExA(\"C:\\a\", \"C:\\b\", 4) = 1",
                       "MoveFileExA(\"C:\\a\", null, 4) = 1",
                       "GetFileAttributesA(\"C:\\no \"x\") = 4294967295",
                       "RegOpenKeyExA(#2147483649, \"No Such\", 0, 131097, null) = 2",
                       "SHAddToRecentDocs(2, null) = ",
                       "SHEmptyRecycleBinA(#5, null, 7) = 0",
                   }));
}

TEST_F(BootOfMachine, AFaultComesAtItsTurnAndDoesNothing) {
  for (const char* name : {"1", "2", "3"}) ASSERT_TRUE(world().MakeFile(std::string("C:\\F\\") + name, "x"));
  machine::Gate& gate = world().gate();
  const std::uint64_t before = gate.Counts().count("DeleteFileA") == 0 ? 0 : gate.Counts().find("DeleteFileA")->second;
  gate.SetFault("DeleteFileA", 2, 32);
  EXPECT_EQ(files().DeleteFileA("C:\\F\\1"), Error::Success);
  EXPECT_EQ(files().DeleteFileA("C:\\F\\2"), Error::SharingViolation);
  EXPECT_EQ(world().Exists("C:\\F\\2"), "file");
  EXPECT_EQ(files().DeleteFileA("C:\\F\\2"), Error::Success) << "a fault comes once";
  gate.SetFault("DeleteFileA", 0, 5);
  gate.SetFault("RegCloseKey", 1, 6);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(files().DeleteFileA("C:\\F\\3"), Error::AccessDenied);
  gate.ClearFaults();
  EXPECT_EQ(files().DeleteFileA("C:\\F\\3"), Error::Success);
  EXPECT_EQ(gate.Counts().find("DeleteFileA")->second - before, 7u);
}

}  // namespace
}  // namespace qb::test
