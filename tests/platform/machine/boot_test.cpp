// What outlives a run of the program: pending renames, what is going, what a machine was told.
#include "tests/platform/machine/machine_test.h"
#include "tests/support/rehearsal.h"

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
  // Removed while it is open: it is there, and cannot be opened, until its program ends.
  ASSERT_TRUE(world().MakeFile("C:\\B\\going", "x"));
  ASSERT_TRUE(files().CreateFileA("C:\\B\\going", 0, kShareNone, kOpenExisting, 0).ok());
  EXPECT_EQ(files().DeleteFileA("C:\\B\\going"), Error::Success);
  EXPECT_EQ(TryOpen("C:\\B\\going", kGenericRead), Error::AccessDenied);
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

// What told.rehearsal tells a machine is what kept.rehearsal finds, at once and in the next rehearsal.
TEST(Kept, WhatAMachineIsTold) {
  Rehearsal rehearsal;
  rehearsal.machine().CacheAdd({"\r\n", 1, {}});
  rehearsal.Play(ScriptPart("told") + ScriptPart("kept"));
  for (const char* when : {"as told", "opened anew"}) {
    EXPECT_EQ(rehearsal.status(), rehearse::Status::Held) << when << rehearsal.printed();
    TextBuffer user(257);
    StepOver(rehearsal.machine().platform().system.GetUserNameA(user));
    EXPECT_EQ(user.text(), "J\xC3\xB6rg =x") << when;
    EXPECT_EQ(rehearsal.machine().Cache().at(0).url, "\r\n") << when;
    std::string problem;
    ASSERT_TRUE(rehearsal.machine().Save(problem)) << problem;
    rehearsal.Reopen();
    rehearsal.Play(ScriptPart("kept"));
  }
}

}  // namespace
}  // namespace qb::test
