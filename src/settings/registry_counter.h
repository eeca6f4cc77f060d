// Keys, values and their enumeration by root and path, for the kill routines. The name grew from
// counting entries.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace qb {

// Deletes a key by root and path. A key that is missing or has sub-keys stays as it is.
Error Registry_Delete_Key(Registry& registry, KeyHandle root, std::string_view path);

class RegistryCounter {
 public:
  // `pump` runs the message pump; counting calls it in each round, and stops when it gives false.
  RegistryCounter(Registry& registry, std::function<bool()> pump) : registry_(registry), pump_(std::move(pump)) {}

  bool CreateRegKey(KeyHandle root, std::string_view path);
  // Empty if missing or not of type REG_SZ; cut at the first zero character.
  std::string ReadRegString(KeyHandle root, std::string_view path, std::string_view name);
  void SaveRegString(KeyHandle root, std::string_view path, std::string_view name, std::string_view text);
  // 0 unless the value is there as a REG_DWORD.
  std::uint32_t ReadRegWord(KeyHandle root, std::string_view path, std::string_view name);
  void SaveRegWord(KeyHandle root, std::string_view path, std::string_view name, std::uint32_t number);
  void DeleteRegKey(KeyHandle root, std::string_view path);
  void DeleteRegValue(KeyHandle root, std::string_view path, std::string_view name);
  // By enumeration up from 0 until an error; 0 if the key does not open.
  std::int32_t SubKeyCount(KeyHandle root, std::string_view path);
  std::int32_t SubValueCount(KeyHandle root, std::string_view path);
  // `index` counts from 1; empty, or type 0, outside. A key's name of 255 characters ends the walk, a value's name is
  // cut to 255, and data of more than 4000 bytes end the walk: these are the sizes of the buffers.
  std::string SubKeyName(KeyHandle root, std::string_view path, std::int32_t index);
  std::string SubValueName(KeyHandle root, std::string_view path, std::int32_t index);
  std::uint32_t SubValueType(KeyHandle root, std::string_view path, std::int32_t index);

 private:
  struct Entry {
    std::string name;
    std::uint32_t type = 0;
  };
  // Entry `index` from 0 of an open key; false past the end or on an error.
  using Enumerate = bool (RegistryCounter::*)(KeyHandle, std::uint32_t, Entry&);
  bool EnumKey(KeyHandle key, std::uint32_t index, Entry& entry);
  bool EnumValue(KeyHandle key, std::uint32_t index, Entry& entry);
  std::int32_t Count(KeyHandle root, std::string_view path, Enumerate enumerate);
  Entry WalkTo(KeyHandle root, std::string_view path, std::int32_t index, Enumerate enumerate);
  void SaveValue(KeyHandle root, std::string_view path, std::string_view name, std::uint32_t type,
                 std::string_view data);
  Result<std::string> ReadValue(KeyHandle root, std::string_view path, std::string_view name, std::uint32_t type);

  Registry& registry_;
  std::function<bool()> pump_;
};

}  // namespace qb
