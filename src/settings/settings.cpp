#include "settings/settings.h"

#include "runtime/text.h"

namespace qb {

namespace {

// Rounded; nothing for what a setting of this kind does not hold.
std::optional<std::int32_t> Held(SettingKind kind, double number) {
  if (kind == SettingKind::Long) return RoundToInt32(number);
  return RoundToInt16(number);
}

}  // namespace

std::int16_t TolerantNumber(std::string_view text) {
  return RoundToInt16(LeadingNumber(text)).value_or(0);
}

std::optional<std::int16_t> StrictNumber(std::string_view text) {
  auto number = WholeNumber(text);
  return number ? RoundToInt16(*number) : std::nullopt;
}

void Settings::Reset() {
  values_.fill({});
  history_removed_.Set(0);
}

void Settings::Read() {
  for (const SettingRow& row : SettingsCatalogue()) {
    if (!row.loaded) continue;
    const std::string text = store_.Get(row.name, row.load_default);
    switch (row.kind) {
      case SettingKind::Number:
      case SettingKind::Long:
        if (auto whole = WholeNumber(text)) {
          if (auto number = Held(row.kind, *whole)) SetNumber(row.setting, *number);
        }
        break;
      case SettingKind::Double:
        if (auto number = WholeNumber(text)) history_removed_.Set(*number);
        break;
      case SettingKind::Text:
        SetText(row.setting, text);
        break;
    }
  }
  SaveNumber(Setting::CloseQB, 0);
}

bool Settings::FirstRunOfAccount() const {
  constexpr std::string_view kAbsent = "\x01";
  return StoredText(Setting::QBBuild, kAbsent) == kAbsent;
}

void Settings::StoreFirstRun() {
  for (const SettingRow& row : SettingsCatalogue()) {
    if (row.first_run == FirstRun::StoreOne) SaveNumber(row.setting, 1);
    if (row.first_run == FirstRun::StoreZero && Number(row.setting) == 0) Save(row.setting);
  }
}

std::string Settings::TextForm(Setting setting) const {
  switch (RowOf(setting).kind) {
    case SettingKind::Number:
    case SettingKind::Long:
      return std::to_string(Number(setting));
    case SettingKind::Double:
      return NumberText(history_removed_.Value());
    case SettingKind::Text:
      break;
  }
  return Text(setting);
}

void Settings::Save(Setting setting) {
  StepOver(store_.Save(RowOf(setting).name, TextForm(setting)));
}

void Settings::SaveNumber(Setting setting, std::int32_t number) {
  SetNumber(setting, number);
  Save(setting);
}

void Settings::SaveText(Setting setting, std::string text) {
  SetText(setting, std::move(text));
  Save(setting);
}

std::string Settings::StoredText(Setting setting, std::string_view fallback) const {
  return store_.Get(RowOf(setting).name, fallback);
}

std::int32_t Settings::StoredNumber(Setting setting, std::string_view fallback) const {
  return Held(RowOf(setting).kind, LeadingNumber(StoredText(setting, fallback))).value_or(0);
}

}  // namespace qb
