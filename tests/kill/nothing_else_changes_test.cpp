// Whole runs over a used computer: the traces go, and nothing else changes, whatever fails on the way.
#include <gtest/gtest.h>

#include <random>

#include "tests/support/browser_traces.h"
#include "tests/support/rehearsal.h"
#include "tests/support/snapshot.h"

namespace qb {
namespace {

using test::Differences;
using test::Rehearsal;
using test::Snapshot;
using test::TakeSnapshot;

// Where a run of the Windows tab may change something; the last rows are the program's own.
const std::vector<std::string> kMayChange = {
    "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RunMRU",
    "HKCU\\Software\\Microsoft\\MediaPlayer\\Player\\RecentURLList",
    "HKCU\\Software\\Microsoft\\MediaPlayer\\Player\\RecentFileList",
    "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\doc",
    "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\*\\",
    "C:\\WINDOWS\\wmplibrary_v_0_12.db",
    "C:\\FILE0001.CHK",
    "C:\\file0002.chk",
    "C:\\WINDOWS\\TEMP",
    "C:\\WINDOWS\\Application Data\\Microsoft\\Office\\Recent",
    "C:\\$Recycle.Bin",
    "C:\\Users\\user\\AppData\\Local\\Quillbarrow",
    "HKCU\\Software\\VB and VBA Program Settings\\",
    "HKCU\\Software\\VB and VBA Program Settings",
    "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Run",
};

constexpr const char* kRun =
    "choose SftTabs1 4\ntick chkWin_All\n"
    "click cmdKILLALL\nlog\n";

constexpr std::size_t kLinesOfTheRun = 11;

std::string UsedComputer() {
  return test::ScriptPart("windows_traces") + test::ScriptPart("windows_neighbours");
}

Snapshot Prepare(Rehearsal& rehearsal) {
  rehearsal.Play(UsedComputer());
  return TakeSnapshot(rehearsal.machine());
}

TEST(NothingElseChanges, TheTracesGoAndTheFoldersStay) {
  Rehearsal rehearsal;
  const Snapshot before = Prepare(rehearsal);
  rehearsal.Reopen();
  rehearsal.Play(std::string("start\n") + kRun +
                 // 2 + 1 and 1 + 1 values and the player file, 1 recent list, 2 fragments, temp: a.tmp, sub, deep,
                 // b.tmp, read-only.tmp, the junction, the name with an umlaut; office: 1 file and 2 values.
                 "expect get HistoryRemoved is 18\n"
                 "expect recycle is 0\n"
                 "expect files C:\\WINDOWS\\TEMP is sub\\ sub\\deep\\ sub\\documents\\\n"
                 "expect exists C:\\WINDOWS\\TEMP\\sub\\documents is link\n"
                 "expect exists C:\\FILE0001.CHK is no\n"
                 "expect exists C:\\file0002.chk is no\n"
                 "expect reg show HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RunMRU is (absent)\n");
  EXPECT_EQ(rehearsal.status(), rehearse::Status::Held) << rehearsal.printed();
  EXPECT_EQ(Differences(before, TakeSnapshot(rehearsal.machine()), kMayChange), std::vector<std::string>());
}

TEST(NothingElseChanges, LockedFilesStayAndTheRunGoesOn) {
  for (const char* locked : {"a.tmp", "sub\\deep\\b.tmp", "\xc3\x84rger mit. Punkten.tmp"}) {
    Rehearsal rehearsal;
    Prepare(rehearsal);
    const std::string path = std::string("\"C:\\WINDOWS\\TEMP\\") + locked + "\"";
    const auto lines = rehearsal.Play("lock " + path + "\nstart\n" + kRun + "expect exists " + path +
                                      " is file\nexpect get HistoryRemoved is 18\n");
    EXPECT_EQ(rehearsal.status(), rehearse::Status::Held) << locked;
    EXPECT_EQ(lines.size(), kLinesOfTheRun) << locked;
  }
}

// A run during which operations fail, from the start of the program on or only from the run on.
struct FaultStory {
  std::string name;
  std::string prepare, before, run;  // scripts; the run ends with the log
  std::vector<std::string> may_change;
};

std::vector<FaultStory> FaultStories() {
  const std::string prepare = UsedComputer();
  std::vector<FaultStory> stories = {{"Start", prepare, "", std::string("start\n") + kRun, kMayChange},
                                     {"Windows", prepare, "start\n", kRun, kMayChange}};
  for (const test::BrowserTab& tab : test::BrowserTabs()) {
    std::string run = test::RunAll(tab) + "log\n";
    run.erase(0, run.find('\n') + 1);
    stories.push_back(
        {"Tab" + std::to_string(tab.index), tab.traces + tab.neighbours, "start\n", run, test::MayChange(tab)});
    // When the version call fails it counts as Windows 95, which is told by this file what to delete.
    stories.back().may_change.push_back("C:\\WINDOWS\\WININIT.INI");
  }
  return stories;
}

void PrintTo(const FaultStory& story, std::ostream* out) {
  *out << story.name;
}

class FaultAt : public ::testing::TestWithParam<FaultStory> {};

// Fails each operation at its nth call.
TEST_P(FaultAt, RunEndsAndNothingElseChanges) {
  const FaultStory& story = GetParam();
  std::map<std::string, std::uint64_t, std::less<>> counts;
  std::size_t lines_of_the_run = 0;
  {
    Rehearsal rehearsal;
    rehearsal.Play(story.prepare);
    rehearsal.Reopen();
    lines_of_the_run = rehearsal.Play(story.before + story.run).size();
    counts = rehearsal.machine().gate().Counts();
  }
  ASSERT_GT(counts.size(), 20u);
  for (const auto& [operation, count] : counts) {
    // Every early call, then ever fewer: a late call stands for many alike.
    for (std::uint64_t nth = 1; nth <= count; nth = nth < 4 ? nth + 1 : nth * 2) {
      Rehearsal rehearsal;
      rehearsal.Play(story.prepare);
      const Snapshot before = TakeSnapshot(rehearsal.machine());
      const auto lines = rehearsal.Play(story.before + "fail " + operation + " " + std::to_string(nth) + "\n" +
                                        story.run + "fail none\n");
      const std::string what = operation + " at call " + std::to_string(nth);
      ASSERT_EQ(lines.size(), lines_of_the_run) << what;
      EXPECT_EQ(lines.back(), " - Successful!  Your privacy is protected.") << what;
      ASSERT_EQ(Differences(before, TakeSnapshot(rehearsal.machine()), story.may_change), std::vector<std::string>())
          << what;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(NothingElseChanges, FaultAt, ::testing::ValuesIn(FaultStories()),
                         [](const auto& story) { return story.param.name; });

// Random trees and random faults, several at once, on any of the tabs.
TEST(NothingElseChanges, RandomMachinesAndFaults) {
  const char* const operations[] = {
      "CreateFileA",          "WriteFile",     "DeleteFileA",          "FindFirstFileA",
      "FindNextFileA",        "RegOpenKeyA",   "SetFileAttributesA",   "RegEnumValueA",
      "RegDeleteKeyA",        "RegEnumKeyA",   "GetWindowsDirectoryA", "SHGetFolderPathA",
      "SetCurrentDirectoryA", "GetVersionExA", "RegQueryValueExA",     "GetPrivateProfileStringA",
      "DeleteUrlCacheEntryA", "RegOpenKeyExA"};
  const std::string places[] = {"C:\\WINDOWS\\TEMP",
                                "C:\\Users\\user\\Documents",
                                "C:\\WINDOWS",
                                "C:",
                                "C:\\TEMP",
                                test::places::kFirefox,
                                test::places::kRoaming + "\\Microsoft\\Windows\\Cookies",
                                test::places::kLocal + "\\Google\\Chrome\\User Data\\Default"};
  const std::vector<FaultStory> stories = FaultStories();
  for (unsigned seed = 1; seed <= 120; ++seed) {
    std::mt19937 random(seed);
    auto below = [&random](std::size_t n) { return static_cast<unsigned>(random() % n); };
    const FaultStory& story = stories[below(stories.size())];
    std::string script = story.prepare;
    for (unsigned i = 0; i < 30; ++i) {
      std::string path = places[below(std::size(places))];
      for (unsigned depth = below(4); depth > 0; --depth) path += "\\d" + std::to_string(below(3));
      path = "\"" + path + "\\f" + std::to_string(i) + (below(4) == 0 ? ".CHK\"" : ".tmp\"");
      script += "file " + path + " size " + std::to_string(below(300)) + "\n";
      if (below(3) == 0) script += "attrib " + path + " +" + "rhs"[below(3)] + "\n";
    }
    Rehearsal rehearsal;
    rehearsal.Play(script);
    // A keep list of any bytes.
    std::string rows(below(40), ' ');
    for (char& byte : rows) byte = "shopbank[].txt@,\"\r\n\0\xff"[below(20)];
    ASSERT_TRUE(rehearsal.machine().MakeFile(test::places::kLocal + "\\Quillbarrow\\qb.dat", rows));
    // And a profile path of any parts.
    std::string profile = "[Profile0]\r\nPath=Profiles/";
    const char* const parts[] = {"abc.default", "..", "\\", "/", "C:",   ".",
                                 "\\..\\",      "%",  "*",  "?", "\xff", "Documents"};
    for (unsigned i = below(6); i > 0; --i) profile += parts[below(std::size(parts))];
    if (below(2) == 0) {
      ASSERT_TRUE(rehearsal.machine().MakeFile(test::places::kRoaming + "\\Mozilla\\Firefox\\profiles.ini", profile));
    }
    const Snapshot before = TakeSnapshot(rehearsal.machine());
    std::string faults;
    for (unsigned i = below(4); i > 0; --i) {
      faults += std::string("fail ") + operations[below(std::size(operations))] + " " +
                (below(4) == 0 ? "every" : std::to_string(1 + below(40))) + "\n";
    }
    rehearsal.Play(story.before + faults + story.run);
    EXPECT_EQ(Differences(before, TakeSnapshot(rehearsal.machine()), story.may_change), std::vector<std::string>())
        << "seed " << seed << ", " << story.name << "\n"
        << faults;
  }
}

}  // namespace
}  // namespace qb
