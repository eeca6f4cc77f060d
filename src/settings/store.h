// The settings store: one text value for each key under
// HKEY_CURRENT_USER\Software\VB and VBA Program Settings\<application>\<section>.
#pragma once

#include <string>
#include <string_view>

#include "platform/registry.h"

namespace qb {

// The program's own keys. The names are deliberately dull: the place tells nothing of what stores there.
inline constexpr std::string_view kStoreApplication = "Temp";
inline constexpr std::string_view kStoreSection = "SystemData";

class SettingsStore {
 public:
  explicit SettingsStore(Registry& registry) : registry_(registry) {}

  // The stored text, or `fallback` if the key is absent, is no REG_SZ or cannot be read.
  std::string GetSetting(std::string_view application, std::string_view section, std::string_view key,
                         std::string_view fallback) const;
  // Makes the key as needed. A write that is refused leaves the old value.
  Error SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                    std::string_view value);

  // The same for the program's own place.
  std::string Get(std::string_view key, std::string_view fallback) const {
    return GetSetting(kStoreApplication, kStoreSection, key, fallback);
  }
  Error Save(std::string_view key, std::string_view value) {
    return SaveSetting(kStoreApplication, kStoreSection, key, value);
  }

 private:
  Registry& registry_;
};

}  // namespace qb
