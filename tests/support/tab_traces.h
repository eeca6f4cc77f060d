// A computer with traces of every class of the tabs, and a neighbour beside each that must stay.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "kill/class_table.h"

namespace qb::test {

namespace places {
extern const std::string kStore;  // a quoted registry key
extern const std::string kRoaming, kLocal, kFirefox;
}  // namespace places

// The script that makes the programs of the browsers that an unattended run looks for.
extern const std::string kInstalled;

// The program's own files and keys, which any start changes.
extern const std::vector<std::string> kOwnPlaces;

struct TraceTab {
  TraceGroup group;
  int index;
  std::string traces, neighbours;         // scripts that make them
  double count;                           // of a manual run of the "All" box
  std::vector<std::string> expectations;  // after the run, beside that the traces are gone
  std::vector<std::string> named;         // the folders in which files go by name: only those that open count
};
std::vector<TraceTab> TraceTabs();

// By box, in the order in which they go: what a path or key ends in, or with a closing star what it holds.
using Parts = std::vector<std::string>;
const std::map<std::string, Parts>& TracesOf();

// Script lines that make the files below a folder.
std::string Files(const std::string& folder, std::initializer_list<const char*> names);
// The script that starts the program and runs all of the tab.
std::string RunAll(const TraceTab& tab);
// The first word behind `command`, without quotes, of each line of the script that begins with it.
std::vector<std::string> FirstWords(const std::string& script, const std::string& command);
// The files and the keys of the tab's traces, as their script names them.
std::vector<std::string> TraceFiles(const TraceTab& tab);
std::vector<std::string> TraceKeys(const TraceTab& tab);
// Where a run of the tab may change something, the program's own places included.
std::vector<std::string> MayChange(const TraceTab& tab);
// Expectations for the whole of a run: the count, and that no trace is left.
std::string ExpectTracesGone(const TraceTab& tab);

}  // namespace qb::test
