// The Cookie Manager: the cookies on the computer on one side, the keep list on the other.
#pragma once

#include <functional>

#include "cookies/cookie_lists.h"
#include "cookies/keep_list.h"

namespace qb {

class frmCookieManager : public Form {
 public:
  // `saved` is called when the list was saved and the window closed.
  frmCookieManager(const FormHost& host, Settings& settings, KeepList& keep_list, std::function<void()> saved);

  // Both lists are built afresh, then the window is shown.
  void OpenAnew();

  void Fill_Cookie_List() { lists_.Fill_Cookie_List(); }
  void cmdDonecookies_Click();

 protected:
  void Form_Load() override;
  void Form_Unload(bool& /*cancel*/) override { keep_list_.Forget(); }

 private:
  void ShowKeepList();

  KeepList& keep_list_;
  std::function<void()> saved_;

  HeadingLabel heading_;
  Label Label1;
  CookieLists lists_;
  Button cmdDonecookies;
  Label Label2;
};

}  // namespace qb
