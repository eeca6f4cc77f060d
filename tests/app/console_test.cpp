#include "app/rehearse/console/console.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/app/demo_program.h"
#include "tests/app/temp_folder.h"

namespace qb::rehearse {
namespace {

struct Played {
  int status = 0;
  std::string out, err;
};

class ConsoleTest : public ::testing::Test {
 protected:
  Played Play(const std::string& script) {
    std::string problem;
    auto machine = machine::Machine::Open((folder_.path() / "machine").string(), problem);
    EXPECT_NE(machine, nullptr) << problem;
    if (machine == nullptr) return {};
    std::istringstream in(script);
    std::ostringstream out, err;
    Console console(*machine, in, out, err, test::MakeDemo, "");
    int status = static_cast<int>(console.Run());
    return {status, out.str(), err.str()};
  }
  // The script must hold throughout.
  void Holds(const std::string& script) {
    Played played = Play(script);
    EXPECT_EQ(played.status, 0) << played.out << played.err;
    EXPECT_EQ(played.out, "");
  }

  test::TempFolder folder_;
};

TEST_F(ConsoleTest, ExpectationsThatMissAreToldByLineAndTheScriptGoesOn) {
  Played played = Play(
      "# a comment\n\n"
      "expect running is yes\n"
      "expect running has no\r\n"
      "expect running lacks n\n"
      "expect cache is\n"
      "expect cache is \"\"\n"
      "running\n");
  EXPECT_EQ(played.status, 1);
  EXPECT_EQ(played.out,
            "line 3: expected is \"yes\", got \"no\"\n"
            "line 5: expected lacks \"n\", got \"no\"\n"
            "no\n");
}

TEST(AsksForCalls, InAnyPlaceOfALine) {
  auto asks = [](const char* script) {
    std::istringstream in(script);
    return AsksForCalls(in);
  };
  for (const char* script : {"calls", "start\r\n\"calls\"\r\n", "  expect calls DeleteFileA has x", "during 3 calls",
                             "during 2 expect calls is\nstart"}) {
    EXPECT_TRUE(asks(script)) << script;
  }
  for (const char* script : {"", "# calls\nstart", "file C:\\calls.txt", "start \"calls"})
    EXPECT_FALSE(asks(script)) << script;
}

TEST_F(ConsoleTest, WhatIsNotUnderstoodEndsTheScript) {
  for (const char* line : {"frobnicate",
                           "advance",
                           "advance 5",
                           "advance 5 s",
                           "advance -1s",
                           "click cmdNowhere",
                           "get Ticks",
                           "start\nstart",
                           "start-again",
                           "start\nget Nothing",
                           "start\nget chkBox.Nothing",
                           "start\nget frmNone.Visible",
                           "start\ndo Nothing",
                           "start\ndo Echo 1 2 3",
                           "start\nchoose tabs 2",
                           "start\nchoose tabs 1\nmark lstStatus 0",
                           "start\ntick cmdRun",
                           "start\ntype chkBox x",
                           "fail NoSuchCall",
                           "fail DeleteFileA 0",
                           "calls NoSuchCall",
                           "expect running",
                           "expect is x",
                           "expect running has",
                           "during 0 running",
                           "during 3 frobnicate",
                           "during 1 during 1 frobnicate",
                           "folder x C:\\",
                           "drive CC fixed",
                           "drive C cardboard",
                           "file C:\\x hex 0",
                           "file C:\\x size -1",
                           "file C:\\x from /dev/zero",
                           "text C:\\none",
                           "attributes C:\\none",
                           "files C:\\none",
                           "reg add HKCR\\x",
                           "reg add HKCU\\x name dword 4294967296",
                           "reg add HKCU\\x name",
                           "reg frobnicate",
                           "window close #9",
                           "window open A B C",
                           "window open A in #9",
                           "cache add u 0xZZ",
                           "lock C:\\none",
                           "attrib C:\\WINDOWS +q",
                           "say \"unclosed",
                           "say a\"b"}) {
    Played played = Play(std::string(line) + "\nrunning\n");
    EXPECT_EQ(played.status, 2) << line;
    EXPECT_EQ(played.out, "") << line;
    EXPECT_TRUE(played.err.starts_with("line ")) << line << played.err;
  }
}

TEST_F(ConsoleTest, UserReachesOnlyWhatIsInReach) {
  Holds(
      "start\n"
      "expect tick chkOff is \"refused: chkOff is disabled\"\n"
      "expect choose cmbEvery 1 is \"refused: cmbEvery is hidden\"\n"
      "expect click popShow is \"refused: popShow is hidden\"\n"
      "expect get cmbEvery.ListIndex is -1\n"
      "tick chkBox\n"
      "tick chkBox\n"
      "expect get CHKBOX.value is 1\n"
      "untick chkBox\n"
      "expect get frmMain.chkBox.Value is 0\n"
      "tick optFirst\n"
      "expect get optSecond.Value is false\n"
      "choose tabs 1\n"
      "choose cmbEvery 1\n"
      "choose cmbEvery 1\n"
      "expect log is \" - combo 1\" \" - combo 1\"\n"
      "mark lstStatus 0 1\n"
      "expect click chkBox is \"refused: chkBox is hidden\"\n"
      "expect do Echo \"a b\" \"\" is \"a b\" \"\"\n"
      "close\n"
      "expect close is \"refused: frmMain is hidden\"\n"
      "expect click lblURL is \"refused: lblURL is hidden\"\n"
      "expect running is yes\n"
      "close frmMain\n"
      "expect running is no\n"
      "expect forms is\n");
}

TEST_F(ConsoleTest, PopupClosesAtTheClickOfItsItem) {
  Holds(
      "start\n"
      "mousedown cmdRun\n"
      "expect show has \"Show\"\n"
      "click popShow\n"
      "expect log is \" - popup\"\n"
      "expect click popShow is \"refused: popShow is hidden\"\n");
}

TEST_F(ConsoleTest, CommandLineIsTheRestOfTheLine) {
  Holds("start /STARTUP  \nexpect get CommandLine is \"/STARTUP  \"\n");
  Holds("expect start  /X is\nexpect get CommandLine is \" /X\"\n");
  Holds("start /STARTUP  \"and more\"\nexpect get CommandLine is \"/STARTUP  \"\"and more\"\"\"\n");
}

TEST_F(ConsoleTest, ScriptGoesOnInsideAModalWindow) {
  Holds(
      "start\n"
      "expect click cmdModal is\n"
      "expect forms is \"frmOptions visible\" \"frmMain visible\"\n"
      "click cmdShared\n"
      "expect get txtFolder.Text is \"shared clicked\"\n"
      "click frmMain.cmdShared\n"
      "type txtFolder C:\\x\n"
      "expect log is\n"
      "click cmdOK\n"
      "expect forms is \"frmMain visible\"\n"
      "expect log is \" - modal left\"\n");
}

// Each of them waits for the next inside a loop of the program, and takes its share of the stack.
TEST_F(ConsoleTest, CommandsInsideEachOtherHaveABound) {
  std::string modal = "start\n", moments = "start\n", nested;
  for (int i = 0; i < 20'000; ++i) {
    modal += "click frmMain.cmdModal\n";
    moments += "during 1 click cmdRun\n";
    if (i < 600) nested += "during 1 ";
  }
  for (const std::string& script : {modal, moments + "click cmdRun\n", nested + "running\n"}) {
    Played played = Play(script);
    EXPECT_EQ(played.status, 2);
    EXPECT_NE(played.err.find("inside each other"), std::string::npos) << played.err;
  }
}

TEST_F(ConsoleTest, PowerGoesInsideAModalWindow) {
  struct Case {
    const char* last_line;
    int status;
  };
  for (const Case& c : {Case{"", 0}, Case{"frobnicate\nreg add HKCU\\Software\\Never\n", 2}}) {
    Played played = Play(std::string("reg add HKCU\\Software\\World\nstart\nclick cmdModal\n") + c.last_line);
    EXPECT_EQ(played.status, c.status);
    // What was done before stays; what the program does while it unwinds does not.
    Holds(
        "expect reg show HKCU\\Software\\World is\n"
        "expect reg show HKCU\\Software\\AfterModal is (absent)\n"
        "expect reg show HKCU\\Software\\Never is (absent)\n");
  }
}

TEST_F(ConsoleTest, DuringCountsPumpsFromWhereItStands) {
  Holds(
      "during 2 expect log is \" - pump 1\"\n"
      "during 2 during 2 expect log has \" - pump 3\"\n"
      "during 2 during 2 expect log lacks \" - pump 4\"\n"
      "during 9 reg add HKCU\\Software\\Nine\n"
      "during 11 reg add HKCU\\Software\\Eleven\n"
      "start\n"
      "click cmdRun\n"
      "expect reg show HKCU\\Software\\Nine is\n"
      "expect reg show HKCU\\Software\\Eleven is (absent)\n"
      "during 1 expect log has \" - pump 10\"\n"
      "click cmdRun\n"
      "expect reg show HKCU\\Software\\Eleven is\n");
  Played played = Play("start\n\nduring 3 expect log is nothing\nclick cmdRun\n");
  EXPECT_EQ(played.status, 1);
  EXPECT_EQ(played.out, "line 3: expected is \"nothing\", got \" - pump 1{nl} - pump 2\"\n");
}

TEST_F(ConsoleTest, RebootAsksOnceAndEndsEverything) {
  for (const char* where :
       {"start\nreboot\n", "start\nclick cmdModal\nreboot\n", "during 3 reboot\nstart\nclick cmdRun\n"}) {
    Holds(std::string(where) +
          "expect running is no\n"
          "expect reg show HKCU\\Software\\Asked2 is\n"
          "expect reg show HKCU\\Software\\AfterModal is (absent)\n"
          "reg delete HKCU\\Software\\Asked2\n"
          "start\n"
          "expect running is yes\n"
          "advance 5s\n"
          "expect get Ticks is 5\n");
  }
}

TEST_F(ConsoleTest, EndOfTheScriptAsksNobody) {
  Holds("start\n");
  Holds("expect reg show HKCU\\Software has Microsoft\nexpect reg show HKCU\\Software lacks Asked\n");
}

TEST_F(ConsoleTest, TimersAreListedAndTick) {
  Holds(
      "start\n"
      "expect timers is \"Timer1 1000 on\"\n"
      "advance 2500ms\n"
      "expect get Ticks is 2\n"
      "close frmMain\nclose frmMain\n"
      "expect timers is\n");
}

TEST_F(ConsoleTest, HandlersAreRoutines) {
  Holds(
      "start\n"
      "do Timer1_Timer\n"
      "expect get Ticks is 1\n"
      "expect do popShow_Click is\n"
      "do cmdRun_MouseDown\n"
      "expect show has Show\n"
      "expect log is \" - popup\"\n");
  for (const char* routine : {"Timer1_Click", "cmdRun_Timer", "chkBox_Click", "_Click", "popShow_Click 1"}) {
    EXPECT_EQ(Play(std::string("start\ndo ") + routine).status, 2) << routine;
  }
}

TEST(ConsoleTables, NoNameStandsTwiceWithTheSameNumberOfWords) {
  std::vector<const Command*> all;
  for (std::span<const Command> table : CommandTables()) {
    for (const Command& command : table) {
      EXPECT_LE(command.least, command.most) << command.name;
      for (const Command* other : all) {
        bool apart = other->name != command.name || other->most < command.least || command.most < other->least;
        EXPECT_TRUE(apart) << command.name;
      }
      all.push_back(&command);
    }
  }
}

}  // namespace
}  // namespace qb::rehearse
