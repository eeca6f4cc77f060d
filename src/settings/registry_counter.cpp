#include "settings/registry_counter.h"

#include <array>
#include <cstring>

#include "settings/registry_text.h"

namespace qb {

namespace {

constexpr std::size_t kNameBuffer = 255;
constexpr std::size_t kLongestValueName = 16383;
constexpr std::size_t kDataBuffer = 4000;

}  // namespace

Error Registry_Delete_Key(Registry& registry, KeyHandle root, std::string_view path) {
  return registry.RegDeleteKeyA(root, path);
}

bool RegistryCounter::CreateRegKey(KeyHandle root, std::string_view path) {
  auto key = registry_.RegCreateKeyA(root, path);
  if (!key.ok()) return false;
  StepOver(registry_.RegCloseKey(key.value));
  return true;
}

Result<std::string> RegistryCounter::ReadValue(KeyHandle root, std::string_view path, std::string_view name,
                                               std::uint32_t type) {
  auto key = registry_.RegOpenKeyA(root, path);
  if (!key.ok()) return key.error;
  KeyCloser closer(registry_, key.value);
  auto value = QueryData(registry_, key.value, name);
  if (!value.ok()) return value.error;
  if (value.value.type != type) return Error::InvalidParameter;
  return value.value.data;
}

void RegistryCounter::SaveValue(KeyHandle root, std::string_view path, std::string_view name, std::uint32_t type,
                                std::string_view data) {
  auto key = registry_.RegCreateKeyA(root, path);
  if (!key.ok()) return;
  KeyCloser closer(registry_, key.value);
  StepOver(registry_.RegSetValueExA(key.value, name, type, data));
}

std::string RegistryCounter::ReadRegString(KeyHandle root, std::string_view path, std::string_view name) {
  auto value = ReadValue(root, path, name, kRegSz);
  return value.ok() ? TextOf(value.value) : std::string();
}

void RegistryCounter::SaveRegString(KeyHandle root, std::string_view path, std::string_view name,
                                    std::string_view text) {
  SaveValue(root, path, name, kRegSz, ZeroClosed(text));
}

std::uint32_t RegistryCounter::ReadRegWord(KeyHandle root, std::string_view path, std::string_view name) {
  auto value = ReadValue(root, path, name, kRegDword);
  std::uint32_t number = 0;
  if (value.ok() && value.value.size() == sizeof number) std::memcpy(&number, value.value.data(), sizeof number);
  return number;
}

void RegistryCounter::SaveRegWord(KeyHandle root, std::string_view path, std::string_view name, std::uint32_t number) {
  std::array<char, sizeof number> bytes;
  std::memcpy(bytes.data(), &number, sizeof number);
  SaveValue(root, path, name, kRegDword, std::string_view(bytes.data(), bytes.size()));
}

void RegistryCounter::DeleteRegKey(KeyHandle root, std::string_view path) {
  StepOver(Registry_Delete_Key(registry_, root, path));
}

void RegistryCounter::DeleteRegValue(KeyHandle root, std::string_view path, std::string_view name) {
  auto key = registry_.RegOpenKeyA(root, path);
  if (!key.ok()) return;
  KeyCloser closer(registry_, key.value);
  StepOver(registry_.RegDeleteValueA(key.value, name));
}

bool RegistryCounter::EnumKey(KeyHandle key, std::uint32_t index, Entry& entry) {
  TextBuffer name(kNameBuffer);
  if (!Ok(registry_.RegEnumKeyA(key, index, name))) return false;
  entry.name = name.text();
  return true;
}

bool RegistryCounter::EnumValue(KeyHandle key, std::uint32_t index, Entry& entry) {
  TextBuffer name(kNameBuffer);
  std::array<char, kDataBuffer> data;
  RegValueInfo info;
  Error error = registry_.RegEnumValueA(key, index, name, data, info);
  if (error == Error::MoreData) {
    // Windows gives nothing of a name that does not fit; what does not fit of the data ends the walk again.
    TextBuffer whole(kLongestValueName + 1);
    error = registry_.RegEnumValueA(key, index, whole, data, info);
    name = TextBuffer(kNameBuffer + 1);
    name.FillCut(whole.text());
  }
  if (!Ok(error)) return false;
  entry.name = name.text();
  entry.type = info.type;
  return true;
}

std::int32_t RegistryCounter::Count(KeyHandle root, std::string_view path, Enumerate enumerate) {
  auto key = registry_.RegOpenKeyA(root, path);
  if (!key.ok()) return 0;
  KeyCloser closer(registry_, key.value);
  std::int32_t count = 0;
  Entry entry;
  while ((this->*enumerate)(key.value, static_cast<std::uint32_t>(count), entry)) {
    ++count;
    if (!pump_()) break;
  }
  return count;
}

RegistryCounter::Entry RegistryCounter::WalkTo(KeyHandle root, std::string_view path, std::int32_t index,
                                               Enumerate enumerate) {
  if (index < 1) return {};
  auto key = registry_.RegOpenKeyA(root, path);
  if (!key.ok()) return {};
  KeyCloser closer(registry_, key.value);
  Entry entry;
  for (std::int32_t at = 0; at < index; ++at) {
    if (!(this->*enumerate)(key.value, static_cast<std::uint32_t>(at), entry)) return {};
  }
  return entry;
}

std::int32_t RegistryCounter::SubKeyCount(KeyHandle root, std::string_view path) {
  return Count(root, path, &RegistryCounter::EnumKey);
}

std::int32_t RegistryCounter::SubValueCount(KeyHandle root, std::string_view path) {
  return Count(root, path, &RegistryCounter::EnumValue);
}

std::string RegistryCounter::SubKeyName(KeyHandle root, std::string_view path, std::int32_t index) {
  return WalkTo(root, path, index, &RegistryCounter::EnumKey).name;
}

std::string RegistryCounter::SubValueName(KeyHandle root, std::string_view path, std::int32_t index) {
  return WalkTo(root, path, index, &RegistryCounter::EnumValue).name;
}

std::uint32_t RegistryCounter::SubValueType(KeyHandle root, std::string_view path, std::int32_t index) {
  return WalkTo(root, path, index, &RegistryCounter::EnumValue).type;
}

}  // namespace qb
