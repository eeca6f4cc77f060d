// The registry, and the settings in it.
#include <algorithm>
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/values.h"
#include "runtime/text.h"

namespace qb::rehearse {
namespace {

constexpr std::string_view kSettingsKey = "HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData";
constexpr std::string_view kAbsent = "(absent)";

Reply Setting(Console& console, const Arguments& words) {
  if (auto key = console.machine().ReadKey(kSettingsKey)) {
    for (const machine::RegistryValue& value : key->values) {
      if (SameText(value.name, words[0])) return value.data;
    }
  }
  return std::string(kAbsent);
}

std::string TypeAndData(const machine::RegistryValue& value) {
  switch (value.type) {
    case kRegSz:
      return "sz " + value.data;
    case kRegExpandSz:
      return "expand_sz " + value.data;
    case kRegDword:
      if (value.data.size() == 4) {
        std::uint32_t number = 0;
        for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(value.data[i]);
        return "dword " + std::to_string(number);
      }
      return "dword " + HexText(value.data);
    case kRegBinary:
      return "binary " + HexText(value.data);
    default:
      return std::to_string(value.type) + " " + HexText(value.data);
  }
}

bool LessBlindToCase(const std::string& a, const std::string& b) {
  return LowerCase(a) < LowerCase(b);
}

Reply RegistryShow(Console& console, const Arguments& words) {
  auto key = console.machine().ReadKey(words[0]);
  if (!key) return std::string(kAbsent);
  std::stable_sort(key->values.begin(), key->values.end(),
                   [](const auto& a, const auto& b) { return LessBlindToCase(a.name, b.name); });
  std::stable_sort(key->sub_keys.begin(), key->sub_keys.end(), LessBlindToCase);
  Reply reply;
  for (const machine::RegistryValue& value : key->values) {
    reply.lines.push_back((value.name.empty() ? "\"\"" : value.name) + " " + TypeAndData(value));
  }
  for (const std::string& sub_key : key->sub_keys) reply.lines.push_back(sub_key + "\\");
  return reply;
}

constexpr std::array kQuestions = std::to_array<Command>({
    {"setting", 1, 1, Setting},
    {"reg show", 1, 1, RegistryShow},
});

}  // namespace

namespace questions {

std::span<const Command> Registry() {
  return kQuestions;
}

}  // namespace questions

}  // namespace qb::rehearse
