// The settings as the running program holds them, and their way from and to the store.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "runtime/trace_counter.h"
#include "settings/catalogue.h"
#include "settings/store.h"

namespace qb {

class Settings {
 public:
  Settings(SettingsStore& store, TraceCounter& history_removed) : store_(store), history_removed_(history_removed) {}

  // Every number 0, every text empty.
  void Reset();
  // Reads every row that the main window loads, strictly: a text that is no number leaves the value as
  // it was. Ends a pending CloseQB.
  void Read();
  // True until QBBuild is stored: this account has never run the program.
  bool FirstRunOfAccount() const;
  // What the very first run leaves in the store.
  void StoreFirstRun();

  // Of a 16-bit setting always a 16-bit number.
  std::int32_t Number(Setting setting) const { return values_[Index(setting)].number; }
  const std::string& Text(Setting setting) const { return values_[Index(setting)].text; }
  bool On(Setting setting) const { return Number(setting) == 1; }
  // In memory only.
  void SetNumber(Setting setting, std::int32_t number) { values_[Index(setting)].number = number; }
  void SetText(Setting setting, std::string text) { values_[Index(setting)].text = std::move(text); }
  // The value in memory as text, as it would be stored.
  std::string TextForm(Setting setting) const;
  // Stores the value in memory. A refused write is passed over.
  void Save(Setting setting);
  // Sets and stores.
  void SaveNumber(Setting setting, std::int32_t number);
  void SaveText(Setting setting, std::string text);

  // What is stored now, without a look at memory: the text, and the number by the tolerant reading: the
  // leading one, 0 for none and for one that the setting does not hold.
  std::string StoredText(Setting setting, std::string_view fallback) const;
  std::int32_t StoredNumber(Setting setting, std::string_view fallback) const;

  SettingsStore& store() { return store_; }

 private:
  struct Value {
    std::int32_t number = 0;
    std::string text;
  };
  static std::size_t Index(Setting setting) { return static_cast<std::size_t>(setting); }

  SettingsStore& store_;
  TraceCounter& history_removed_;
  std::array<Value, kSettingCount> values_;
};

// The two readings of a stored number of 16 bits. Tolerant: the leading number, 0 for none and for one
// that is no signed 16-bit number. Strict: nothing unless the whole text is such a number.
std::int16_t TolerantNumber(std::string_view text);
std::optional<std::int16_t> StrictNumber(std::string_view text);

}  // namespace qb
