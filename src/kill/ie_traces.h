// What Internet Explorer, Edge and the toolbars of that browser leave behind. Cookies on the keep list
// survive; the helpers that clear what is out of reach here lie in the program's folder.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cookies/keep_list.h"
#include "delete/file_analyzer.h"
#include "environment/browser_profiles.h"
#include "environment/product_folders.h"
#include "kill/named_traces.h"

namespace qb {

// What of a cache pass is deleted.
enum class CachePass : std::int16_t {
  Pages = 1,   // every entry but cookies; the keep list has no say
  Cookies = 2  // cookies that are neither kept nor of the program's own sites
};

class IeTraces {
 public:
  struct Reach {
    Platform& platform;
    Settings& settings;
    const WindowsFolders& folders;
    const ProductFolders& products;
    const BrowserProfiles& profiles;
    DeletePath& delete_path;
    clsFileAnalyzer& analyzer;
    NamedTraces& names;
    TraceCounter& history_removed;
    KeepList& keep_list;
    ListBox& cache_list;  // List3: the URLs of the cache
    ProgressBar& bar;
    const Lifetime& life;
  };
  explicit IeTraces(const Reach& reach) : reach_(reach) {}

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

 private:
  // Counts the values of the keys, and removes the keys.
  void DeleteLists(Names keys);
  void RunHelper(std::string_view program, std::string_view parameters);

  Reach reach_;
};

}  // namespace qb
