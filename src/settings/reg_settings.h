// Another product's key under "Software\<company>\<application>".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace qb {

// The application's product name.
inline constexpr std::string_view kProductName = "Quillbarrow";

class CRegSettings {
 public:
  explicit CRegSettings(Registry& registry) : registry_(registry) {}

  const std::string& Company() const { return company_; }
  // Trimmed; an empty text restores the default.
  void SetCompany(std::string_view company);
  const std::string& AppName() const { return app_name_; }
  void SetAppName(std::string_view app_name);

  // Reads under HKEY_LOCAL_MACHINE. The key "*" is the unnamed value. The text is the data less its
  // last character; an empty value or any failure gives the fallback. The open asks for full access,
  // so without write rights a value that is there reads as absent. What is absent is looked for where a 64-bit
  // Windows keeps the keys of 32-bit programs.
  std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const;
  // The same under HKEY_CURRENT_USER, where both kinds share their keys.
  std::string GetSetting2(std::string_view section, std::string_view key, std::string_view fallback) const;
  // Write a REG_SZ and make the key as needed; false if that is refused.
  bool SaveSetting(std::string_view section, std::string_view key, std::string_view value) {
    return Write(KeyHandle::LocalMachine, section, key, value);
  }
  bool SaveSetting2(std::string_view section, std::string_view key, std::string_view value) {
    return Write(KeyHandle::CurrentUser, section, key, value);
  }
  // Under HKEY_LOCAL_MACHINE: deletes the value; with an empty key the section's own key.
  bool DeleteSetting(std::string_view section, std::string_view key);

 private:
  std::optional<std::string> Read(KeyHandle root, const std::string& path, std::string_view key) const;
  bool Write(KeyHandle root, std::string_view section, std::string_view key, std::string_view value);
  std::string BuildPath(std::string_view software, std::string_view section) const;

  Registry& registry_;
  std::string company_ = "VB and VBA Program Settings";
  std::string app_name_{kProductName};
};

// Sets a CRegSettings to another product while it is in scope and back to where the main window's one
// rests afterwards.
class ProductScope {
 public:
  static constexpr std::string_view kRestCompany = "Netscape";
  static constexpr std::string_view kRestAppName = "Netscape Navigator";

  ProductScope(CRegSettings& settings, std::string_view company, std::string_view app_name) : settings_(settings) {
    settings_.SetCompany(company);
    settings_.SetAppName(app_name);
  }
  ~ProductScope() {
    settings_.SetCompany(kRestCompany);
    settings_.SetAppName(kRestAppName);
  }
  ProductScope(const ProductScope&) = delete;
  ProductScope& operator=(const ProductScope&) = delete;

 private:
  CRegSettings& settings_;
};

}  // namespace qb
