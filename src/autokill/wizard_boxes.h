// The boxes of the wizard's first step: one for each class that the unattended run may take, on a tab for each
// browser, with the texts of the main window's boxes.
#pragma once

#include <string_view>
#include <vector>

#include "environment/browser_profiles.h"
#include "kill/class_table.h"
#include "kill/selection.h"
#include "widgets/form.h"

namespace qb {

class WizardBoxes {
 public:
  explicit WizardBoxes(Form& form);

  Layout Arrangement();
  // Sets every box from the stored selection. False if none is ticked afterwards.
  bool Load(SettingsStore& store);
  // Writes every box's value to its key, in the order in which the wizard always wrote them.
  void Save(SettingsStore& store) const;
  // What an untouched computer is recommended: the browsers that are here, and of Windows the lists and the bin. Boxes
  // that the recommendation does not name stay as they are.
  void SetDefaults(const Settings& settings, const BrowserProfiles& profiles);
  void ShowFirstTab() { StepOver(SftTabs2.SetTab(0)); }

 private:
  struct Row {
    const TraceClass* shown;   // the class whose texts the box has
    const TraceClass* stored;  // the one under whose key it is kept
    CheckBox* box;
  };
  void SetGroup(TraceGroup group, bool ticked);
  void Set(std::string_view key, bool ticked);

  TabStrip SftTabs2;
  std::vector<std::unique_ptr<CheckBox>> owned_;
  std::vector<Row> rows_;  // in the order of the classes
};

}  // namespace qb
