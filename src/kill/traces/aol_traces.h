// The small classes of the AOL client, and the fixed list of an old Opera.
#pragma once

#include "kill/traces/named_traces.h"
#include "runtime/routine.h"
#include "settings/settings.h"

namespace qb {

class AolTraces {
 public:
  AolTraces(const Settings& settings, NamedTraces& names) : settings_(settings), names_(names) {}

  // Plain deletes below the AOL folder; nothing is counted. Without a folder nothing is done.
  void Kill_AOL_Droplist();
  void Kill_AOL_Cache();
  // No box and no run reaches it: it stands ready to be attached to one.
  void Kill_Opera();

  static std::span<const NamedRoutine<AolTraces>> Routines();

 private:
  void DeleteBelowAol(Names patterns);

  const Settings& settings_;
  NamedTraces& names_;
};

}  // namespace qb
