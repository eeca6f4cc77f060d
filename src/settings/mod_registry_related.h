// One registry value by root, path and name. The only routines that record their failures in the error
// log, each under its own name.
#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "platform/registry.h"
#include "settings/error_log.h"

namespace qb {

class ModRegistryRelated {
 public:
  using Value = std::variant<std::string, std::uint32_t>;

  ModRegistryRelated(Registry& registry, ErrorLog& log) : registry_(registry), log_(log) {}

  // Opens with full access. True and the value as text; false, and an empty text, on any failure.
  bool QueryValue(KeyHandle root, std::string_view path, std::string_view name, std::string& text);
  // 0, or an error code, or -1 for a type that is neither text nor a number. A text is its data less
  // the last character.
  std::int32_t QueryValueEx(KeyHandle key, std::string_view name, Value& value);
  // Written as REG_DWORD if the text reads as a number, else as REG_SZ, trimmed: so a text that
  // happens to be numeric ends up as a number.
  void RegCreateKeyValue(KeyHandle root, std::string_view path, std::string_view name, std::string_view value);

 private:
  Registry& registry_;
  ErrorLog& log_;
};

}  // namespace qb
