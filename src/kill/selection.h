// The stored selection: which trace classes an unattended run takes.
#pragma once

#include <cstdint>
#include <vector>

#include "kill/class_table.h"
#include "settings/store.h"

namespace qb {

class Selection {
 public:
  explicit Selection(SettingsStore& store) : store_(store), values_(TraceClasses().size(), 0) {}

  // Reads the keys of all classes, 0 where there is none.
  void Load();
  // As it was read last, 0 before the first time and for a class without a key; 1 is selected.
  std::int16_t Of(const TraceClass& row) const;
  // Writes a class's key; nothing for a class without one.
  void Store(const TraceClass& row, std::int16_t value);
  // Whether the values do not add up to 0.
  bool Anything() const;

 private:
  SettingsStore& store_;
  std::vector<std::int16_t> values_;  // by the class's place in the table
};

}  // namespace qb
