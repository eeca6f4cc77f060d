// The Boss Key tab of the main window: which windows the Boss Key hides, and its chord.
#pragma once

#include <vector>

#include "settings/settings.h"
#include "widgets/form.h"

namespace qb {

class BossKeyPage {
 public:
  BossKeyPage(Form& form, Settings& settings);

  Layout Arrangement();
  // Sets the controls from the settings in memory; nothing is stored.
  void LoadFromSettings();

 private:
  struct Box {
    Setting setting;
    CheckBox* box;
  };
  void HotKeyChosen(std::int16_t hot_key);
  void Keep(Setting setting, std::int16_t number);

  Settings& settings_;
  bool loading_ = false;
  Label heading_;
  Frame windows_frame_, hot_key_frame_;
  OptionButton space_bar_, ctrl_alt_z_;
  std::vector<std::unique_ptr<CheckBox>> owned_;
  std::vector<Box> boxes_;
};

}  // namespace qb
