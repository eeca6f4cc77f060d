// Each box alone, and its key alone: exactly the traces of that class go, in their order.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "runtime/text.h"
#include "tests/support/rehearsal.h"
#include "tests/support/tab_traces.h"

namespace qb {
namespace {

using test::Rehearsal;
using test::TraceTab;

using test::Parts;
bool IsOne(const std::string& trace, const Parts& parts) {
  return std::any_of(parts.begin(), parts.end(), [&](std::string part) {
    if (part.back() != '*') return trace.ends_with(part);
    part.pop_back();
    return trace.find(part) != std::string::npos;
  });
}

std::string Expectations(const TraceTab& tab, const std::string& box) {
  const Parts& parts = test::TracesOf().at(box);
  std::string script;
  for (const std::string& path : TraceFiles(tab)) {
    script += "expect exists \"" + path + "\" is " + (IsOne(path, parts) ? "no" : "file") + "\n";
  }
  for (const std::string& key : TraceKeys(tab)) {
    script += "expect reg show \"" + key + "\" " + (IsOne(key, parts) ? "is" : "lacks") + " (absent)\n";
  }
  return script;
}

// What was deleted of the tab's traces stands in the order of the class's parts, folder by folder.
void ExpectOrder(const std::vector<std::string>& calls, const Parts& parts, const std::string& what) {
  std::map<std::string, std::size_t> last;
  for (const std::string& call : calls) {
    const std::string path = LowerCase(call.substr(0, call.rfind('"')));
    const auto part =
        std::find_if(parts.begin(), parts.end(), [&](const std::string& row) { return IsOne(path, {LowerCase(row)}); });
    if (part == parts.end()) continue;
    const std::string folder = path.substr(0, path.rfind('\\'));
    const auto place = static_cast<std::size_t>(part - parts.begin());
    EXPECT_LE(last[folder], place) << what << ": " << call;
    last[folder] = place;
  }
}

TEST(SingleBoxes, TakeTheTracesOfTheirClassAlone) {
  std::size_t classes = 0;
  for (const TraceTab& tab : test::TraceTabs()) {
    for (const TraceClass& row : ClassesOf(tab.group)) {
      ++classes;
      const std::string box(row.box);
      const std::string expectations = Expectations(tab, box);
      std::string runs[] = {tab.traces + "start\nchoose SftTabs1 ", tab.traces + test::kInstalled};
      runs[0]
          .append(std::to_string(tab.index))
          .append("\ntick ")
          .append(row.box)
          .append("\nclick cmdKILLALL\n")
          .append(expectations);
      runs[1]
          .append("reg add ")
          .append(test::places::kStore)
          .append(" ")
          .append(row.key)
          .append(" sz 1\nstart\ndo Do_Start_Up 2\n")
          .append(expectations);
      for (const std::string& run : runs) {
        if (row.key.empty() && &run != runs) continue;  // a box without a key
        Rehearsal rehearsal;
        rehearsal.Hold(run, box);
        // Deliberate: this one goes twice over the profiles, the top sites of all before the history of the numbered
        // ones.
        if (box != "chkChrome_HistoryFiles")
          ExpectOrder(rehearsal.Play("calls DeleteFileA\n"), test::TracesOf().at(box), box);
      }
    }
  }
  EXPECT_EQ(classes, test::TracesOf().size());
}

}  // namespace
}  // namespace qb
