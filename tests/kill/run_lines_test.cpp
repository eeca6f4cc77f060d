// The order of the log lines of the three kinds of run.
#include <gtest/gtest.h>

#include "kill/class_table.h"
#include "kill/log_step.h"
#include "tests/support/rehearsal.h"
#include "tests/support/tab_traces.h"

namespace qb {
namespace {

using Lines = std::vector<std::string>;
using Codes = std::vector<int>;

// A machine on which every group has what its sequencer asks for.
std::string EverythingInstalled() {
  const std::string add = "reg add " + test::places::kStore;
  return add + " AOLdir sz C:\\AOL\\\n" + add + " QBBuild sz 1\n" + test::kInstalled;
}

constexpr TraceGroup kTabs[] = {TraceGroup::InternetExplorer, TraceGroup::Firefox, TraceGroup::Chrome,
                                TraceGroup::Safari,           TraceGroup::Windows, TraceGroup::AOL};

const Codes kChrome = {31, 32, 33, 34, 35, 36, 37, 45, 46, 47, 52};
const Codes kWindowsRest = {14, 15, 20, 21, 24};
constexpr int kTopSites = 44, kThumbnailsAgain = 43;

Codes Firefox(int first) {
  return {first, 17, 18, 19, 27, 28, 48, 49};
}
Codes Safari(int top_sites) {
  return {38, 39, 40, 41, 42, 43, top_sites, 50, 51};
}

// Between the first line of a run and its last; the code 0 has none.
Lines LinesOf(std::initializer_list<Codes> parts) {
  Lines lines = {" - Searching..."};
  for (const Codes& part : parts) {
    for (int code : part) {
      if (code != 0) lines.push_back(LogText(code, {}));
    }
  }
  lines.emplace_back(" - Successful!  Your privacy is protected.");
  return lines;
}

// What a manual run writes, with the "All" box of each tab ticked or every box of its own.
Lines ManualRun(bool all) {
  std::string script = EverythingInstalled() + "start\n";
  for (int tab = 0; tab < 6; ++tab) {
    script += "choose SftTabs1 " + std::to_string(tab) + "\n";
    if (all) script += "tick " + std::string(RowOf(kTabs[tab]).all_box) + "\n";
    for (const TraceClass& row : ClassesOf(kTabs[tab])) script += all ? "" : "tick " + std::string(row.box) + "\n";
  }
  test::Rehearsal rehearsal;
  return rehearsal.Play(script +
                        "click cmdKILLALL\nexpect get ClassesDone is 0\nexpect get SftTabs1.Tab is 9\n"
                        "expect get pBar.Max is 80\nlog\n");
}

TEST(RunLines, ManualRunsOfEveryAllBoxAndOfEverySingleBox) {
  const Codes aol = {6, 7, 12, 13};
  EXPECT_EQ(ManualRun(true), LinesOf({Firefox(16),
                                      kChrome,
                                      Safari(kTopSites),
                                      {10, 11, 8, 23, 2, 3, 4, 5, 25, 26, 53, 9, 54, 12},
                                      aol,
                                      kWindowsRest}));
  EXPECT_EQ(ManualRun(false), LinesOf({Firefox(16),
                                       kChrome,
                                       Safari(kThumbnailsAgain),
                                       {23, 10, 11, 8, 2, 3, 4, 5, 9, 12, 53, 25, 26, 54},
                                       aol,
                                       kWindowsRest}));
}

TEST(RunLines, AnUnattendedRunOfEveryKey) {
  std::string script = EverythingInstalled();
  for (const TraceClass& row : TraceClasses()) {
    if (!row.key.empty()) script += "reg add " + test::places::kStore + " " + std::string(row.key) + " sz 1\n";
  }
  test::Rehearsal rehearsal;
  // Firefox's droplist goes without a line; those of AOL's cookies and cache stand the other way round than their keys.
  EXPECT_EQ(rehearsal.Play(script + "start\ndo Do_Start_Up 2\nexpect get pBar.Max is 30\nlog\n"),
            LinesOf({Firefox(0),
                     kChrome,
                     Safari(kTopSites),
                     {6, 7},
                     kWindowsRest,
                     {2, 3, 4, 5, 9, 25, 26, 53, 54, 12},
                     {8, 10, 11, 23}}));
}

TEST(RunLines, EveryCodeHasItsLine) {
  const ThumbTotals none, some{7, 3, 2};
  for (int code = 1; code <= 54; ++code) EXPECT_EQ(LogText(code, none).substr(0, 3), " - ") << code;
  for (int code : {-1, 0, 55, 32767}) EXPECT_EQ(LogText(code, none), "") << code;
  EXPECT_EQ(LogText(29, some), " - Killed and Shredded 7 images in 2 hidden Thumbs.db files!");
  EXPECT_EQ(LogText(30, some), " - Found 7 images in 3 hidden Thumbs.db files!  NONE REMOVED!");
  EXPECT_EQ(LogText(30, none), " - Found 0 images in 0 hidden Thumbs.db files.");
  // The browser that each names, where the texts of several are alike.
  for (int code : kChrome) EXPECT_EQ(LogText(code, none).substr(0, 24), " - Killing Google Chrome") << code;
  for (int code : Safari(kTopSites)) EXPECT_EQ(LogText(code, none).substr(0, 23), " - Killing Apple Safari") << code;
}

}  // namespace
}  // namespace qb
