// Three ways into the URL cache: what each lists, and what stops it.
#include "cookies/url_cache_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "runtime/text.h"
#include "tests/support/rehearsal.h"

namespace qb {
namespace {

using test::Rehearsal;

constexpr std::uint32_t kCookie = kCacheCookie | kCacheNormal;

std::vector<std::string> Urls(const std::vector<CacheRecord>& records) {
  std::vector<std::string> urls;
  urls.reserve(records.size());
  for (const CacheRecord& record : records) urls.push_back(record.source_url);
  return urls;
}

TEST(UrlCacheList, EachWayInListsItsOwn) {
  Rehearsal rehearsal;
  rehearsal.Play(
      "cache add Cookie:a@x/ 0x100001\ncache add http://x/ 0x1 C:\\x.htm\ncache add Visited:x 0x200001\n"
      "cache add Cookie:odd@x/ 0x100041\ncache add Cookie:none@x/ 0x100000\ncache add \"\" 0x5\n");
  Platform& platform = rehearsal.machine().platform();
  EXPECT_EQ(CacheUrls(platform.url_cache),
            (std::vector<std::string>{"Cookie:a@x/", "http://x/", "Visited:x", "Cookie:odd@x/", ""}));

  CacheArrays arrays;
  Enum_Url_Cache(platform.url_cache, platform.system, arrays);
  Enum_Url_Cache(platform.url_cache, platform.system, arrays);  // begins anew
  EXPECT_EQ(Urls(arrays.cookies), (std::vector<std::string>{"", "Cookie:a@x/"}));
  EXPECT_EQ(Urls(arrays.history), (std::vector<std::string>{"", "Visited:x"}));
  EXPECT_EQ(Urls(arrays.normal), (std::vector<std::string>{"", "http://x/", "Cookie:odd@x/", ""}));
  EXPECT_EQ(arrays.normal[1].local_file, "C:\\x.htm");

  oCacher cacher(platform.url_cache, platform.system, platform.desktop);
  EXPECT_EQ(cacher.CacheCollection(kCacheCookie, "").Count(), 3u);
  EXPECT_EQ(cacher.CacheCollection(kCacheCookie, "").Count(), 6u) << "what the first call added stays";
  EXPECT_TRUE(cacher.DeleteCacheEntry("Cookie:a@x/"));
  EXPECT_FALSE(cacher.DeleteCacheEntry("Cookie:a@x/"));
  EXPECT_EQ(cacher.CacheCollection(kCacheCookie, "").Count(), 8u);
  EXPECT_TRUE(rehearsal.Play("boxes\n").empty()) << "the end of the cache is no error";
}

// A cache that answers what a test tells it, for what no machine does.
class ToldCache : public UrlCache {
 public:
  CacheCall asked{0, Error::InsufficientBuffer}, first{2, Error::Success}, next{0, Error::NoMoreItems};
  CacheEntryInfo entry;
  int closed = 0;

  ToldCache() {
    entry.source_url = "u";
    entry.type = kCookie;
  }

