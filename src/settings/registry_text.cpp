#include "settings/registry_text.h"

namespace qb {

Result<RegValue> QueryData(Registry& registry, KeyHandle key, std::string_view name) {
  RegValueInfo info;
  if (Error error = registry.RegQueryValueExA(key, name, Buffer(), info); !Ok(error)) return error;
  RegValue value;
  value.type = info.type;
  if (info.size == 0) return value;
  value.data.resize(info.size);
  if (Error error = registry.RegQueryValueExA(key, name, Buffer(value.data), info); !Ok(error)) return error;
  value.data.resize(info.size < value.data.size() ? info.size : value.data.size());
  return value;
}

std::string ClosedText(const RegValue& value) {
  const std::string_view cut = std::string_view(value.data).substr(0, value.data.size() - !value.data.empty());
  const bool text = value.type == kRegSz || value.type == kRegExpandSz;
  return std::string(text ? cut.substr(0, cut.find('\0')) : cut);
}

}  // namespace qb
