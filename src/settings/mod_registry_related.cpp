#include "settings/mod_registry_related.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "runtime/errors.h"
#include "runtime/text.h"
#include "settings/registry_text.h"

namespace qb {

namespace {

// A refused registry call is reported as an invalid call, whatever its own code.
constexpr int kFailed = Number(RuntimeError::InvalidCall);
constexpr std::int32_t kOtherType = -1;

}  // namespace

bool ModRegistryRelated::QueryValue(KeyHandle root, std::string_view path, std::string_view name, std::string& text) {
  text.clear();
  auto key = registry_.RegOpenKeyExA(root, path, kKeyAllAccess);
  if (!key.ok()) {
    log_.Write_Error_Log("QueryValue", kFailed);
    return false;
  }
  KeyCloser closer(registry_, key.value);
  Value value;
  if (QueryValueEx(key.value, name, value) != 0) return false;
  const auto* number = std::get_if<std::uint32_t>(&value);
  text = number != nullptr ? std::to_string(*number) : std::get<std::string>(value);
  return true;
}

std::int32_t ModRegistryRelated::QueryValueEx(KeyHandle key, std::string_view name, Value& value) {
  auto read = QueryData(registry_, key, name);
  if (!read.ok()) {
    log_.Write_Error_Log("QueryValueEx", kFailed);
    return static_cast<std::int32_t>(read.error);
  }
  const std::string& data = read.value.data;
  switch (read.value.type) {
    case kRegSz:
    case kRegExpandSz:
      value = ClosedText(read.value);
      return 0;
    case kRegDword: {
      std::uint32_t number = 0;
      std::memcpy(&number, data.data(), std::min(data.size(), sizeof number));
      value = number;
      return 0;
    }
    default:
      return kOtherType;
  }
}

void ModRegistryRelated::RegCreateKeyValue(KeyHandle root, std::string_view path, std::string_view name,
                                           std::string_view value) {
  auto key = registry_.RegCreateKeyA(root, path);
  if (!key.ok()) return log_.Write_Error_Log("RegCreateKeyValue", kFailed);
  KeyCloser closer(registry_, key.value);
  Error outcome = Error::Success;
  if (auto number = WholeNumber(value)) {
    auto rounded = RoundToInt32(*number);
    if (!rounded) return log_.Write_Error_Log("RegCreateKeyValue", Number(RuntimeError::Overflow));
    std::array<char, sizeof *rounded> bytes;
    std::memcpy(bytes.data(), &*rounded, sizeof *rounded);
    outcome = registry_.RegSetValueExA(key.value, name, kRegDword, std::string_view(bytes.data(), bytes.size()));
  } else {
    outcome = registry_.RegSetValueExA(key.value, name, kRegSz, ZeroClosed(Trim(value)));
  }
  if (!Ok(outcome)) log_.Write_Error_Log("RegCreateKeyValue", kFailed);
}

}  // namespace qb
