#include "settings/reg_settings.h"

#include "runtime/text.h"
#include "settings/registry_text.h"

namespace qb {

namespace {

constexpr std::string_view kSoftware = "Software\\";
// Where a 64-bit Windows keeps what programs of 32 bits write below HKEY_LOCAL_MACHINE\Software.
constexpr std::string_view kSoftwareOf32Bits = "Software\\WOW6432Node\\";
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

std::string CRegSettings::BuildPath(std::string_view software, std::string_view section) const {
  std::string path = std::string(software) + company_ + "\\" + app_name_;
  return section.empty() ? path : path + "\\" + std::string(section);
}

std::optional<std::string> CRegSettings::Read(KeyHandle root, const std::string& path, std::string_view key) const {
  auto open = registry_.RegOpenKeyExA(root, path, kKeyAllAccess);
  if (!open.ok()) return std::nullopt;
  KeyCloser closer(registry_, open.value);
  auto value = QueryData(registry_, open.value, ValueName(key));
  if (!value.ok() || value.value.data.empty()) return std::nullopt;
  return ClosedText(value.value);
}

std::string CRegSettings::GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const {
  for (std::string_view software : {kSoftware, kSoftwareOf32Bits}) {
    if (auto text = Read(KeyHandle::LocalMachine, BuildPath(software, section), key)) return *text;
  }
  return std::string(fallback);
}

std::string CRegSettings::GetSetting2(std::string_view section, std::string_view key, std::string_view fallback) const {
  return Read(KeyHandle::CurrentUser, BuildPath(kSoftware, section), key).value_or(std::string(fallback));
}

bool CRegSettings::Write(KeyHandle root, std::string_view section, std::string_view key, std::string_view value) {
  auto open = registry_.RegCreateKeyExA(root, BuildPath(kSoftware, section), kKeyAllAccess);
  if (!open.ok()) return false;
  KeyCloser closer(registry_, open.value);
  return Ok(registry_.RegSetValueExA(open.value, ValueName(key), kRegSz, ZeroClosed(value)));
}

bool CRegSettings::DeleteSetting(std::string_view section, std::string_view key) {
  if (!key.empty()) {
    auto open = registry_.RegOpenKeyExA(KeyHandle::LocalMachine, BuildPath(kSoftware, section), kKeyAllAccess);
    if (!open.ok()) return false;
    KeyCloser closer(registry_, open.value);
    return Ok(registry_.RegDeleteValueA(open.value, ValueName(key)));
  }
  const std::string path = BuildPath(kSoftware, section);
  const std::size_t cut = path.rfind('\\');
  auto parent = registry_.RegOpenKeyExA(KeyHandle::LocalMachine, path.substr(0, cut), kKeyAllAccess);
  if (!parent.ok()) return false;
  KeyCloser closer(registry_, parent.value);
  return Ok(registry_.RegDeleteKeyA(parent.value, path.substr(cut + 1)));
}

}  // namespace qb
