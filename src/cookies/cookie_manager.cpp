#include "cookies/cookie_manager.h"

namespace qb {

frmCookieManager::frmCookieManager(const FormHost& host, Settings& settings, KeepList& keep_list,
                                   std::function<void()> saved)
    : Form(host, "frmCookieManager", "Quillbarrow 2019 - Cookie Manager"),
      keep_list_(keep_list),
      saved_(std::move(saved)),
      heading_(*this, "lblCookieHeading", "Cookie Manager"),
      Label1(
          *this, "Label1",
          "The Cookie Manager allows you to save cookies to sites you frequently login to (such as yahoo or hotmail) "
          "and do not want to re-enter your login information or shipping information and so forth.  Below you can "
          "set which cookies to keep:"),
      lists_(*this, settings, [this] { keep_list_.SetRows(lists_.Kept()); }),
      cmdDonecookies(*this, "cmdDonecookies", " Save Cookie Setup"),
      Label2(*this, "Label2",
             "NOTE: Cookie Manager only works with saving Internet Explorer cookies. If you use Quillbarrow to remove "
             "Chrome, Firefox or Safari cookies, all cookies will be removed in those specific web browsers.") {
  cmdDonecookies.SetToolTip("Click to save above Cookie settings.", "Save Cookie Setup");
  cmdDonecookies.SetIcon(ButtonIcon::Save);
  cmdDonecookies.Click = [this] { cmdDonecookies_Click(); };
  // The window's own edits stand in its list already.
  keep_list_.Changed = [this] { lists_.ShowKept(keep_list_.Rows()); };
  keep_list_.Needed = [this] { Load(); };
  Arrange(Column({heading_, Label1, lists_.Arrangement(), Label2, Row({cmdDonecookies})}));
}

void frmCookieManager::OpenAnew() {
  StepOver(Unload());
  Show();
}

void frmCookieManager::Form_Load() {
  Center();
  Fill_Cookie_List();
  keep_list_.Load();
}

void frmCookieManager::cmdDonecookies_Click() {
  keep_list_.Save();
  StepOver(Unload());
  saved_();
}

}  // namespace qb
