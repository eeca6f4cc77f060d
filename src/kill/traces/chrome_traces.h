// The files of Google Chrome in its default profile and in the profiles 1 to 9.
#pragma once

#include <functional>

#include "environment/browser_profiles.h"
#include "kill/traces/named_traces.h"
#include "runtime/routine.h"

namespace qb {

class ChromeTraces {
 public:
  ChromeTraces(const BrowserProfiles& profiles, NamedTraces& names) : profiles_(profiles), names_(names) {}

  void Kill_Chrome_Visited_Links();
  void Kill_Chrome_History();
  void Kill_Chrome_Cache();
  void Kill_Chrome_Cookies();
  void Kill_Chrome_AutoComplete();
  void Kill_Chrome_Archived_History();
  void Kill_Chrome_Thumbnails();
  void Kill_Chrome_Local_Storage();
  void Kill_Chrome_Jump_List();
  void Kill_Chrome_Session();
  void Kill_Chrome_Flash_Cookies();
  // Has no box of its own: goes with the history.
  void Kill_Chrome_Top_Sites();

  static std::span<const NamedRoutine<ChromeTraces>> Routines();

 private:
  // The default profile, then each numbered one whose folder is there.
  void WipeFiles(Names names);
  void WipeFolders(Names names);
  void ForNumberedProfiles(const std::function<void(const std::string& folder)>& step);

  const BrowserProfiles& profiles_;
  NamedTraces& names_;
};

}  // namespace qb
