// What Firefox and the older Netscape family keep in the one profile that the start found.
#pragma once

#include "environment/browser_profiles.h"
#include "kill/traces/named_traces.h"
#include "runtime/routine.h"

namespace qb {

class FirefoxTraces {
 public:
  FirefoxTraces(const BrowserProfiles& profiles, const WindowsFolders& folders, NamedTraces& names)
      : profiles_(profiles), folders_(folders), names_(names) {}

  void Kill_Firefox_Droplist();
  void Kill_Firefox_History();
  void Kill_Firefox_Cache();
  void Kill_Firefox_Cookies();
  void Kill_Firefox_AutoComplete();
  void Kill_Firefox_Downloads();
  void Kill_Firefox_Jump_List();
  void Kill_Firefox_Session();

  static std::span<const NamedRoutine<FirefoxTraces>> Routines();

 private:
  const BrowserProfiles& profiles_;
  const WindowsFolders& folders_;
  NamedTraces& names_;
};

}  // namespace qb
