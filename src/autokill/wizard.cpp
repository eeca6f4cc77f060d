#include "autokill/wizard.h"

#include <iterator>

namespace qb {

namespace {

struct Step {
  const char* number;
  const char* title;
  const char* help;
  bool cancel_enabled, back_visible, next_visible;
};

constexpr Step kSteps[] = {
    {"STEP 1 of 3:", "  Select which history data you want Quillbarrow to Kill...",
     "Auto-Kill is a feature of Quillbarrow that automatically secure deletes Internet history traces immediately "
     "after you close your browser window, or also at the start up of Windows.  "
     "Auto-Kill is essential in maintaining your privacy on your computer by automating it for you.  You may also "
     "kill the below history traces manually on the main screen.",
     true, false, true},
    {"STEP 2 of 3:", "  Select which Cookies you want to Keep...",
     "Cookies are data files that websites write to your computer to store frequently used information, "
     "such as your email address or your login username.  Certain Cookies may be good if you login to a specific "
     "website often and you want to save time typing your username.  (i.e. in checking your email via web or "
     "myspace/facebook)",
     false, true, true},
    // Deliberate: who has come this far can save or go back, and not cancel.
    {"STEP 3 of 3:", "  Select when you want Quillbarrow to Auto-Kill...",
     "Auto-Kill is a feature of Quillbarrow that automatically secure deletes Internet history traces.  Below you "
     "will select WHEN Quillbarrow will automatically run (Auto-Kill)."
     "It is recommended to at keep the default below settings unless you need to run Auto-Kill even more frequently "
     "or on a timer.",
     false, true, false},
};
constexpr int kLastStep = static_cast<int>(std::size(kSteps)) - 1;

// A browser's key that is absent counts as on.
constexpr const char* kBrowserDefault = "1";

}  // namespace

frmAutoKill::frmAutoKill(const FormHost& host, const Needs& needs, WizardHost& wizard_host)
    : Form(host, "frmAutoKill", "Quillbarrow 2019 - Setup Wizard"),
      needs_(needs),
      wizard_host_(wizard_host),
      bindings_(*this, needs.settings),
      lblStep(*this, "lblStep", ""),
      lblWizardText(*this, "lblWizardText", ""),
      lblHelp(*this, "lblHelp", ""),
      SftTabs1(*this, "SftTabs1",
               {{"&1: Select what you want Killed...",
                 "Step 1 of 3:  Select which history data you want Quillbarrow to Auto-Kill..."},
                {"&2: Select which Cookies to Keep...", "Step 2 of 3: Select which Cookies to Keep..."},
                {"&3: Select when you want it Killed...", "Step 3 of 3: Select when Quillbarrow should Auto-Kill..."}}),
      boxes_(*this),
      cookies_(*this, needs.settings),
      cmdSetCookies(*this, "cmdSetCookies", " Set Cookies to Keep"),
      lblConfigMSN(*this, "lblConfigMSN", "MSN Explorer Setup"),
      when_(*this, bindings_, needs.interval,
            {"Auto-Kill on last window close of these browsers:", &IntervalEntry::wizard_text},
            // Yes takes the browsers along; No deliberately sets all five, whatever they were.
            [this](bool yes) { TickBrowsers(!yes); }),
      browsers_{{{Setting::AK_InternetExplorer, {*this, "chkAK_InternetExplorer", "Internet Explorer"}},
                 {Setting::AK_MozillaFirefox, {*this, "chkAK_MozillaFirefox", "Mozilla Firefox"}},
                 {Setting::AK_GoogleChrome, {*this, "chkAK_GoogleChrome", "Google Chrome"}},
                 {Setting::AK_AppleSafari, {*this, "chkAK_AppleSafari", "Apple Safari"}},
                 {Setting::AK_AOL, {*this, "chkAK_AOL", "AOL"}}}},
      cmdBack(*this, "cmdBack", " << BACK"),
      cmdNext(*this, "cmdNext", " NEXT >>"),
      cmd_OK(*this, "cmd_OK", " Save"),
      cmd_Cancel(*this, "cmd_Cancel", " Cancel"),
      cmd_Default(*this, "cmd_Default", " Default"),
      cmd_Help(*this, "cmd_Help", " Help") {
  cmdBack.SetToolTip("Click to go Back up a step in the Quillbarrow Auto-Kill Wizard Setup.");
  cmdNext.SetToolTip("Click to go to the Next step in the Quillbarrow Auto-Kill Wizard Setup.");
  cmd_OK.SetToolTip("Click to save the above Auto-Kill settings.");
  cmd_Cancel.SetToolTip("Click to close window without saving above settings.");
  cmd_Default.SetToolTip("Click to set the above settings to the Default settings.");
  cmd_Help.SetToolTip("This button will launch a web browser window to our online Help/FAQ/Trouble Ticket site.");
  cmdSetCookies.SetToolTip(
      "Click to manage which cookies to keep.  Cookies are useful if you login to the same site frequently.");
  SftTabs1.Click = [this] { ShowStepTexts(); };
  cmdBack.SetIcon(ButtonIcon::Back);
  cmdNext.SetIcon(ButtonIcon::Forward);
  cmd_OK.SetIcon(ButtonIcon::Save);
  cmd_Cancel.SetIcon(ButtonIcon::Cancel);
  cmd_Default.SetIcon(ButtonIcon::Reset);
  cmd_Help.SetIcon(ButtonIcon::Help);
  cmdSetCookies.SetIcon(ButtonIcon::Cookie);
  cmdBack.Click = [this] { ShowStep(SftTabs1.Tab() - 1); };
  cmdNext.Click = [this] { ShowStep(SftTabs1.Tab() + 1); };
  cmd_OK.Click = [this] { cmd_OK_Click(); };
  cmd_Cancel.Click = [this] { cmd_Cancel_Click(); };
  cmd_Default.Click = [this] { cmd_Default_Click(); };
  cmd_Help.Click = [this] { cmd_Help_Click(); };
  cmdSetCookies.Click = [this] { wizard_host_.ShowCookieManager(); };
  lblConfigMSN.Click = [this] { wizard_host_.ShowGeneralSetup(); };
  cmd_Cancel.SetCancelButton(true);

  std::vector<Layout> browsers;
  for (Browser& browser : browsers_) browsers.emplace_back(browser.box);
  Arrange(Column(
      {Row({lblStep, lblWizardText}), lblHelp,
       Tabs(SftTabs1, {Page({boxes_.Arrangement(), lblConfigMSN}), Page({cookies_.Arrangement(), Row({cmdSetCookies})}),
                       Page({when_.last_window_closed, Row(std::move(browsers)),
                             Row({when_.use_timer, when_.interval_list}), when_.windows_start})})
           .Stretched(),
       Row({cmdBack, cmdNext, cmd_OK, cmd_Cancel, cmd_Default, cmd_Help})}));
}

void frmAutoKill::Form_Load() {
  Center();
  Settings& settings = needs_.settings;
  for (Setting read : {Setting::AK_Timer, Setting::AK_UseTimer}) {
    if (auto number = StrictNumber(settings.StoredText(read, "0"))) settings.SetNumber(read, *number);
  }
  bindings_.Load();
  // The window that stood before may have left the box ticked already.
  if (settings.On(Setting::AK_UseTimer)) when_.UseTimerSet();
  for (Browser& browser : browsers_) {
    browser.box.SetValue(settings.StoredNumber(browser.setting, kBrowserDefault) == 1);
  }
  if (!boxes_.Load(settings.store())) cmd_Default_Click();
  boxes_.ShowFirstTab();
  cmd_OK.SetVisible(false);
  ShowStep(0);
  Fill_Cookie_List();
  cookies_.ShowKept(needs_.keep_list.FileRows());
}

void frmAutoKill::ShowStep(int step) {
  StepOver(SftTabs1.SetTab(step));
  ShowStepTexts();
}

void frmAutoKill::ShowStepTexts() {
  const int step = SftTabs1.Tab();
  const Step& row = kSteps[step];
  lblStep.SetCaption(row.number);
  lblWizardText.SetCaption(row.title);
  lblHelp.SetCaption(row.help);
  cmd_Cancel.SetEnabled(row.cancel_enabled);
  cmdBack.SetVisible(row.back_visible);
  cmdNext.SetVisible(row.next_visible);
  // Deliberate: the second step leaves it as it was.
  if (step != 1) cmd_OK.SetVisible(step == kLastStep);
  cmdNext.SetDefault(step != kLastStep);
  cmd_OK.SetDefault(step == kLastStep);
}

void frmAutoKill::TickBrowsers(bool ticked) {
  for (Browser& browser : browsers_) browser.box.SetValue(ticked);
}

void frmAutoKill::cmd_Default_Click() {
  boxes_.SetDefaults(needs_.settings, needs_.profiles);
}

void frmAutoKill::Save_Cookies() {
  // A window that is not loaded has no list of its own to write: it would show the file's.
  needs_.keep_list.SetRows(Loaded() ? cookies_.Kept() : needs_.keep_list.FileRows());
  needs_.keep_list.Save();
}

void frmAutoKill::cmd_OK_Click() {
  boxes_.Save(needs_.settings.store());
  for (const Browser& browser : browsers_) needs_.settings.SaveNumber(browser.setting, browser.box.Value());
  Save_Cookies();
  StepOver(Unload());
  if (needs_.started_at_boot) wizard_host_.RunAfterWizard();
}

void frmAutoKill::cmd_Cancel_Click() {
  const std::optional<bool> leave = bindings_.Ask(
      {"Abort Quillbarrow Auto-Kill Wizard?",
       "Are you sure you want to exit Quillbarrow Auto-Kill wizard?  It is recommended you finish the Auto-Kill Setup "
       "so that Quillbarrow works most efficiently."});
  if (leave.value_or(false)) StepOver(Unload());
}

void frmAutoKill::cmd_Help_Click() {
  StepOver(platform().desktop.MessageBoxA(Window(),
                                          "For a description of each setting, place your Windows mouse pointer on the "
                                          "Quillbarrow checkbox or button for 1 second.",
                                          "Quillbarrow Help", kBoxOk | kBoxInformation));
}

}  // namespace qb
