// The files of Apple Safari for Windows in its roaming and its local folder.
#pragma once

#include "environment/browser_profiles.h"
#include "kill/traces/named_traces.h"
#include "runtime/routine.h"

namespace qb {

class SafariTraces {
 public:
  SafariTraces(const BrowserProfiles& profiles, NamedTraces& names) : profiles_(profiles), names_(names) {}

  void Kill_Safari_History();
  void Kill_Safari_Cache();
  void Kill_Safari_Cookies();
  void Kill_Safari_Downloads();
  void Kill_Safari_AutoComplete();
  void Kill_Safari_Thumbnails();
  void Kill_Safari_Top_Sites();
  void Kill_Safari_Local_Storage();
  void Kill_Safari_Session();

  static std::span<const NamedRoutine<SafariTraces>> Routines();

 private:
  void WipeRoaming(Names names) { names_.WipeFiles(profiles_.Get_Safari_Profile_Path(), names); }
  void WipeLocal(Names names) { names_.WipeFiles(profiles_.Get_Safari_Local_Profile_Path(), names); }
  void WipeLocalFolders(Names names) {
    names_.WipeFolders(profiles_.Get_Safari_Local_Profile_Path(), names, FolderCount::WalkerAndOne);
  }

  const BrowserProfiles& profiles_;
  NamedTraces& names_;
};

}  // namespace qb
