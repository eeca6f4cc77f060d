// The URL cache and COM objects, answered by Windows.
#pragma once

#include <vector>

#include "platform/com.h"
#include "platform/url_cache.h"

namespace qb::win32 {

class Win32UrlCache : public UrlCache {
 public:
  CacheCall FindFirstUrlCacheEntryA(std::optional<std::string_view> pattern, CacheEntryInfo* entry,
                                    std::uint32_t& size) override;
  CacheCall FindNextUrlCacheEntryA(std::uint64_t search, CacheEntryInfo* entry, std::uint32_t& size) override;
  Error FindCloseUrlCache(std::uint64_t search) override;
  Error DeleteUrlCacheEntryA(std::string_view url) override;
};

class Win32Com : public Com {
 public:
  Result<ComObject> CoCreateInstance(std::string_view class_id, std::uint32_t context,
                                     std::string_view interface_id) override;
  Result<std::uint32_t> DispCallFunc(ComObject object, std::uint32_t offset, std::uint32_t convention,
                                     std::uint32_t result_type) override;
};

}  // namespace qb::win32
