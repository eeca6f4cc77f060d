// The Cookie Manager: the cookies on the computer on one side, the keep list on the other.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cookies/keep_list.h"
#include "cookies/url_cache_list.h"
#include "widgets/form.h"

namespace qb {

// What the list of cookies shows for a cache entry's name: what follows the first "@", less one closing
// slash; a name without "@" stays whole.
std::string CookieDisplayName(const std::string& source_name);

class frmCookieManager : public Form {
 public:
  // `saved` is called when the list was saved and the window closed.
  frmCookieManager(const FormHost& host, Settings& settings, KeepList& keep_list, std::function<void()> saved);

  // Both lists are built afresh, then the window is shown.
  void OpenAnew();

  void Fill_Cookie_List();
  void cmd_CookiesSave_Click();
  void cmd_CookiesRemove_Click();
  void cmdDonecookies_Click();

 protected:
  void Form_Load() override;
  void Form_Unload(bool& /*cancel*/) override { keep_list_.Forget(); }

 private:
  void ShowKeepList();

  Settings& settings_;
  KeepList& keep_list_;
  std::function<void()> saved_;

  Label heading_, Label1, Label5, Label6;
  ListBox List1, List2;
  Button cmd_CookiesSave, cmd_CookiesRemove, cmdDonecookies;
  Label Label2;
};

}  // namespace qb
