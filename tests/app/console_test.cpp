#include "app/rehearse/console/console.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/rehearsal.h"

namespace qb::rehearse {
namespace {

struct Played {
  Status status;
  std::string out, err;
};

Played Play(machine::Machine& machine, const std::string& script) {
  std::istringstream in(script);
  std::ostringstream out, err;
  const Status status = RunScript(machine, in, out, err);
  return {status, out.str(), err.str()};
}

TEST(ConsoleTest, ExpectationsThatMissAreToldByLineAndTheScriptGoesOn) {
  test::Rehearsal rehearsal;
  const Played played = Play(rehearsal.machine(),
                             "# a comment\n\n"
                             "expect running is yes\n"
                             "expect running has no\r\n"
                             "expect running lacks n\n"
                             "expect cache is\n"
                             "expect cache is \"\"\n"
                             "running\n"
                             "start\nduring 1 expect timers has nothing \"of it\"\ndo Pause_Seconds 1\n"
                             "expect list comboAK_Timer is 15\n");
  EXPECT_EQ(played.status, Status::NotHeld);
  EXPECT_TRUE(
      played.out.starts_with("line 3: expected is \"yes\", got \"no\"\n"
                             "line 5: expected lacks \"n\", got \"no\"\n"
                             "no\n"
                             "line 10: expected has \"nothing\" \"of it\", got "))
      << played.out;
  EXPECT_NE(played.out.find("line 12: expected is \"15\", got \"15 Minutes{nl}30 Minutes{nl}"), std::string::npos);
}

TEST(AsksForCalls, InAnyPlaceOfALine) {
  const std::pair<const char*, bool> scripts[] = {{"calls", true},
                                                  {"start\r\n\"calls\"\r\n", true},
                                                  {"  expect calls DeleteFileA has x", true},
                                                  {"during 3 calls", true},
                                                  {"during 2 expect calls is\nstart", true},
                                                  {"", false},
                                                  {"# calls\nstart", false},
                                                  {"file C:\\calls.txt", false},
                                                  {"start \"calls", false}};
  for (const auto& [script, asks] : scripts) {
    std::istringstream in(script);
    EXPECT_EQ(AsksForCalls(in), asks) << script;
  }
}

// Scripts of a line each, parted by bars; those of the second text behind a start.
constexpr std::string_view kNotUnderstood[] = {
    "frobnicate|advance|advance 5|advance 5 s|advance -1s|click cmdNowhere|get HistoryRemoved|start-again|"
    "fail NoSuchCall|fail DeleteFileA 0|calls NoSuchCall|expect running|expect is x|expect running has|"
    "during 0 running|during 3 frobnicate|during 1 during 1 frobnicate|folder x C:\\|drive CC fixed|"
    "drive C cardboard|file C:\\x hex 0|file C:\\x size -1|file C:\\x from /dev/zero|text C:\\none|"
    "attributes C:\\none|files C:\\none|reg add HKCR\\x|reg add HKCU\\x name dword 4294967296|reg add HKCU\\x name|"
    "reg frobnicate|window close #9|window open A B C|window open A in #9|cache add u 0xZZ|lock C:\\none|"
    "attrib C:\\WINDOWS +q|say \"unclosed|say a\"b|say \"a\"b|say \"\"\"|advance s|advance \"\"|advance 5d|"
    "advance 99999999999999999999ms|advance 9999999999h",
    "start|get Nothing|get chkIE_all.Nothing|get frmNone.Visible|do Nothing|do Add_Backslash 1 2 3|"
    "choose SftTabs1 10|mark lstStatus 0|tick cmdKILLALL|type chkIE_all x|do Timer1_Click|do cmdKILLALL_Timer|"
    "do chkIE_droplist_Click|do _Click|do mnuHotKeys_Click 1|do Add_Backslash|do Log_Step 32768|do Log_Step -32769|"
    "do Log_Step x|do Pause_Seconds x|do Split_Images C:\\x 1 2|do RegistryCounter.ReadRegString HKCR a b"};

TEST(ConsoleTest, WhatIsNotUnderstoodEndsTheScript) {
  test::Rehearsal rehearsal;
  for (const std::string_view& scripts : kNotUnderstood) {
    const std::string before =
        &scripts == kNotUnderstood ? "" : "start\nclick mnuAutoKillSettings\nchoose SftTabs1 9\n";
    std::istringstream lines{std::string(scripts)};
    for (std::string line; std::getline(lines, line, '|');) {
      const Played played = Play(rehearsal.machine(), before + line + "\nrunning\n");
      EXPECT_EQ(played.status, Status::NotUnderstood) << line;
      EXPECT_EQ(played.out, "") << line;
      EXPECT_TRUE(played.err.starts_with(before.empty() ? "line 1: " : "line 4: ")) << line << played.err;
    }
  }
}

// Each of them waits for the next inside a loop of the program, and takes its share of the stack.
TEST(ConsoleTest, CommandsInsideEachOtherHaveABound) {
  std::string modal = "reg add HKCU\\Software\\Microsoft\\MSN6 LastRunFrom sz C:\\MSN\n", moments, nested;
  for (int i = 0; i < 20'000; ++i) {
    modal += "do Get_MSN8_Profile\n";
    moments += "during 1 do Pause_Seconds 1\n";
    if (i < 600) nested += "during 1 ";
  }
  for (const std::string& script : {modal, moments + "do Pause_Seconds 1\n", nested + "running\n"}) {
    test::Rehearsal rehearsal;
    const Played played = Play(rehearsal.machine(), "start\n" + script);
    EXPECT_EQ(played.status, Status::NotUnderstood);
    EXPECT_NE(played.err.find("inside each other"), std::string::npos) << played.err;
  }
}

// What was done before stays; nobody is asked, and what the program does while it unwinds does not stay.
TEST(ConsoleTest, PowerGoesWithTheEndOfTheScript) {
  const std::string modal = "reg add HKCU\\Software\\Microsoft\\MSN6 LastRunFrom sz C:\\MSN\nstart\n";
  const struct {
    std::string script;
    Status status;
  } kCases[] = {{modal, Status::Held},
                {modal + "frobnicate\nreg add HKCU\\Software\\Never\n", Status::NotUnderstood},
                {"start\nclose\n", Status::Held}};
  for (const auto& c : kCases) {
    test::Rehearsal rehearsal;
    EXPECT_EQ(Play(rehearsal.machine(), "reg add HKCU\\Software\\World\n" + c.script).status, c.status);
    for (int round = 0; round < 2; ++round) {  // of the machine at hand, and of its folder
      rehearsal.Play(
          "expect reg show HKCU\\Software\\World is\nexpect reg show HKCU\\Software\\Never is (absent)\n"
          "expect setting HistoryRemoved is (absent)\nexpect setting QBBuild " +
          std::string(c.script == modal || c.status != Status::Held ? "is" : "lacks") + " (absent)\n");
      EXPECT_EQ(rehearsal.status(), Status::Held) << c.script << rehearsal.printed();
      rehearsal.Reopen();
    }
  }
}

// One that takes no request to end for an end, and writes when its loop is left.
class Stubborn : public RunningProgram {
 public:
  Stubborn(Platform& platform, FormWatcher& watcher)
      : platform_(platform), main_({platform, watcher, life_}, "frmMain", "Main") {}
  void Start() override {
    while (platform_.pump.WaitMessage()) {
    }
    StepOver(platform_.registry.RegCreateKeyA(KeyHandle::CurrentUser, "Software\\After"));
  }
  bool Ended() const override { return false; }
  Form& MainForm() override { return main_; }
  std::optional<std::string> Variable(std::string_view /*name*/) override { return std::nullopt; }
  CallOutcome Call(std::string_view /*routine*/, const std::vector<std::string>& /*arguments*/) override { return {}; }

 private:
  Platform& platform_;
  Lifetime life_;
  Form main_;
};

TEST(ConsoleTest, ARebootEndsAProgramThatWouldGoOn) {
  test::Rehearsal rehearsal;
  std::istringstream in("start\nreboot\nexpect running is no\nexpect reg show HKCU\\Software\\After is (absent)\n");
  std::ostringstream out, err;
  const ProgramMaker maker = [](Platform& platform, FormWatcher& watcher, const std::string&, WindowHandle) {
    return std::make_unique<Stubborn>(platform, watcher);
  };
  EXPECT_EQ(Console(rehearsal.machine(), in, out, err, maker, "").Run(), Status::Held) << out.str() << err.str();
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
