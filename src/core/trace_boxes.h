// The boxes of the first tabs: one for each trace class, and one for all of a tab.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "kill/class_table.h"
#include "widgets/form.h"

namespace qb {

class TraceBoxes {
 public:
  // `form` gets the boxes.
  explicit TraceBoxes(Form& form);

  // The parts of a group's page.
  std::vector<Layout> Arrangement(TraceGroup group);
  // By name; false for a box that there is not.
  bool Ticked(std::string_view box) const;

 private:
  CheckBox& Make(Form& form, std::string_view name, std::string_view caption, std::string_view tip);
  void AllBoxClicked(const TraceGroupRow& row);

  std::map<std::string, std::unique_ptr<CheckBox>, std::less<>> boxes_;  // by name
};

}  // namespace qb
