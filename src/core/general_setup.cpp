#include "core/general_setup.h"

#include "runtime/text.h"

namespace qb {

namespace {

constexpr const char* kVersions[] = {"Windows 95", "Windows 98", "Windows NT 4", "Windows 2000/XP", "Windows ME"};
// Shown for a code that has no entry.
constexpr int kEntryForOtherCodes = 1;

}  // namespace

frmOptions::frmOptions(const FormHost& host, Services& services, ProductFolders& products,
                       std::function<void()> show_main_window)
    : Form(host, "frmOptions", "Quillbarrow 2019 - General Setup"),
      services_(services),
      products_(products),
      show_main_window_(std::move(show_main_window)),
      note_(*this, "lblOptionsNote", "This screen is for people that use MSN Explorer browser or AOL browser."),
      frameAOL(*this, "frameAOL", "AOL folder"),
      txtAOLdir(*this, "txtAOLdir"),
      hint_aol_(*this, "lblAOLExample", "Example: C:\\Program Files\\America Online 8.0"),
      cmd_DetectAOL(*this, "cmd_DetectAOL", "Detect folder"),
      cmdBrowseAOL(*this, "cmdBrowseAOL", "Browse..."),
      chknoAOL(*this, "chknoAOL", "I do not use AOL"),
      Frame1(*this, "Frame1", "MSN Explorer Email Address"),
      txtMSN8Profile(*this, "txtMSN8Profile"),
      hint_msn_(*this, "lblMSNExample", "Examples: yourname@msn.com or yourname@hotmail.com"),
      frmWindows(*this, "frmWindows", "Windows settings"),
      lblWinVersion(*this, "lblWinVersion", "Windows Version"),
      cmbWinVersion(*this, "cmbWinVersion"),
      cmdDetectWin(*this, "cmdDetectWin", "Detect"),
      chkLocalMachine(*this, "chkLocalMachine",
                      "Save Quillbarrow settings in LocalMachine - Same Settings for all Profiles"),
      cmdDefault(*this, "cmdDefault", "Default"),
      cmdHelp(*this, "cmdHelp", "Help"),
      cmdCancel(*this, "cmdCancel", "Cancel"),
      cmdOK(*this, "cmdOK", "Save") {
  cmdOK.SetDefault(true);
  cmdCancel.SetCancelButton(true);
  cmd_DetectAOL.SetIcon(ButtonIcon::Search);
  cmdBrowseAOL.SetIcon(ButtonIcon::Folder);
  cmdDetectWin.SetIcon(ButtonIcon::Search);
  cmdDefault.SetIcon(ButtonIcon::Reset);
  cmdHelp.SetIcon(ButtonIcon::Help);
  cmdOK.SetIcon(ButtonIcon::Save);
  cmdCancel.SetIcon(ButtonIcon::Cancel);
  cmd_DetectAOL.Click = [this] { txtAOLdir.SetText(products_.Get_AOL_Dir()); };
  cmdBrowseAOL.Click = [this] { txtAOLdir.SetText(products_.AOL_Browse(Window())); };
  cmbWinVersion.Click = [this] { cmbWinVersion_Click(); };
  cmdDetectWin.Click = [this] { Detect_WinVer(); };
  cmdDefault.Click = [this] { cmdDefault_Click(); };
  cmdHelp.Click = [this] { cmdHelp_Click(); };
  cmdOK.Click = [this] { cmdOK_Click(); };
  cmdCancel.Click = [this] { cmdCancel_Click(); };
  Arrange(Column({note_, Group(frameAOL, {txtAOLdir, hint_aol_, Row({cmd_DetectAOL, cmdBrowseAOL, chknoAOL})}),
                  Group(Frame1, {txtMSN8Profile, hint_msn_}),
                  Group(frmWindows, {Row({lblWinVersion, cmbWinVersion, cmdDetectWin}), chkLocalMachine}),
                  Row({cmdDefault, cmdHelp, cmdOK, cmdCancel})}));
}

void frmOptions::Form_Load() {
  Center();
  Settings& settings = services_.settings;
  kept_ = {settings.Text(Setting::NetscapeDir), settings.Text(Setting::AOLdir), settings.Number(Setting::NetscapeVer),
           settings.Number(Setting::AutoClear)};
  settings.SetNumber(Setting::NoAOL, settings.StoredNumber(Setting::NoAOL, "0"));
  settings.SetText(Setting::AOLdir, settings.StoredText(Setting::AOLdir, ""));
  settings.SetNumber(Setting::REGindexdatCookies, settings.StoredNumber(Setting::REGindexdatCookies, "0"));
  settings.SetNumber(Setting::REGindexdatCache, settings.StoredNumber(Setting::REGindexdatCache, "0"));
  if (auto code = StrictNumber(settings.StoredText(Setting::WinVer, ""))) settings.SetNumber(Setting::WinVer, *code);
  settings.SetText(Setting::MSN8Profile, Trim(settings.StoredText(Setting::MSN8Profile, "")));

  chknoAOL.SetValue(settings.On(Setting::NoAOL) ? 1 : 0);
  txtAOLdir.SetText(settings.Text(Setting::AOLdir));
  const std::string& msn = settings.Text(Setting::MSN8Profile);
  txtMSN8Profile.SetText(msn.size() > 1 ? msn : std::string());
  chkLocalMachine.SetValue(settings.On(Setting::AutoClear) ? 1 : 0);
  cmbWinVersion.Clear();
  for (const char* version : kVersions) cmbWinVersion.AddItem(version);
  PickVersion(settings.Number(Setting::WinVer));
}

void frmOptions::PickVersion(int code) {
  if (!cmbWinVersion.SetListIndex(code < 0 ? kEntryForOtherCodes : code)) {
    StepOver(cmbWinVersion.SetListIndex(kEntryForOtherCodes));
  }
}

void frmOptions::cmbWinVersion_Click() {
  services_.settings.SetNumber(Setting::WinVer, static_cast<std::int16_t>(cmbWinVersion.ListIndex()));
}

void frmOptions::Detect_WinVer() {
  const std::int16_t code = services_.folders.Get_Version_Code();
  services_.settings.SaveNumber(Setting::WinVer, code);
  PickVersion(code);
}

void frmOptions::cmdDefault_Click() {
  Detect_WinVer();
  products_.GetIEVersion();
  chknoAOL.SetValue(0);
  txtAOLdir.SetText(products_.Get_AOL_Dir());
}

void frmOptions::cmdHelp_Click() {
  StepOver(platform().desktop.MessageBoxA(
      Window(),
      "If you browse with AOL, give the folder that AOL is installed in, or let Quillbarrow detect it.\r\n\r\n"
      "If you browse with MSN Explorer, give the mail address that you sign in with.\r\n\r\n"
      "The Windows version is detected by itself; change it only if it is shown wrong.",
      "Quillbarrow Help", kBoxOk | kBoxInformation));
}

void frmOptions::cmdOK_Click() {
  Settings& settings = services_.settings;
  settings.SetText(Setting::AOLdir, Add_Backslash(txtAOLdir.Text()));
  settings.SetNumber(Setting::NoAOL, static_cast<std::int16_t>(chknoAOL.Value()));
  settings.SetNumber(Setting::AutoClear, static_cast<std::int16_t>(chkLocalMachine.Value()));
  settings.SetText(Setting::MSN8Profile, Trim(txtMSN8Profile.Text()));
  for (Setting setting : {Setting::WinVer, Setting::AutoClear, Setting::NoAOL, Setting::AOLdir, Setting::MSN8Profile}) {
    settings.Save(setting);
  }
  Close();
}

void frmOptions::cmdCancel_Click() {
  Settings& settings = services_.settings;
  settings.SetText(Setting::NetscapeDir, kept_.netscape_dir);
  settings.SetNumber(Setting::NetscapeVer, kept_.netscape_ver);
  settings.SetNumber(Setting::AutoClear, kept_.auto_clear);
  settings.SetText(Setting::AOLdir, kept_.aol_dir);
  Close();
}

void frmOptions::Close() {
  if (services_.run.AOLSetupPending) show_main_window_();
  StepOver(Unload());
}

}  // namespace qb