  CacheCall FindFirstUrlCacheEntryA(std::optional<std::string_view>, CacheEntryInfo* into,
                                    std::uint32_t& size) override {
    size = 200;
    if (into == nullptr) return asked;
    *into = entry;
    return first;
  }
  CacheCall FindNextUrlCacheEntryA(std::uint64_t, CacheEntryInfo*, std::uint32_t&) override { return next; }
  Error FindCloseUrlCache(std::uint64_t) override {
    ++closed;
    return Error::Success;
  }
  Error DeleteUrlCacheEntryA(std::string_view) override { return Error::Success; }
};

TEST(UrlCacheList, ListsNothingUnlessTheFirstCallAsksForABuffer) {
  const struct {
    const char* what;
    CacheCall asked, first;
    std::size_t listed;
    int closed;
  } cases[] = {
      {"as it should", {0, Error::InsufficientBuffer}, {2, Error::Success}, 1, 1},
      {"a handle without a buffer", {2, Error::InsufficientBuffer}, {2, Error::Success}, 0, 0},
      {"another error", {0, Error::AccessDenied}, {2, Error::Success}, 0, 0},
      {"an empty cache", {0, Error::NoMoreItems}, {0, Error::NoMoreItems}, 0, 0},
      {"the cache emptied in between", {0, Error::InsufficientBuffer}, {0, Error::NoMoreItems}, 0, 1},
  };
  for (const auto& test : cases) {
    ToldCache cache;
    cache.asked = test.asked;
    cache.first = test.first;
    EXPECT_EQ(CacheUrls(cache).size(), test.listed) << test.what;
    EXPECT_EQ(cache.closed, test.closed) << test.what;
  }
}

TEST(UrlCacheList, TheObjectModelTestsItsResultAgainstTheLastError) {
  const struct {
    const char* what;
    CacheCall first;
    std::size_t count;
    const char* box;
  } cases[] = {
      {"a handle and no error", {3, Error::Success}, 1, ""},
      {"an odd handle and an odd error", {1, Error::InvalidFunction}, 0, "LastDllError: 1"},
      {"an even handle and an odd error", {2, Error::InvalidFunction}, 1, ""},
      {"no handle, the end", {0, Error::NoMoreItems}, 0, ""},
      {"no handle, an error", {0, Error::AccessDenied}, 0, "LastDllError: 5"},
      {"a handle that reads as a negative number", {0x80000000, Error::NoMoreItems}, 0, ""},
  };
  for (const auto& test : cases) {
    Rehearsal rehearsal;
    Platform& platform = rehearsal.machine().platform();
    ToldCache cache;
    cache.first = test.first;
    oCacher cacher(cache, platform.system, platform.desktop);
    EXPECT_EQ(cacher.CacheCollection(kCacheCookie, "0").Count(), test.count) << test.what;
    EXPECT_EQ(cache.closed, 1) << test.what;
    rehearsal.Hold(
        std::string("expect boxes ") + (test.box[0] == 0 ? "is\n" : "has \"" + std::string(test.box) + " |\"\n"),
        test.what);
  }
}

// Each field of an entry has a value of its own, so that no two may be exchanged.
TEST(UrlCacheList, EachFieldOfAnEntryGoesWhereItBelongs) {
  Rehearsal rehearsal;
  Platform& platform = rehearsal.machine().platform();
  constexpr std::uint64_t kNoon = 132038640000000000, kHour = 36000000000;  // 2019-06-01 12:00:00
  ToldCache cache;
  const auto at = [](std::uint64_t hour) { return FileTime{kNoon + hour * kHour}; };
  cache.entry = {1, "url", "file", kCookie, 2, 3, 0x80000000, 7, at(0), at(1), at(2), at(3), "header", "htm"};
  oCacher cacher(cache, platform.system, platform.desktop);
  CacheEntries& entries = cacher.CacheCollection(kCacheCookie, "");
  ASSERT_EQ(entries.Count(), 1u);
  const oCacheEntry& kept = *entries.Item(1);
  EXPECT_EQ(kept.SourceUrlName + " " + kept.LocalFileName, "url file");
  const std::int32_t numbers[] = {kept.StructureSize, kept.CacheType, kept.UseCount, kept.HitRate};
  EXPECT_TRUE(std::ranges::equal(numbers, std::to_array<std::int32_t>({200, 0x100001, 2, 3})));
  double day = 43617.5;  // since 30 December 1899
  for (double time : {kept.LastModifiedTime, kept.ExpireTime, kept.LastAccessTime, kept.LastSyncTime}) {
    EXPECT_NEAR(time, day, 1e-9);
    day += 1 / 24.0;
  }

  CacheArrays arrays;
  Enum_Url_Cache(cache, platform.system, arrays);
  ASSERT_EQ(arrays.cookies.size(), 2u);
  const CacheRecord& record = arrays.cookies[1];
  EXPECT_EQ(record.source_url + " " + record.local_file + " " + record.header_info + " " + record.file_extension,
            "url file header htm");
  EXPECT_EQ(record.hit_rate, 3);
  EXPECT_EQ(record.size, INT32_MIN);
  int hour = 12;
  for (const SystemTime& time : {record.last_modified, record.expires, record.last_access, record.last_sync}) {
    EXPECT_EQ(DateText(time), "2019-06-01");
    EXPECT_EQ(time.hour, hour++);
  }

  cache.entry.last_modified = {};
  EXPECT_DOUBLE_EQ(cacher.CacheCollection(kCacheCookie, "").Item(2)->LastModifiedTime, -109205);
  rehearsal.Play("fail FileTimeToLocalFileTime every\n");
  EXPECT_EQ(cacher.CacheCollection(kCacheCookie, "").Item(3)->LastModifiedTime, 0);
}

TEST(CacheEntries, KeysAndPlaces) {
  CacheEntries entries;
  oCacheEntry values;
  values.SourceUrlName = "u";
  EXPECT_EQ(entries.Add(values, "")->SourceUrlName, "u");
  EXPECT_EQ(entries.Add(values, "key")->SourceUrlName, "") << "one that is added under a key is not filled";
  EXPECT_EQ(entries.Add(values, "key"), nullptr);
  EXPECT_EQ(entries.Item(0), nullptr);
  EXPECT_EQ(entries.Item(2), entries.Item("key"));
  EXPECT_EQ(entries.Item(3), nullptr);
  EXPECT_TRUE(entries.Remove(1));
  EXPECT_FALSE(entries.Remove(2));
  EXPECT_EQ(entries.Count(), 1u);
}

}  // namespace
}  // namespace qb
