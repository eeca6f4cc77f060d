// Reading a registry value's bytes by the two-call pattern, shared by the registry layers.
#pragma once

#include <string>
#include <string_view>

#include "platform/registry.h"

namespace qb {

struct RegValue {
  std::uint32_t type = 0;
  std::string data;  // as stored, a text with its closing zero if it has one
};

// Asks for the size first and the data then, as two queries of an open key.
Result<RegValue> QueryData(Registry& registry, KeyHandle key, std::string_view name);

// What the readers that cut a closing zero by its place take for the value: a text ends at its first zero in any case.
std::string ClosedText(const RegValue& value);

// Closes a key when it goes out of scope. A key of None is not closed.
class KeyCloser {
 public:
  KeyCloser(Registry& registry, KeyHandle key) : registry_(registry), key_(key) {}
  ~KeyCloser() {
    if (key_ != KeyHandle::None) StepOver(registry_.RegCloseKey(key_));
  }
  KeyCloser(const KeyCloser&) = delete;
  KeyCloser& operator=(const KeyCloser&) = delete;

 private:
  Registry& registry_;
  KeyHandle key_;
};

// A text as REG_SZ wants it: its bytes and a closing zero.
inline std::string ZeroClosed(std::string_view text) {
  return std::string(text) + '\0';
}

}  // namespace qb
