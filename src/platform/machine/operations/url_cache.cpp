// The URL cache of a machine.
#include "platform/machine/operation.h"
#include "platform/machine/operations/operations.h"

namespace qb::machine {

template <>
struct record::Traits<CacheCall> {
  static CacheCall Failed(Error error) { return {0, error}; }
};

namespace {

constexpr std::size_t kRecord = 80;  // bytes of the entry before its texts

std::uint32_t NeededSize(const CacheEntry& entry) {
  return static_cast<std::uint32_t>(kRecord + entry.url.size() + 1 + entry.local_file.size() + 1);
}

FindHandle AsHandle(std::uint64_t search) {
  return static_cast<FindHandle>(search);
}

class MachineUrlCache final : public UrlCache {
 public:
  explicit MachineUrlCache(MachineState& state) : state_(state) {}

  CacheCall FindFirstUrlCacheEntryA(std::optional<std::string_view> pattern, CacheEntryInfo* entry,
                                    std::uint32_t& size) override {
    return gate_.Call<"FindFirstUrlCacheEntryA">(pattern, StructureIf(entry != nullptr), size)
        .ReturnsAs(
            [&]() -> CacheCall {
              std::uint64_t place = 0;
              if (const Error error = Fill(place, entry, size); !Ok(error)) return {0, error};
              const std::uint64_t search = state_.NewHandle();
              searches_[search] = place;
              return {search};
            },
            [](const CacheCall& outcome) { return AsHandle(outcome.result); });
  }

  CacheCall FindNextUrlCacheEntryA(std::uint64_t search, CacheEntryInfo* entry, std::uint32_t& size) override {
    return gate_.Call<"FindNextUrlCacheEntryA">(AsHandle(search), StructureIf(entry != nullptr), size)
        .ReturnsAs(
            [&]() -> CacheCall {
              auto found = searches_.find(search);
              const Error error = found == searches_.end() ? Error::InvalidHandle : Fill(found->second, entry, size);
              return {Ok(error) ? 1u : 0u, error};
            },
            [](const CacheCall& outcome) { return outcome.result; });
  }

  Error FindCloseUrlCache(std::uint64_t search) override {
    return gate_.Call<"FindCloseUrlCache">(AsHandle(search)).ReturnsBool([&] {
      state_.open_handles.erase(search);
      return searches_.erase(search) != 0 ? Error::Success : Error::InvalidHandle;
    });
  }

  // The entry's file goes with it, as far as it can be deleted.
  Error DeleteUrlCacheEntryA(std::string_view url) override {
    return gate_.Call<"DeleteUrlCacheEntryA">(url).ReturnsBool([&] {
      const CacheEntry* entry = state_.cache.Find(std::string(url));
      if (entry == nullptr) return Error::FileNotFound;
      auto file = entry->local_file.empty() ? Result<Entry*>(Error::FileNotFound) : state_.Find(entry->local_file);
      if (file.ok() && file.value->kind == Entry::Kind::File && !file.value->locked && file.value->uses.empty()) {
        StepOver(state_.disk.Remove(*file.value));
      }
      state_.cache.Remove(std::string(url));
      return Error::Success;
    });
  }

 private:
  // Fills the entry behind a place and moves the place to it, if the offered size holds it.
  Error Fill(std::uint64_t& place, CacheEntryInfo* entry, std::uint32_t& size) const {
    std::uint64_t next = place;
    const CacheEntry* found = state_.cache.After(next);
    if (found == nullptr) return Error::NoMoreItems;
    const std::uint32_t offered = std::exchange(size, NeededSize(*found));
    if (entry == nullptr || offered < size) return Error::InsufficientBuffer;
    *entry = {};
    entry->struct_size = kRecord;
    entry->source_url = found->url;
    entry->local_file = found->local_file;
    entry->type = found->type;
    place = next;
    return Error::Success;
  }

  MachineState& state_;
  Gate& gate_ = state_.gate;
  std::map<std::uint64_t, std::uint64_t> searches_;  // by handle: the place of the entry last given
};

}  // namespace

std::unique_ptr<UrlCache> MakeUrlCache(MachineState& state) {
  return std::make_unique<MachineUrlCache>(state);
}

}  // namespace qb::machine
