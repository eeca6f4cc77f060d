#include "cookies/cookie_manager.h"

namespace qb {

std::string CookieDisplayName(const std::string& source_name) {
  const std::size_t at = source_name.find('@');
  std::string host = at == std::string::npos ? source_name : source_name.substr(at + 1);
  if (!host.empty() && host.back() == '/') host.pop_back();
  return host;
}

frmCookieManager::frmCookieManager(const FormHost& host, Settings& settings, KeepList& keep_list,
                                   std::function<void()> saved)
    : Form(host, "frmCookieManager", "Quillbarrow 2019 - Cookie Manager"),
      settings_(settings),
      keep_list_(keep_list),
      saved_(std::move(saved)),
      heading_(*this, "lblCookieHeading", "Cookie Manager"),
      Label1(
          *this, "Label1",
          "The Cookie Manager allows you to save cookies to sites you frequently login to (such as yahoo or hotmail) "
          "and do not want to re-enter your login information or shipping information and so forth.  Below you can "
          "set which cookies to keep:"),
      Label5(*this, "Label5", "Cookies on your computer to DELETE:"),
      Label6(*this, "Label6", "Cookies on your computer to KEEP:"),
      List1(*this, "List1", true),
      List2(*this, "List2", true),
      cmd_CookiesSave(*this, "cmd_CookiesSave", " Keep Cookie >>"),
      cmd_CookiesRemove(*this, "cmd_CookiesRemove", " << Remove Cookie"),
      cmdDonecookies(*this, "cmdDonecookies", " Save Cookie Setup"),
      Label2(*this, "Label2",
             "NOTE: Cookie Manager only works with saving Internet Explorer cookies. If you use Quillbarrow to remove "
             "Chrome, Firefox or Safari cookies, all cookies will be removed in those specific web browsers.") {
  List1.SetToolTip("These are the cookies on your computer right now");
  List2.SetToolTip("This is a list of cookies that will not be deleted when you use Quillbarrow");
  cmd_CookiesSave.SetToolTip("Click after selecting a cookie on the left to KEEP.", "Keep Cookie");
  cmd_CookiesRemove.SetToolTip("Click after selecting a cookie on the right to NOT KEEP.", "Remove Cookie");
  cmdDonecookies.SetToolTip("Click to save above Cookie settings.", "Save Cookie Setup");
  cmd_CookiesSave.Click = [this] { cmd_CookiesSave_Click(); };
  cmd_CookiesRemove.Click = [this] { cmd_CookiesRemove_Click(); };
  cmdDonecookies.Click = [this] { cmdDonecookies_Click(); };
  keep_list_.Changed = [this] { ShowKeepList(); };
  keep_list_.Needed = [this] { Load(); };
  Arrange(Column(
      {heading_, Label1,
       Row({Column({Label5, Layout(List1).Stretched()}).Stretched(), Column({cmd_CookiesSave, cmd_CookiesRemove}),
            Column({Label6, Layout(List2).Stretched()}).Stretched()})
           .Stretched(),
       Label2, Row({cmdDonecookies})}));
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

void frmCookieManager::ShowKeepList() {
  // The window's own edits stand in the list already, and its marks stay.
  if (List2.Entries() == keep_list_.Rows()) return;
  List2.Clear();
  for (const std::string& row : keep_list_.Rows()) List2.AddItem(row);
}

void frmCookieManager::Fill_Cookie_List() {
  CacheArrays arrays;
  Enum_Url_Cache(platform().url_cache, platform().system, arrays);
  List1.Clear();
  settings_.SetNumber(Setting::SaveCookieCount, 0);
  // Element 0 stands for nothing.
  for (std::size_t i = 1; i < arrays.cookies.size(); ++i) {
    List1.AddItem(CookieDisplayName(arrays.cookies[i].source_url));
  }
}

void frmCookieManager::cmd_CookiesSave_Click() {
  for (int i = 0; i < List1.ListCount(); ++i) {
    if (List1.Selected(i)) List2.AddItem(List1.List(i));
  }
  keep_list_.SetRows(List2.Entries());
}

void frmCookieManager::cmd_CookiesRemove_Click() {
  // Deliberate: the rows behind a removed one move up, so the next one is not looked at in this pass.
  const int count = List2.ListCount();
  for (int i = 0; i < count; ++i) {
    if (List2.Selected(i)) StepOver(List2.RemoveItem(i));
  }
  keep_list_.SetRows(List2.Entries());
}

void frmCookieManager::cmdDonecookies_Click() {
  keep_list_.Save();
  StepOver(Unload());
  saved_();
}

}  // namespace qb
