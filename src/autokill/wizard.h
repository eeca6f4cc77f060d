// The wizard: in three steps, what an automatic run kills, which cookies stay, and when a run happens.
#pragma once

#include <array>
#include <string>

#include "autokill/when_to_kill.h"
#include "autokill/wizard_boxes.h"
#include "cookies/cookie_lists.h"
#include "cookies/keep_list.h"

namespace qb {

// What the wizard asks of the program.
class WizardHost {
 public:
  virtual ~WizardHost() = default;
  virtual void ShowGeneralSetup() = 0;
  // The Cookie Manager with both lists built afresh.
  virtual void ShowCookieManager() = 0;
  // The run that waited for the user's selection goes on.
  virtual void RunAfterWizard() = 0;
};

class frmAutoKill : public Form {
 public:
  struct Needs {
    Settings& settings;
    const BrowserProfiles& profiles;
    KeepList& keep_list;
    AutoKillInterval& interval;
    const bool& started_at_boot;  // a run waits for the selection
  };
  frmAutoKill(const FormHost& host, const Needs& needs, WizardHost& wizard_host);

  // Sets the boxes of the first step to what is recommended; nothing is stored.
  void cmd_Default_Click();
  // Writes the cookies to keep and makes them the keep list.
  void Save_Cookies();
  void Fill_Cookie_List() { cookies_.Fill_Cookie_List(); }
  void cmd_OK_Click();

 protected:
  void Form_Load() override;

 private:
  struct Browser {
    Setting setting;
    CheckBox box;
  };
  void ShowStep(int step);
  void ShowStepTexts();
  void cmd_Cancel_Click();
  void cmd_Help_Click();
  void TickBrowsers(bool ticked);

  Needs needs_;
  WizardHost& wizard_host_;
  SettingBindings bindings_;

  Label lblStep, lblWizardText, lblHelp;
  TabStrip SftTabs1;
  WizardBoxes boxes_;
  CookieLists cookies_;
  Button cmdSetCookies;
  LinkLabel lblConfigMSN;
  WhenToKill when_;
  std::array<Browser, 5> browsers_;
  Button cmdBack, cmdNext, cmd_OK, cmd_Cancel, cmd_Default, cmd_Help;
};

}  // namespace qb
