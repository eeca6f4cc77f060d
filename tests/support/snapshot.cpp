#include "tests/support/snapshot.h"

#include "runtime/text.h"

namespace qb::test {

namespace {

void AddKey(const machine::Machine& machine, const std::string& key, Snapshot& snapshot) {
  auto read = machine.ReadKey(key);
  if (!read) return;
  snapshot[key + "\\"] = "key";
  for (const machine::RegistryValue& value : read->values) {
    snapshot[key + "\\" + value.name] = std::to_string(value.type) + ":" + value.data;
  }
  for (const std::string& sub_key : read->sub_keys)
    AddKey(machine, std::string(key).append("\\").append(sub_key), snapshot);
}

bool Expected(const std::string& place, const std::vector<std::string>& expected) {
  const std::string upper = UpperCase(place);
  for (const std::string& row : expected) {
    std::string start = UpperCase(row);
    if (start.back() == '*') {
      start.pop_back();
      if (upper.compare(0, start.size(), start) == 0) return true;
    } else if (upper.compare(0, start.size(), start) == 0 &&
               (upper.size() == start.size() || upper[start.size()] == '\\' || start.back() == '\\')) {
      return true;
    }
  }
  return false;
}

}  // namespace

Snapshot TakeSnapshot(const machine::Machine& machine) {
  Snapshot snapshot;
  for (const char* drive : {"C:\\", "D:\\"}) {
    auto below = machine.ListBelow(drive);
    if (!below) continue;
    for (const std::string& relative : *below) {
      const std::string path = drive + relative;
      const bool folder = relative.back() == '\\';
      snapshot[path] = machine.Attributes(path) + ":" + (folder ? "" : machine.Content(path).value_or("?"));
    }
  }
  for (const char* root : {"HKCU", "HKLM"}) AddKey(machine, root, snapshot);
  return snapshot;
}

std::vector<std::string> Differences(const Snapshot& before, const Snapshot& after,
                                     const std::vector<std::string>& expected) {
  std::vector<std::string> lines;
  for (const auto& [place, state] : before) {
    if (Expected(place, expected)) continue;
    auto found = after.find(place);
    if (found == after.end())
      lines.push_back("gone: " + place);
    else if (found->second != state)
      lines.push_back("changed: " + place);
  }
  for (const auto& [place, state] : after) {
    if (!Expected(place, expected) && before.count(place) == 0) lines.push_back("new: " + place);
  }
  return lines;
}

}  // namespace qb::test
