// Whole runs over a used computer: the traces go, and nothing else changes, whatever fails on the way.
#include <gtest/gtest.h>

#include <random>

#include "tests/support/rehearsal.h"
#include "tests/support/snapshot.h"
#include "tests/support/tab_traces.h"

namespace qb {
namespace {

using test::Differences;
using test::Rehearsal;
using test::Snapshot;
using test::TakeSnapshot;

// A run during which operations fail, from the start of the program on or only from the run on.
struct FaultStory {
  std::string name;
  std::string prepare, before, run;  // scripts; the run ends with the log
  std::vector<std::string> may_change;
};

std::vector<FaultStory> FaultStories() {
  std::vector<FaultStory> stories;
  for (const test::TraceTab& tab : test::TraceTabs()) {
    std::string run = test::RunAll(tab) + "log\n";
    std::vector<std::string> may_change = test::MayChange(tab);
    // When the version call fails it counts as Windows 95, which is told by this file what to delete.
    may_change.push_back("C:\\WINDOWS\\WININIT.INI");
    const std::string prepare = tab.traces + tab.neighbours;
    if (tab.group == TraceGroup::Windows) {
      may_change.push_back("C:\\WINDOWS\\TEMP");
      stories.push_back({"Start", prepare, "", run, may_change});
    }
    run.erase(0, run.find('\n') + 1);
    stories.push_back({"Tab" + std::to_string(tab.index), prepare, "start\n", run, may_change});
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
      std::string path = std::string("\"") + places[below(std::size(places))];
      for (unsigned depth = below(4); depth > 0; --depth) path += "\\d" + std::to_string(below(3));
      path.append("\\f").append(std::to_string(i)).append(below(4) == 0 ? ".CHK\"" : ".tmp\"");
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
