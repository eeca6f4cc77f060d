// The File Shredder tab of the main window: the overwrite count that is kept and shown.
#pragma once

#include "settings/settings.h"
#include "widgets/form.h"

namespace qb {

class ShredderPage {
 public:
  ShredderPage(Form& form, Settings& settings);

  Layout Arrangement();
  // Shows the stored count, 7 if there is none.
  void LoadFromSettings();

 private:
  void cmd_Shredder_Save_Click();
  void cmd_Shredder_Default_Click();
  void SaveCount();

  Form& form_;
  Settings& settings_;
  Label note_, before_, after_, saved_;
  TextBox count_;
  Button save_, default_;
};

}  // namespace qb
