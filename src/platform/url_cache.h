// The URL cache of the system's internet library.
#pragma once

#include <optional>

#include "platform/types.h"

namespace qb {

// Bits of CacheEntryType.
inline constexpr std::uint32_t kCacheNormal = 0x1;
inline constexpr std::uint32_t kCacheCookie = 0x100000;
inline constexpr std::uint32_t kCacheHistory = 0x200000;

// INTERNET_CACHE_ENTRY_INFO with its pointers followed.
struct CacheEntryInfo {
  std::uint32_t struct_size = 0;
  std::string source_url, local_file;
  std::uint32_t type = 0, use_count = 0, hit_rate = 0, size_low = 0, size_high = 0;
  FileTime last_modified, expires, last_access, last_sync;
  std::string header_info, file_extension;
};

// What such a call returns, and the last error behind it.
struct CacheCall {
  std::uint64_t result = 0;  // a handle or a boolean; 0 on failure
  Error last_error = Error::Success;
};

class UrlCache {
 public:
  virtual ~UrlCache() = default;

  // `size` is the size of the buffer that is offered, in bytes, and comes back as the size that is
  // needed. Without an entry to fill, or with too small a size, the call fails with InsufficientBuffer.
  // At the end the last error is NoMoreItems.
  virtual CacheCall FindFirstUrlCacheEntryA(std::optional<std::string_view> pattern, CacheEntryInfo* entry,
                                            std::uint32_t& size) = 0;
  virtual CacheCall FindNextUrlCacheEntryA(std::uint64_t search, CacheEntryInfo* entry, std::uint32_t& size) = 0;
  virtual Error FindCloseUrlCache(std::uint64_t search) = 0;
  virtual Error DeleteUrlCacheEntryA(std::string_view url) = 0;
};

}  // namespace qb
