// What Internet Explorer, Edge and the toolbars of that browser leave behind. Cookies on the keep list
// survive; the helpers that clear what is out of reach here lie in the program's folder.
#pragma once

#include <string>
#include <vector>

#include "delete/file_analyzer/file_analyzer.h"
#include "kill/kill_needs.h"
#include "kill/run_display.h"
#include "kill/traces/named_traces.h"
#include "runtime/routine.h"

namespace qb {

// What of a cache pass is deleted.
enum class CachePass : std::int16_t {
  Pages = 1,   // every entry but cookies; the keep list has no say
  Cookies = 2  // cookies that are neither kept nor of the program's own sites
};

class IeTraces {
 public:
  IeTraces(const KillNeeds& needs, DeletePath& delete_path, clsFileAnalyzer& analyzer, NamedTraces& names,
           RunDisplay& display)
      : needs_(needs), delete_path_(delete_path), analyzer_(analyzer), names_(names), display_(display) {}

  // Reads the URLs of the cache anew.
  void GetCacheURLList();
  void Kill_Typed_URLs();
  void Kill_History_Store();
  void Kill_History_Helper();
  void Kill_Temp_Helper();
  // Only when no cookie is to be kept: the helper clears them all.
  void Kill_Cookies_Helper();
  // Pumps messages at each entry, so that the window stays alive over a large cache.
  void Kill_Cache_Entries(CachePass pass);
  void Kill_Cookie_Files();
  void Kill_Google_Bar();
  void Kill_Search_History();
  void Kill_IE_Recovery();
  void Kill_Edge_Cache();

  static std::span<const NamedRoutine<IeTraces>> Routines();

 private:
  // Counts the values of the keys, and removes the keys.
  void DeleteLists(Names keys);
  void RunHelper(std::string_view program, std::string_view parameters);

  const KillNeeds needs_;
  DeletePath& delete_path_;
  clsFileAnalyzer& analyzer_;
  NamedTraces& names_;
  RunDisplay& display_;
  std::vector<std::string> urls_;  // that the kill passes work from
};

}  // namespace qb
