// The Cookie Manager: the cookies on the computer on one side, those to keep on the other. Its list of
// those to keep is the one that the kill passes read.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cookies/url_cache_list.h"
#include "runtime/channels.h"
#include "settings/settings.h"
#include "widgets/form.h"

namespace qb {

// What the list of cookies shows for a cache entry's name: what follows the first "@", less one closing
// slash; a name without "@" stays whole.
std::string CookieDisplayName(const std::string& source_name);

class frmCookieManager : public Form {
 public:
  // `data_folder` is looked up at each use. `saved` is called when the list was saved and the window closed.
  frmCookieManager(Platform& platform, UrlCache& cache, Channels& channels, Settings& settings,
                   const std::string& data_folder, FormWatcher& watcher, std::function<void()> saved);

  // Both lists are built afresh, then the window is shown.
  void OpenAnew();
  // The rows to keep; loads the window, and with it the file, if it is not loaded.
  std::vector<std::string> KeepRows();
  // Empties the list of rows to keep and reads the file into it, if there is one.
  void ReloadKeepList();

  void Fill_Cookie_List();
  void cmd_CookiesSave_Click();
  void cmd_CookiesRemove_Click();
  void cmdDonecookies_Click();

 protected:
  void Form_Load() override;

 private:
  UrlCache& cache_;
  Channels& channels_;
  Settings& settings_;
  const std::string& data_folder_;
  std::function<void()> saved_;

  Label heading_, Label1, Label5, Label6;
  ListBox List1, List2;
  Button cmd_CookiesSave, cmd_CookiesRemove, cmdDonecookies;
  Label Label2;
};

}  // namespace qb
