#include "cookies/url_cache_list.h"

#include <algorithm>

#include "runtime/filetime.h"

namespace qb {

namespace {

constexpr std::uint32_t kCookieEntry = kCacheCookie | kCacheNormal;
constexpr std::uint32_t kHistoryEntry = kCacheHistory | kCacheNormal;

// Calls `step` with each entry, growing the buffer from nothing for each one by the two-call pattern.
void ForEachEntry(UrlCache& cache, const std::function<void(const CacheEntryInfo&)>& step) {
  std::uint32_t size = 0;
  // The pattern is a zero turned into text; the system ignores it.
  CacheCall asked = cache.FindFirstUrlCacheEntryA("0", nullptr, size);
  if (asked.result != 0 || asked.last_error != Error::InsufficientBuffer) return;
  CacheEntryInfo entry;
  // Not tested: a search that does not begin is closed like any other.
  const CacheCall first = cache.FindFirstUrlCacheEntryA(std::nullopt, &entry, size);
  for (CacheCall got = first; got.result != 0;) {
    step(entry);
    size = 0;
    asked = cache.FindNextUrlCacheEntryA(first.result, nullptr, size);
    entry = {};
    got = cache.FindNextUrlCacheEntryA(first.result, &entry, size);
  }
  StepOver(cache.FindCloseUrlCache(first.result));
}

bool IsNormal(const CacheEntryInfo& entry) {
  return (entry.type & kCacheNormal) != 0;
}

SystemTime LocalDate(System& system, FileTime time) {
  auto local = system.FileTimeToLocalFileTime(time);
  return local.ok() ? FileTimeToSystemTime(local.value).value_or(SystemTime()) : SystemTime();
}

}  // namespace

std::vector<std::string> CacheUrls(UrlCache& cache) {
  std::vector<std::string> urls;
  ForEachEntry(cache, [&](const CacheEntryInfo& entry) {
    if (IsNormal(entry)) urls.push_back(entry.source_url);
  });
  return urls;
}

void Enum_Url_Cache(UrlCache& cache, System& system, CacheArrays& arrays) {
  arrays.normal.assign(1, {});
  arrays.history.assign(1, {});
  arrays.cookies.assign(1, {});
  ForEachEntry(cache, [&](const CacheEntryInfo& entry) {
    if (!IsNormal(entry)) return;
    CacheRecord record;
    record.source_url = entry.source_url;
    record.local_file = entry.local_file;
    record.hit_rate = static_cast<std::int32_t>(entry.hit_rate);
    record.size = static_cast<std::int32_t>(entry.size_low);
    record.last_modified = LocalDate(system, entry.last_modified);
    record.expires = LocalDate(system, entry.expires);
    record.last_access = LocalDate(system, entry.last_access);
    record.last_sync = LocalDate(system, entry.last_sync);
    record.header_info = entry.header_info;
    record.file_extension = entry.file_extension;
    auto& array = entry.type == kCookieEntry    ? arrays.cookies
                  : entry.type == kHistoryEntry ? arrays.history
                                                : arrays.normal;
    array.push_back(std::move(record));
  });
}

oCacheEntry* CacheEntries::Add(const oCacheEntry& values, const std::string& key) {
  if (!key.empty() && Item(key) != nullptr) return nullptr;
  auto entry = std::make_unique<oCacheEntry>();
  if (key.empty()) *entry = values;
  entries_.push_back({key, std::move(entry)});
  return entries_.back().entry.get();
}

oCacheEntry* CacheEntries::Item(std::size_t index) {
  return index >= 1 && index <= entries_.size() ? entries_[index - 1].entry.get() : nullptr;
}

oCacheEntry* CacheEntries::Item(const std::string& key) {
  auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Kept& kept) { return kept.key == key; });
  return found == entries_.end() ? nullptr : found->entry.get();
}

bool CacheEntries::Remove(std::size_t index) {
  if (Item(index) == nullptr) return false;
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index - 1));
  return true;
}

bool oCacher::DeleteCacheEntry(const std::string& url) {
  return Ok(cache_.DeleteUrlCacheEntryA(url));
}

bool oCacher::Succeeded(const CacheCall& call) {
  // Deliberate: the result is masked with the complement of the last error and not simply tested.
  const auto masked = static_cast<std::int32_t>(call.result & ~static_cast<std::uint64_t>(call.last_error));
  if (masked > 0) return true;
  if (call.last_error != Error::NoMoreItems) {
    StepOver(desktop_.MessageBoxA(WindowHandle::None,
                                  "LastDllError: " + std::to_string(static_cast<std::uint32_t>(call.last_error)),
                                  "Quillbarrow", kBoxOk));
  }
  return false;
}

CacheEntries& oCacher::CacheCollection(std::uint32_t mask, const std::string& pattern) {
  std::uint32_t size = 0;
  StepOver(cache_.FindFirstUrlCacheEntryA(pattern, nullptr, size));
  CacheEntryInfo entry;
  const CacheCall first = cache_.FindFirstUrlCacheEntryA(pattern, &entry, size);
  for (CacheCall got = first; Succeeded(got);) {
    AddEntry(entry, size, mask);
    size = 0;
    StepOver(cache_.FindNextUrlCacheEntryA(first.result, nullptr, size));
    entry = {};
    got = cache_.FindNextUrlCacheEntryA(first.result, &entry, size);
  }
  StepOver(cache_.FindCloseUrlCache(first.result));
  return entries_;
}

void oCacher::AddEntry(const CacheEntryInfo& entry, std::uint32_t size, std::uint32_t mask) {
  if ((entry.type & mask) == 0) return;
  oCacheEntry values;
  values.StructureSize = static_cast<std::int32_t>(size);
  values.SourceUrlName = entry.source_url;
  values.LocalFileName = entry.local_file;
  values.CacheType = static_cast<std::int32_t>(entry.type);
  values.UseCount = static_cast<std::int32_t>(entry.use_count);
  values.HitRate = static_cast<std::int32_t>(entry.hit_rate);
  values.LastModifiedTime = Date(entry.last_modified);
  values.ExpireTime = Date(entry.expires);
  values.LastAccessTime = Date(entry.last_access);
  values.LastSyncTime = Date(entry.last_sync);
  StepOver(entries_.Add(values, ""));
}

double oCacher::Date(FileTime time) const {
  auto local = system_.FileTimeToLocalFileTime(time);
  if (!local.ok()) return 0;
  constexpr double kTicksPerMillisecond = 10000;
  constexpr double kMillisecondsPerDay = 8.64e7;
  constexpr double kDaysFrom1601To1899 = 109205;
  return static_cast<double>(local.value.ticks) / kTicksPerMillisecond / kMillisecondsPerDay - kDaysFrom1601To1899;
}

}  // namespace qb
