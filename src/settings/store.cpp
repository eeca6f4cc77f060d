#include "settings/store.h"

#include "settings/registry_text.h"

namespace qb {

namespace {

std::string Place(std::string_view application, std::string_view section) {
  return "Software\\VB and VBA Program Settings\\" + std::string(application) + "\\" + std::string(section);
}

}  // namespace

std::string SettingsStore::GetSetting(std::string_view application, std::string_view section, std::string_view key,
                                      std::string_view fallback) const {
  auto open = registry_.RegOpenKeyExA(KeyHandle::CurrentUser, Place(application, section), kKeyRead);
  if (!open.ok()) return std::string(fallback);
  KeyCloser closer(registry_, open.value);
  auto value = QueryData(registry_, open.value, key);
  if (!value.ok() || value.value.type != kRegSz) return std::string(fallback);
  return TextOf(value.value.data);
}

Error SettingsStore::SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                                 std::string_view value) {
  auto open = registry_.RegCreateKeyExA(KeyHandle::CurrentUser, Place(application, section), kKeyAllAccess);
  if (!open.ok()) return open.error;
  KeyCloser closer(registry_, open.value);
  return registry_.RegSetValueExA(open.value, key, kRegSz, ZeroClosed(value));
}

}  // namespace qb
