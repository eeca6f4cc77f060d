// Every class of the tabs on one machine: the traces go, the neighbours stay, the count is right.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "runtime/text.h"
#include "tests/support/rehearsal.h"
#include "tests/support/snapshot.h"
#include "tests/support/tab_traces.h"

namespace qb {
namespace {

using test::Differences;
using test::ExpectTracesGone;
using test::Files;
using test::FirstWords;
using test::MayChange;
using test::Rehearsal;
using test::RunAll;
using test::Snapshot;
using test::TakeSnapshot;
using test::TraceFiles;
using test::TraceTab;
using test::TraceTabs;
using namespace test::places;

std::string Expect(const std::vector<std::string>& expectations) {
  std::string script;
  for (const std::string& line : expectations) script += "expect " + line + "\n";
  return script;
}

// Plays a run of the tab: its expectations hold, and nothing but the traces changes.
void PlayRun(Rehearsal& rehearsal, const TraceTab& tab, const std::string& script, const std::string& what) {
  const Snapshot before = TakeSnapshot(rehearsal.machine());
  rehearsal.Hold(script, what);
  EXPECT_EQ(Differences(before, TakeSnapshot(rehearsal.machine()), MayChange(tab)), std::vector<std::string>()) << what;
}

// One machine with the traces of all tabs: a run of one leaves those of the others.
TEST(TabsTest, AllOfATabGoesAndTheNeighboursStay) {
  Rehearsal rehearsal;
  for (const TraceTab& tab : TraceTabs()) rehearsal.Play(tab.traces + tab.neighbours);
  for (const TraceTab& tab : TraceTabs()) {
    PlayRun(rehearsal, tab, RunAll(tab) + ExpectTracesGone(tab) + Expect(tab.expectations),
            std::string(RowOf(tab.group).all_box));
  }
}

TEST(TabsTest, AnUnattendedRunRemovesTheSame) {
  for (const TraceTab& tab : TraceTabs()) {
    Rehearsal rehearsal;
    std::string selection = test::kInstalled;
    for (const TraceClass& row : ClassesOf(tab.group)) {
      if (!row.key.empty()) selection += "reg add " + kStore + " " + std::string(row.key) + " sz 1\n";
    }
    rehearsal.Play(tab.traces + tab.neighbours + selection);
    PlayRun(rehearsal, tab,
            "start\ndo Do_Start_Up 3\nexpect get frmMain.Visible is false\n" + ExpectTracesGone(tab) +
                Expect(tab.expectations),
            std::string(RowOf(tab.group).all_box));
  }
}

// The boxes that have no key are none of its row, and a single box does not act back.
TEST(TabsTest, AnAllBoxSetsTheBoxesOfItsTab) {
  std::string script = "start\n";
  for (const TraceTab& tab : TraceTabs()) {
    const std::string all(RowOf(tab.group).all_box), first(ClassesOf(tab.group).front().box);
    const std::string sees = "\nexpect get " + all + ".Value";
    const auto expect = [&](bool ticked) {
      for (const TraceClass& row : TraceClasses()) {
        const bool set = ticked && row.group == tab.group && !row.key.empty();
        script += "expect get " + std::string(row.box) + ".Value is " + (set ? "1\n" : "0\n");
      }
    };
    script.append("choose SftTabs1 ").append(std::to_string(tab.index)).append("\ntick ").append(all).append("\n");
    expect(true);
    script.append("untick ").append(first).append(sees).append(" is 1\nuntick ").append(all).append("\n");
    expect(false);
    script.append("tick ").append(first).append(sees).append(" is 0\nuntick ").append(first).append("\n");
  }
  Rehearsal rehearsal;
  rehearsal.Hold(script);
}

std::string ParentOf(const std::string& path) {
  return path.substr(0, path.find_last_of('\\'));
}

// Browsers write their names in other cases than the tables. Only ".txt" of a cookie file counts in small letters.
TEST(TabsTest, CapitalsAndSmallLettersAreTheSame) {
  for (std::string (*change)(std::string_view) : {&UpperCase, &LowerCase}) {
    for (const TraceTab& tab : TraceTabs()) {
      std::string traces = tab.traces;
      for (const char* command : {"file", "reg add", "cache add"}) {
        for (const std::string& word : FirstWords(tab.traces, command)) {
          std::string changed = change(word);
          if (changed.ends_with(".TXT")) changed.replace(changed.size() - 4, 4, ".txt");
          for (std::size_t at = 0; (at = traces.find(word, at)) != std::string::npos; at += changed.size()) {
            traces.replace(at, word.size(), changed);
          }
        }
      }
      Rehearsal rehearsal;
      rehearsal.Play(tab.neighbours + traces);
      PlayRun(rehearsal, tab, RunAll(tab) + ExpectTracesGone(tab), std::string(RowOf(tab.group).all_box));
    }
  }
}

// Windows XP keeps them below Local Settings, and so does, for this program, what reports itself as newer than
// Windows 7.
TEST(TabsTest, TheLayoutOfWindowsXp) {
  for (TraceTab tab : TraceTabs()) {
    for (std::string* script : {&tab.traces, &tab.neighbours}) {
      for (const std::string moved : {"\\Google\\Chrome", "\\Microsoft\\Internet Explorer"}) {
        const std::string now = kLocal + moved;
        for (std::size_t at = 0; (at = script->find(now, at)) != std::string::npos;) {
          script->replace(at, now.size(), "C:\\Users\\user\\Local Settings\\Application Data" + moved);
        }
      }
    }
    Rehearsal rehearsal;
    rehearsal.Play("windows 6.3\n" + tab.traces + tab.neighbours);
    PlayRun(rehearsal, tab, RunAll(tab) + ExpectTracesGone(tab), std::string(RowOf(tab.group).all_box));
  }
}

// A file that another program holds stays, and keeps nothing beside or behind it from going.
TEST(TabsTest, AHeldFileInTheFirstAMiddleAndTheLastPlace) {
  for (const TraceTab& tab : TraceTabs()) {
    const std::vector<std::string> files = TraceFiles(tab);
    std::map<std::string, std::vector<std::string>> by_folder;
    for (const std::string& path : files) by_folder[ParentOf(path)].push_back(path);
    for (auto& [folder, paths] : by_folder) {
      std::sort(paths.begin(), paths.end(),
                [](const std::string& a, const std::string& b) { return LowerCase(a) < LowerCase(b); });
      for (const std::string& held : std::set<std::string>{paths.front(), paths[paths.size() / 2], paths.back()}) {
        Rehearsal rehearsal;
        rehearsal.Play(tab.traces + tab.neighbours + "lock \"" + held + "\"\n");
        const bool by_name = std::count(tab.named.begin(), tab.named.end(), folder) != 0 &&
                             held.find("History Index") == std::string::npos;
        std::string script = RunAll(tab) + "expect get HistoryRemoved is " +
                             std::to_string(static_cast<int>(tab.count) - by_name) + "\n";
        for (const std::string& path : files) {
          script += "expect exists \"" + path + "\" is " + (path == held ? "file" : "no") + "\n";
        }
        PlayRun(rehearsal, tab, script, held);
      }
    }
  }
}

// profiles.ini is text from outside: whatever it says, nothing outside of the profile folders goes. A path that climbs
// and comes back names a profile like any other.
TEST(TabsTest, ProfilesIniThatPointsElsewhere) {
  const struct {
    std::string ini;
    bool goes;  // what the profile folder holds
  } kCases[] = {
      {"", false},
      {"[Profile0]\r\n", false},
      {"[Profile1]\r\nPath=Profiles/abc.default\r\n", false},
      {"[Profile0]\r\nPath=C:\\Users\\user\\Documents\r\n", false},
      {"[Profile0]\r\nPath=Profiles/..\\..\\..\\..\\..\\Documents\r\n", false},
      {"[Profile0]\r\nPath=Profiles/../../../../../Documents\r\n", false},
      {"[Profile0]\r\nPath=Profiles/" + std::string(300, 'x') + "\r\n", false},
      {std::string("[Profile0]\r\nPath=\0\xff\xfe\r\n", 22), false},
      {"[Profile0]\r\nPath=Profiles/abc.default\r\n", true},
      {"[Profile0]\r\nPath=Profiles/x/../abc.default\r\n", true},
      {"[Profile0]\r\nPath=Profiles/../Profiles/abc.default\r\n", true},
      {"[Profile0]\r\nPath=Profiles/..\\..\\Firefox\\.\\PROFILES\\abc.default\r\n", true},
      {"[Profile0]\r\nPath=Profiles/abc.default/../../Crash Reports\r\n", false},
      {"[Profile0]\r\nPath=Profiles/../ProfilesX/abc.default\r\n", false},
      {"[Profile0]\r\nPath=Profiles/../../../../../../../../../Profiles/abc.default\r\n", false},
  };
  const std::string firefox = kRoaming + "\\Mozilla\\Firefox\\", profile = firefox + "Profiles\\abc.default";
  for (const auto& c : kCases) {
    Rehearsal rehearsal;
    for (const std::string& folder : {profile, firefox + "Crash Reports", firefox + "ProfilesX\\abc.default", kRoaming,
                                      std::string("C:\\Users\\user"), std::string("C:\\Users\\user\\Documents"),
                                      std::string("C:\\Profiles\\abc.default")}) {
      rehearsal.Play(Files(folder, {"cookies.txt", "places.sqlite", "Cache\\a"}));
    }
    ASSERT_TRUE(rehearsal.machine().MakeFile(firefox + "profiles.ini", c.ini));
    const Snapshot before = TakeSnapshot(rehearsal.machine());
    rehearsal.Play("start\nchoose SftTabs1 1\ntick chkNS_all\nclick cmdKILLALL\n");
    std::vector<std::string> may_change = test::kOwnPlaces;
    if (c.goes) may_change.push_back(profile);
    EXPECT_EQ(Differences(before, TakeSnapshot(rehearsal.machine()), may_change), std::vector<std::string>()) << c.ini;
    EXPECT_EQ(rehearsal.machine().Exists(profile + "\\cookies.txt"), c.goes ? "no" : "file") << c.ini;
  }
}

}  // namespace
}  // namespace qb
