#include "core/trace_boxes.h"

namespace qb {

namespace {

// "All of the above" of the Windows tab leaves the boxes that have no stored key as they are.
bool FollowsAllBox(const TraceClass& row) {
  return !row.key.empty();
}

}  // namespace

TraceBoxes::TraceBoxes(Form& form) {
  for (TraceGroup group : TabOrder()) {
    const TraceGroupRow& row = RowOf(group);
    for (const TraceClass& trace : ClassesOf(group)) Make(form, trace.box, trace.caption, trace.tool_tip);
    Make(form, row.all_box, row.all_caption, row.all_tool_tip).Click = [this, &row] { AllBoxClicked(row); };
  }
}

CheckBox& TraceBoxes::Make(Form& form, std::string_view name, std::string_view caption, std::string_view tip) {
  auto box = std::make_unique<CheckBox>(form, std::string(name), std::string(caption));
  box->SetToolTip(std::string(tip));
  return *boxes_.emplace(name, std::move(box)).first->second;
}

void TraceBoxes::AllBoxClicked(const TraceGroupRow& row) {
  const int value = boxes_.find(row.all_box)->second->Value();
  for (const TraceClass& trace : ClassesOf(row.group)) {
    if (FollowsAllBox(trace)) boxes_.find(trace.box)->second->SetValue(value);
  }
}

std::vector<Layout> TraceBoxes::Arrangement(TraceGroup group) {
  std::vector<Layout> boxes;
  for (const TraceClass& trace : ClassesOf(group)) boxes.emplace_back(*boxes_.find(trace.box)->second);
  return {TwoColumns(std::move(boxes)), *boxes_.find(RowOf(group).all_box)->second};
}

bool TraceBoxes::Ticked(std::string_view box) const {
  auto found = boxes_.find(box);
  return found != boxes_.end() && found->second->Value() == 1;
}

}  // namespace qb
