// The cookies on the computer beside those to keep, and the two buttons that move them: the part that the Cookie
// Manager and the wizard share.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cookies/url_cache_list.h"
#include "settings/settings.h"
#include "widgets/form.h"

namespace qb {

// What the list of cookies shows for a cache entry's name: what follows the first "@", less one closing
// slash; a name without "@" stays whole.
std::string CookieDisplayName(const std::string& source_name);

class CookieLists {
 public:
  // `form` gets the controls. `edited` runs when one of the buttons has changed the rows to keep.
  CookieLists(Form& form, Settings& settings, std::function<void()> edited = nullptr);

  Layout Arrangement();
  // The cookies that the URL cache holds now.
  void Fill_Cookie_List();
  // Shows other rows to keep; the marks go, unless these rows stand there already.
  void ShowKept(const std::vector<std::string>& rows);
  const std::vector<std::string>& Kept() const { return List2.Entries(); }

  void cmd_CookiesSave_Click();
  void cmd_CookiesRemove_Click();

 private:
  Form& form_;
  Settings& settings_;
  std::function<void()> edited_;
  Label Label5, Label6;
  ListBox List1, List2;
  Button cmd_CookiesSave, cmd_CookiesRemove;
};

}  // namespace qb
