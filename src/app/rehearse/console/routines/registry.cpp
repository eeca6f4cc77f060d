// The settings store and the registry layers.
#include "app/rehearse/console/routines.h"

namespace qb::rehearse {
namespace {

CRegSettings ProductSettings(Program& program, std::string_view company, std::string_view app_name) {
  CRegSettings settings(program.services().platform.registry);
  settings.SetCompany(company);
  settings.SetAppName(app_name);
  return settings;
}

RegistryCounter& Counter(Program& program) {
  return program.services().registry_counter;
}

// Whether the value was read, then its text.
std::pair<bool, std::string> QueryValue(Program& program, KeyHandle root, const std::string& path,
                                        const std::string& name) {
  std::string text;
  bool read = program.services().registry_related.QueryValue(root, path, name, text);
  return {read, text};
}

// The routine takes a key that is open: one is opened for it, with the access that its callers ask for.
std::pair<std::int32_t, std::string> QueryValueEx(Program& program, KeyHandle root, const std::string& path,
                                                  const std::string& name) {
  Registry& registry = program.services().platform.registry;
  auto key = registry.RegOpenKeyExA(root, path, kKeyAllAccess);
  if (!key.ok()) return {static_cast<std::int32_t>(key.error), ""};
  ModRegistryRelated::Value value;
  std::int32_t result = program.services().registry_related.QueryValueEx(key.value, name, value);
  StepOver(registry.RegCloseKey(key.value));
  const auto* number = std::get_if<std::uint32_t>(&value);
  return {result, number != nullptr ? std::to_string(*number) : std::get<std::string>(value)};
}

using Text = const std::string&;
using OptionalText = std::optional<std::string>;

}  // namespace

namespace routines {

std::span<const ProgramRoutine> Registry() {
  static const std::vector<ProgramRoutine> table = {
      {"GetSetting", Bind([](Program& p, Text application, Text section, Text key, Text fallback) {
         return p.services().store.GetSetting(application, section, key, fallback);
       })},
      {"SaveSetting", Bind([](Program& p, Text application, Text section, Text key, Text value) {
         StepOver(p.services().store.SaveSetting(application, section, key, value));
       })},
      {"CRegSettings.Company", Bind([](Program& p, const OptionalText& company, const OptionalText& app_name) {
         return ProductSettings(p, company.value_or(""), app_name.value_or("")).Company();
       })},
      {"CRegSettings.AppName", Bind([](Program& p, const OptionalText& company, const OptionalText& app_name) {
         return ProductSettings(p, company.value_or(""), app_name.value_or("")).AppName();
       })},
      {"CRegSettings.GetSetting",
       Bind([](Program& p, Text company, Text app_name, Text section, Text key, Text fallback) {
         return ProductSettings(p, company, app_name).GetSetting(section, key, fallback);
       })},
      {"CRegSettings.GetSetting2",
       Bind([](Program& p, Text company, Text app_name, Text section, Text key, Text fallback) {
         return ProductSettings(p, company, app_name).GetSetting2(section, key, fallback);
       })},
      {"CRegSettings.SaveSetting",
       Bind([](Program& p, Text company, Text app_name, Text section, Text key, Text value) {
         return ProductSettings(p, company, app_name).SaveSetting(section, key, value);
       })},
      {"CRegSettings.SaveSetting2",
       Bind([](Program& p, Text company, Text app_name, Text section, Text key, Text value) {
         return ProductSettings(p, company, app_name).SaveSetting2(section, key, value);
       })},
      {"CRegSettings.DeleteSetting", Bind([](Program& p, Text company, Text app_name, Text section, Text key) {
         return ProductSettings(p, company, app_name).DeleteSetting(section, key);
       })},

      {"RegistryCounter.CreateRegKey",
       Bind([](Program& p, KeyHandle root, Text path) { return Counter(p).CreateRegKey(root, path); })},
      {"RegistryCounter.ReadRegString", Bind([](Program& p, KeyHandle root, Text path, Text name) {
         return Counter(p).ReadRegString(root, path, name);
       })},
      {"RegistryCounter.SaveRegString", Bind([](Program& p, KeyHandle root, Text path, Text name, Text text) {
         Counter(p).SaveRegString(root, path, name, text);
       })},
      {"RegistryCounter.ReadRegWord",
       Bind([](Program& p, KeyHandle root, Text path, Text name) { return Counter(p).ReadRegWord(root, path, name); })},
      {"RegistryCounter.SaveRegWord", Bind([](Program& p, KeyHandle root, Text path, Text name, std::uint32_t number) {
         Counter(p).SaveRegWord(root, path, name, number);
       })},
      {"RegistryCounter.DeleteRegKey",
       Bind([](Program& p, KeyHandle root, Text path) { Counter(p).DeleteRegKey(root, path); })},
      {"RegistryCounter.DeleteRegValue",
       Bind([](Program& p, KeyHandle root, Text path, Text name) { Counter(p).DeleteRegValue(root, path, name); })},
      {"RegistryCounter.SubKeyCount",
       Bind([](Program& p, KeyHandle root, Text path) { return Counter(p).SubKeyCount(root, path); })},
      {"RegistryCounter.SubKeyName", Bind([](Program& p, KeyHandle root, Text path, std::int32_t index) {
         return Counter(p).SubKeyName(root, path, index);
       })},
      {"RegistryCounter.SubValueCount",
       Bind([](Program& p, KeyHandle root, Text path) { return Counter(p).SubValueCount(root, path); })},
      {"RegistryCounter.SubValueName", Bind([](Program& p, KeyHandle root, Text path, std::int32_t index) {
         return Counter(p).SubValueName(root, path, index);
       })},
      {"RegistryCounter.SubValueType", Bind([](Program& p, KeyHandle root, Text path, std::int32_t index) {
         return Counter(p).SubValueType(root, path, index);
       })},

      {"ModRegistryRelated.QueryValue",
       Bind([](Program& p, KeyHandle root, Text path, Text name) { return QueryValue(p, root, path, name); })},
      {"ModRegistryRelated.QueryValueEx",
       Bind([](Program& p, KeyHandle root, Text path, Text name) { return QueryValueEx(p, root, path, name); })},
      {"ModRegistryRelated.RegCreateKeyValue", Bind([](Program& p, KeyHandle root, Text path, Text name, Text value) {
         p.services().registry_related.RegCreateKeyValue(root, path, name, value);
       })},
      {"Registry_Delete_Key", Bind([](Program& p, KeyHandle root, Text path) {
         StepOver(Registry_Delete_Key(p.services().platform.registry, root, path));
       })},
  };
  return table;
}

}  // namespace routines

}  // namespace qb::rehearse
