// The Boss Key tab of the main window: which windows the Boss Key hides, and its chord.
#pragma once

#include <memory>
#include <vector>

#include "settings/bindings.h"

namespace qb {

class BossKeyPage {
 public:
  BossKeyPage(Form& form, Settings& settings);

  Layout Arrangement();
  // Sets the controls from the settings in memory; nothing is stored.
  void LoadFromSettings() { bindings_.Load(); }

 private:
  SettingBindings bindings_;
  HeadingLabel heading_;
  Frame windows_frame_, hot_key_frame_;
  OptionButton space_bar_, ctrl_alt_z_;
  LinkLabel lblTestBossKey;
  std::vector<std::unique_ptr<CheckBox>> boxes_;
};

}  // namespace qb
