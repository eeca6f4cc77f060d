#include "settings/reg_settings.h"

#include "runtime/text.h"
#include "settings/registry_text.h"

namespace qb {

namespace {

constexpr std::string_view kDefaultCompany = "VB and VBA Program Settings";

std::string_view ValueName(std::string_view key) {
  return key == "*" ? std::string_view() : key;
}

}  // namespace

void CRegSettings::SetCompany(std::string_view company) {
  company_ = Trim(company);
  if (company_.empty()) company_ = kDefaultCompany;
}

void CRegSettings::SetAppName(std::string_view app_name) {
  app_name_ = Trim(app_name);
  if (app_name_.empty()) app_name_ = kProductName;
}

std::string CRegSettings::BuildPath(std::string_view section) const {
  std::string path = "Software\\" + company_ + "\\" + app_name_;
  return section.empty() ? path : path + "\\" + std::string(section);
}

std::string CRegSettings::Read(KeyHandle root, std::string_view section, std::string_view key,
                               std::string_view fallback) const {
  auto open = registry_.RegOpenKeyExA(root, BuildPath(section), kKeyAllAccess);
  if (!open.ok()) return std::string(fallback);
  KeyCloser closer(registry_, open.value);
  auto value = QueryData(registry_, open.value, ValueName(key));
  if (!value.ok() || value.value.data.empty()) return std::string(fallback);
  return WithoutLast(value.value.data, 1);
}

bool CRegSettings::Write(KeyHandle root, std::string_view section, std::string_view key, std::string_view value) {
  auto open = registry_.RegCreateKeyExA(root, BuildPath(section), kKeyAllAccess);
  if (!open.ok()) return false;
  KeyCloser closer(registry_, open.value);
  return Ok(registry_.RegSetValueExA(open.value, ValueName(key), kRegSz, ZeroClosed(value)));
}

bool CRegSettings::DeleteSetting(std::string_view section, std::string_view key) {
  if (!key.empty()) {
    auto open = registry_.RegOpenKeyExA(KeyHandle::LocalMachine, BuildPath(section), kKeyAllAccess);
    if (!open.ok()) return false;
    KeyCloser closer(registry_, open.value);
    return Ok(registry_.RegDeleteValueA(open.value, ValueName(key)));
  }
  const std::string path = BuildPath(section);
  const std::size_t cut = path.rfind('\\');
  auto parent = registry_.RegOpenKeyExA(KeyHandle::LocalMachine, path.substr(0, cut), kKeyAllAccess);
  if (!parent.ok()) return false;
  KeyCloser closer(registry_, parent.value);
  return Ok(registry_.RegDeleteKeyA(parent.value, path.substr(cut + 1)));
}

}  // namespace qb
