// The URL cache of a machine, and the one COM class that it knows: the browser's history store.
#pragma once

#include <map>

#include "platform/machine/machine_state.h"

namespace qb::machine {

class MachineUrlCache : public UrlCache {
 public:
  explicit MachineUrlCache(MachineState& state) : state_(state) {}

  CacheCall FindFirstUrlCacheEntryA(std::optional<std::string_view> pattern, CacheEntryInfo* entry,
                                    std::uint32_t& size) override;
  CacheCall FindNextUrlCacheEntryA(std::uint64_t search, CacheEntryInfo* entry, std::uint32_t& size) override;
  Error FindCloseUrlCache(std::uint64_t search) override;
  // The entry's file goes with it, as far as it can be deleted.
  Error DeleteUrlCacheEntryA(std::string_view url) override;

 private:
  // Fills the entry behind a place and moves the place to it, if the offered size holds it.
  Error Fill(std::uint64_t& place, CacheEntryInfo* entry, std::uint32_t& size) const;

  MachineState& state_;
  std::map<std::uint64_t, std::uint64_t> searches_;  // by handle: the place of the entry last given
};

class MachineCom : public Com {
 public:
  explicit MachineCom(MachineState& state) : state_(state) {}

  Result<ComObject> CoCreateInstance(std::string_view class_id, std::uint32_t context,
                                     std::string_view interface_id) override;
  Result<std::uint32_t> DispCallFunc(ComObject object, std::uint32_t offset, std::uint32_t convention,
                                     std::uint32_t result_type) override;

 private:
  MachineState& state_;
};

}  // namespace qb::machine
