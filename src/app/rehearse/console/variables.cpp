#include "app/rehearse/console/variables.h"

#include "runtime/text.h"

namespace qb::rehearse {

std::optional<std::string> VariableText(Program& program, std::string_view name) {
  for (std::span<const Variable> table : VariableTables()) {
    for (const Variable& variable : table) {
      if (SameText(variable.name, name)) return variable.text(program);
    }
  }
  if (const SettingRow* row = FindSetting(name)) return program.services().settings.TextForm(row->setting);
  if (const TraceClass* row = FindClass(name)) return std::to_string(program.engine().selection().Of(*row));
  return std::nullopt;
}

}  // namespace qb::rehearse
