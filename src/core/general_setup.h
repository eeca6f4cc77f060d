// General Setup: the AOL folder, the MSN address and the Windows version, for those who need to tell.
#pragma once

#include <functional>
#include <string>

#include "core/services.h"
#include "environment/product_folders.h"
#include "widgets/form.h"

namespace qb {

class frmOptions : public Form {
 public:
  // `show_main_window` is called when the window closes that a run had opened for want of an AOL folder.
  frmOptions(const FormHost& host, Services& services, ProductFolders& products,
             std::function<void()> show_main_window);

  // Sets WinVer to the detected code, stores it, and picks its entry, entry 1 for a code without one.
  void Detect_WinVer();

 protected:
  void Form_Load() override;

 private:
  void cmbWinVersion_Click();
  void cmdDefault_Click();
  void cmdHelp_Click();
  void cmdOK_Click();
  void cmdCancel_Click();
  void PickVersion(int code);
  void Close();

  Services& services_;
  ProductFolders& products_;
  std::function<void()> show_main_window_;

  // The values in memory when the window opened, for Cancel.
  struct Kept {
    std::string netscape_dir, aol_dir;
    std::int32_t netscape_ver = 0, auto_clear = 0;
  } kept_;

  Label note_;
  Frame frameAOL;
  TextBox txtAOLdir;
  Label hint_aol_;
  Button cmd_DetectAOL, cmdBrowseAOL;
  CheckBox chknoAOL;
  Frame Frame1;
  TextBox txtMSN8Profile;
  Label hint_msn_;
  Frame frmWindows;
  Label lblWinVersion;
  ComboBox cmbWinVersion;
  Button cmdDetectWin;
  CheckBox chkLocalMachine;
  Button cmdDefault, cmdHelp, cmdCancel, cmdOK;
};

}  // namespace qb
