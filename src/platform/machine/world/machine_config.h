// What machine.ini and urlcache.ini hold, and its way into and out of the machine.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/machine/world/machine_state.h"

namespace qb::machine {

// What the ini says of entries of the drives, given back to them once the drives are loaded.
struct SavedEntries {
  std::map<std::string, std::string> attributes, junctions, short_names;  // by path
  std::vector<std::string> denied_keys;                                   // as "HKCU\…"
};

// All or nothing: false and which line in `problem` if it cannot be read.
bool ReadConfig(std::string_view text, MachineState& state, SavedEntries& saved, std::string& problem);
std::string WriteConfig(const MachineState& state);
void GiveBack(const SavedEntries& saved, MachineState& state);

bool ReadCache(std::string_view text, UrlCacheEntries& cache, std::string& problem);
std::string WriteCache(const UrlCacheEntries& cache);

// 0 for a letter that is none of "rhsa".
std::uint32_t AttributeBit(char letter);
// The letters of "rhsad" whose bits hold.
std::string AttributeLetters(std::uint32_t attributes);

}  // namespace qb::machine
