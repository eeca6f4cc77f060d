#include "platform/machine/world/machine_boot.h"

#include <algorithm>
#include <utility>

#include "runtime/text.h"

namespace qb::machine {

namespace {

void Rename(MachineState& state, Entry& source, std::string_view to) {
  auto target = state.Parse(to);
  if (!target.ok()) return;
  auto place = state.disk.FindPlace(target.value);
  if (!place.ok() || state.disk.Child(*place.value.folder, place.value.name) != nullptr) return;
  StepOver(state.disk.Move(source, *place.value.folder, place.value.name));
}

// An empty new name asks for a deletion.
void CarryOut(MachineState& state, std::string_view from, std::string_view to) {
  auto source = state.Find(from);
  if (!source.ok() || source.value->parent == nullptr) return;
  if (!to.empty()) return Rename(state, *source.value, to);
  source.value->attributes = 0;
  if (!source.value->IsFolder() && source.value->kind != Entry::Kind::HostLink) {
    StepOver(state.disk.Remove(*source.value));
  }
}

}  // namespace

void CarryOutPendingRenames(MachineState& state) {
  const ParsedPath current = state.current;
  for (const PendingRename& rename : std::exchange(state.config.pending, {})) {
    if (auto folder = ParsePath(rename.folder, current, false); folder.ok()) state.current = folder.value;
    CarryOut(state, rename.from, rename.to);
  }
  state.current = current;
}

void CarryOutWininit(MachineState& state) {
  const std::string path = state.config.windows_folder + "\\WININIT.INI";
  auto file = state.Find(path);
  if (!file.ok() || file.value->kind != Entry::Kind::File) return;
  const std::string content = state.config.code_page.ToText(state.disk.Read(*file.value).value_or({}));
  bool inside = false;
  std::string_view rest = content;
  while (!rest.empty()) {
    const std::size_t cut = std::min(rest.find_first_of("\r\n"), rest.size());
    const std::string line = Trim(rest.substr(0, cut));
    rest.remove_prefix(std::min(cut + 1, rest.size()));
    if (!line.empty() && line.front() == '[') inside = SameText(line, "[rename]");
    const std::size_t equals = line.find('=');
    if (!inside || equals == std::string::npos) continue;
    const std::string to = line.substr(0, equals);
    CarryOut(state, line.substr(equals + 1), SameText(to, "NUL") ? "" : to);
  }
  // The system keeps the file that it has carried out under another name.
  const std::string kept = state.config.windows_folder + "\\WININIT.BAK";
  CarryOut(state, kept, "");
  CarryOut(state, path, kept);
  // A folder may hold that name, put there by the file itself: what is carried out goes all the same.
  CarryOut(state, path, "");
}

}  // namespace qb::machine
