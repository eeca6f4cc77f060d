// Reading the URL cache, in three ways that were made at different times.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/desktop.h"
#include "platform/system.h"
#include "platform/url_cache.h"

namespace qb {

// The source URLs of the normal entries, in the order of the cache. Nothing if the first call does not
// answer that a buffer is too small.
std::vector<std::string> CacheUrls(UrlCache& cache);

// One entry as Enum_Url_Cache sorts it. Dates are local time; size is the whole number of bytes, cut to
// 32 bits.
struct CacheRecord {
  std::string source_url, local_file;
  std::int32_t hit_rate = 0, size = 0;
  SystemTime last_modified, expires, last_access, last_sync;
  std::string header_info, file_extension;
};

struct CacheArrays {
  // Element 0 of each is empty and stands for nothing.
  std::vector<CacheRecord> normal, history, cookies;
};

// Sorts the normal entries by exact comparison of their type: 0x100001 are cookies, 0x200001 history,
// all others normal. Entries without the normal bit are dropped.
void Enum_Url_Cache(UrlCache& cache, System& system, CacheArrays& arrays);

// A plain record; the members only hold.
struct oCacheEntry {
  std::int32_t StructureSize = 0;
  std::string SourceUrlName, LocalFileName;
  std::int32_t CacheType = 0, UseCount = 0, HitRate = 0;
  // Days since 30 December 1899, local time.
  double LastModifiedTime = 0, ExpireTime = 0, LastAccessTime = 0, LastSyncTime = 0;
};

class CacheEntries {
 public:
  // With an empty key the new object is filled and added without one; with a key it is added under that
  // key and left as it is. A key that is taken adds nothing and gives null.
  oCacheEntry* Add(const oCacheEntry& values, const std::string& key);
  // From 1; null outside.
  oCacheEntry* Item(std::size_t index);
  oCacheEntry* Item(const std::string& key);
  std::size_t Count() const { return entries_.size(); }
  bool Remove(std::size_t index);
  auto begin() const { return entries_.begin(); }
  auto end() const { return entries_.end(); }

 private:
  struct Kept {
    std::string key;
    std::unique_ptr<oCacheEntry> entry;
  };
  std::vector<Kept> entries_;
};

class oCacher {
 public:
  oCacher(UrlCache& cache, System& system, Desktop& desktop) : cache_(cache), system_(system), desktop_(desktop) {}

  // True if the entry went.
  bool DeleteCacheEntry(const std::string& url);
  // Adds the entries that share a bit with `mask`; what an earlier call added stays. An error other than
  // the end of the cache is told in a message box.
  CacheEntries& CacheCollection(std::uint32_t mask, const std::string& pattern);

 private:
  bool Succeeded(const CacheCall& call);
  void AddEntry(const CacheEntryInfo& entry, std::uint32_t size, std::uint32_t mask);
  double Date(FileTime time) const;

  UrlCache& cache_;
  System& system_;
  Desktop& desktop_;
  CacheEntries entries_;
};

}  // namespace qb
