// What programs do with the files and folders of a machine: opening, moving, finding.
#pragma once

#include "platform/machine/world/machine_state.h"

namespace qb::machine {

// The attributes of a file that a program can set.
inline constexpr std::uint32_t kKeptAttributes =
    kAttributeReadOnly | kAttributeHidden | kAttributeSystem | kAttributeArchive;

Result<FileHandle> OpenFileEntry(MachineState& state, std::string_view path, std::uint32_t access, std::uint32_t share,
                                 std::uint32_t disposition, std::uint32_t flags_and_attributes);
// The handle must be open.
void CloseFileEntry(MachineState& state, FileHandle file);

// A file, or an empty folder.
Error RemoveEntry(MachineState& state, std::string_view path, bool folder);
Error MoveEntry(MachineState& state, std::string_view from, std::optional<std::string_view> to, std::uint32_t flags);
Error CopyEntry(MachineState& state, std::string_view from, std::string_view to, bool fail_if_exists);
Error MakeFolderEntry(MachineState& state, std::string_view path);

// What a listing by a pattern gives; FileNotFound if nothing matches, DirectoryName if it would list a file.
Result<Search> MatchingEntries(const MachineState& state, std::string_view pattern);
// The path in long or 8.3 names.
Result<std::string> PathInNames(const MachineState& state, std::string_view path, bool short_names);

}  // namespace qb::machine
