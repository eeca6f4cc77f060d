// Where other products keep their things, as the registry tells it. All reads go through the main
// window's one CRegSettings, which rests on an old Netscape's key.
#pragma once

#include <string>

#include "environment/windows_folders.h"
#include "settings/reg_settings.h"
#include "settings/settings.h"

namespace qb {

// What the probes must ask of the windows above them.
class SetupAsker {
 public:
  virtual ~SetupAsker() = default;
  // General Setup as a modal window.
  virtual void AskGeneralSetup() = 0;
};

// The 8.3 forms of three folders as they were at the load, with a closing backslash; empty where the system gave none.
struct ShortFolders {
  std::string cache, cookies, history;
  // Whether the Cache or the Cookies folder lies elsewhere than below the Windows folder.
  bool ie_folders_moved = false;
};

class ProductFolders {
 public:
  ProductFolders(Platform& platform, CRegSettings& reg_settings, Settings& settings, SetupAsker& asker)
      : platform_(platform), reg_(reg_settings), settings_(settings), asker_(asker) {}

  // Reads the four folders below from the user's shell folders. A missing one becomes a lone backslash.
  void GetWinDirs();
  const std::string& History() const { return history_; }
  const std::string& Recent() const { return recent_; }
  const std::string& Cookies() const { return cookies_; }
  const std::string& Cache() const { return cache_; }

  // Sets and stores IEVer: 6 for a version that starts with 6, else 5, so that 7 to 11 count as 5.
  void GetIEVersion();
  // With a closing backslash; without AOL a lone one.
  std::string Get_AOL_Dir();
  // Tells the user that MSN Explorer is here and opens General Setup, if it is. Always empty: what the
  // user types there reaches the setting MSN8Profile.
  std::string Get_MSN8_Profile();
  std::string Get45CurrentUser();
  std::string Get45CurrentUserDir();
  std::string Get45CurrentNetscapeDir();
  // Folder choosers; empty when the user cancels.
  std::string cmdBrowse_Click2(WindowHandle owner);
  std::string AOL_Browse(WindowHandle owner);

 private:
  std::string Browse(WindowHandle owner, std::string_view title);

  Platform& platform_;
  CRegSettings& reg_;
  Settings& settings_;
  SetupAsker& asker_;
  std::string history_, recent_, cookies_, cache_;
};

}  // namespace qb
