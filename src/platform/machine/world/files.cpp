#include "platform/machine/world/files.h"

#include <unistd.h>

#include <algorithm>
#include <array>

#include "runtime/folders.h"

namespace qb::machine {

namespace {

constexpr std::uint32_t kBackupSemantics = 0x02000000;  // FILE_FLAG_BACKUP_SEMANTICS: folders may be opened

bool Reads(std::uint32_t access) {
  return (access & kGenericRead) != 0;
}
bool Writes(std::uint32_t access) {
  return (access & kGenericWrite) != 0;
}

// Whether a new use can stand beside one that is there.
bool Shares(const Entry::Use& there, const Entry::Use& wanted) {
  const bool there_allows =
      (!wanted.reads || (there.share & kShareRead) != 0) && (!wanted.writes || (there.share & kShareWrite) != 0);
  const bool wanted_allows =
      (!there.reads || (wanted.share & kShareRead) != 0) && (!there.writes || (wanted.share & kShareWrite) != 0);
  return there_allows && wanted_allows;
}

}  // namespace

Result<FileHandle> OpenFileEntry(MachineState& state, std::string_view path, std::uint32_t access, std::uint32_t share,
                                 std::uint32_t disposition, std::uint32_t flags_and_attributes) {
  auto parsed = state.Parse(path);
  if (!parsed.ok()) return parsed.error;
  auto found = state.disk.Find(parsed.value, true);
  if (!found.ok() && (found.error != Error::FileNotFound || disposition == kOpenExisting)) return found.error;
  if (found.ok() && disposition == kCreateNew) return Error::FileExists;
  const bool made = !found.ok();
  if (made) {
    auto place = state.disk.FindPlace(parsed.value);
    if (!place.ok()) return place.error;
    if (parsed.value.closing_backslash) return Error::InvalidName;
    found = state.disk.MakeFile(*place.value.folder, place.value.name);
    if (!found.ok()) return found.error;
    found.value->attributes |= flags_and_attributes & kKeptAttributes;
    disposition = kOpenExisting;
  }
  Entry& entry = *found.value;
  if (entry.kind == Entry::Kind::HostLink) return Error::AccessDenied;
  if (entry.IsFolder() && (flags_and_attributes & kBackupSemantics) == 0) return Error::AccessDenied;
  const bool truncates = disposition == kCreateAlways;
  if (Writes(access) && (entry.attributes & kAttributeReadOnly) != 0 && !made) return Error::AccessDenied;
  // A file that hides or belongs to the system is only cut by those who say so.
  if (truncates && (entry.attributes & ~flags_and_attributes & (kAttributeHidden | kAttributeSystem)) != 0) {
    return Error::AccessDenied;
  }
  auto opened = std::make_unique<OpenFile>();
  opened->entry = &entry;
  opened->use = {Reads(access), Writes(access), share};
  if (entry.locked && (opened->use.reads || opened->use.writes)) return Error::SharingViolation;
  for (const Entry::Use* use : entry.uses) {
    if (!Shares(*use, opened->use)) return Error::SharingViolation;
  }
  if (!entry.IsFolder() && (opened->use.reads || opened->use.writes)) {
    auto host = state.disk.Open(entry, opened->use.writes);
    if (!host.ok()) return host.error;
    opened->host = std::move(host.value);
  }
  if (truncates) {
    if (ftruncate(opened->host.fd(), 0) != 0) return Error::AccessDenied;
    entry.attributes = (flags_and_attributes & kKeptAttributes) | kAttributeArchive;
    entry.written = state.Now();
  }
  entry.uses.push_back(&opened->use);
  const std::uint64_t handle = state.NewHandle();
  state.open_files[handle] = std::move(opened);
  return static_cast<FileHandle>(handle);
}

void CloseFileEntry(MachineState& state, FileHandle file) {
  const auto open = state.open_files.find(Plain(file));
  std::erase(open->second->entry->uses, &open->second->use);
  state.open_files.erase(open);
  state.open_handles.erase(Plain(file));
}

Error RemoveEntry(MachineState& state, std::string_view path, bool folder) {
  auto parsed = state.Parse(path);
  if (!parsed.ok()) return parsed.error;
  parsed.value.closing_backslash = false;
  auto found = state.disk.Find(parsed.value);
  if (!found.ok()) return found.error;
  Entry& entry = *found.value;
  if (entry.parent == nullptr || entry.kind == Entry::Kind::HostLink) return Error::AccessDenied;
  if (entry.IsFolder() != folder) return folder ? Error::DirectoryName : Error::AccessDenied;
  if ((entry.attributes & kAttributeReadOnly) != 0) return Error::AccessDenied;
  if (entry.locked || !entry.uses.empty()) return Error::SharingViolation;
  if (entry.kind == Entry::Kind::Folder && !entry.children.empty()) return Error::DirNotEmpty;
  return state.disk.Remove(entry);
}

Error MoveEntry(MachineState& state, std::string_view from, std::optional<std::string_view> to, std::uint32_t flags) {
  for (std::string_view path : {from, to.value_or("")}) {
    if (path.find('\0') != std::string_view::npos) return Error::InvalidName;
  }
  if ((flags & kMoveDelayUntilReboot) != 0) {
    // The system takes any path, also one that is not there.
    state.config.pending.push_back({std::string(from), std::string(to.value_or("")), PathText(state.current)});
    return Error::Success;
  }
  auto source = state.Parse(from);
  if (!source.ok()) return source.error;
  auto entry = state.disk.Find(source.value);
  if (!entry.ok()) return entry.error;
  if (!to) return Error::InvalidParameter;
  auto target = state.Parse(*to);
  if (!target.ok()) return target.error;
  auto place = state.disk.FindPlace(target.value);
  if (!place.ok()) return place.error;
  Entry& moved = *entry.value;
  if (moved.parent == nullptr || moved.kind == Entry::Kind::HostLink) return Error::AccessDenied;
  if (moved.locked || !moved.uses.empty()) return Error::SharingViolation;
  if (source.value.drive != target.value.drive && (moved.IsFolder() || (flags & kMoveCopyAllowed) == 0)) {
    return Error::NotSameDevice;
  }
  Entry* there = state.disk.Child(*place.value.folder, place.value.name);
  if (there != nullptr && there != &moved) {
    if ((flags & kMoveReplaceExisting) == 0) return Error::AlreadyExists;
    if (there->IsFolder() || (there->attributes & kAttributeReadOnly) != 0) return Error::AccessDenied;
    if (there->locked || !there->uses.empty()) return Error::SharingViolation;
    if (Error error = state.disk.Remove(*there); !Ok(error)) return error;
  }
  return state.disk.Move(moved, *place.value.folder, place.value.name);
}

Error CopyEntry(MachineState& state, std::string_view from, std::string_view to, bool fail_if_exists) {
  auto source = state.Find(from, true);
  if (!source.ok()) return source.error;
  if (source.value->kind != Entry::Kind::File) return Error::AccessDenied;
  if (source.value->locked) return Error::SharingViolation;
  if (auto target = state.Find(to, true); target.ok() && target.value == source.value) return Error::SharingViolation;
  const std::uint32_t attributes = source.value->attributes;
  auto reader = state.disk.Open(*source.value, false);
  if (!reader.ok()) return reader.error;
  auto writer =
      OpenFileEntry(state, to, kGenericWrite, kShareNone, fail_if_exists ? kCreateNew : kCreateAlways, attributes);
  if (!writer.ok()) return writer.error;
  OpenFile& target = *state.open_files.at(Plain(writer.value));
  std::array<char, 65536> block;
  Error error = Error::Success;
  off_t place = 0;
  for (;;) {
    const ssize_t got = pread(reader.value.fd(), block.data(), block.size(), place);
    if (got <= 0) break;
    if (pwrite(target.host.fd(), block.data(), static_cast<std::size_t>(got), place) != got) {
      error = Error::DiskFull;
      break;
    }
    place += got;
  }
  target.entry->written = source.value->written;
  CloseFileEntry(state, writer.value);
  return error;
}

Error MakeFolderEntry(MachineState& state, std::string_view path) {
  constexpr std::size_t kLongestFolder = 248;  // of a relative path: room for an 8.3 name behind it
  if (!FromRoot(path) && Utf16Length(path) >= kLongestFolder) return Error::FilenameTooLong;
  auto parsed = state.Parse(path);
  if (!parsed.ok()) return parsed.error;
  auto found = state.disk.Find(parsed.value);
  if (found.ok()) return Error::AlreadyExists;
  if (found.error != Error::FileNotFound) return found.error;
  auto place = state.disk.FindPlace(parsed.value);
  return place.ok() ? state.disk.MakeFolder(*place.value.folder, place.value.name).error : place.error;
}

Result<std::vector<FindData>> MatchingEntries(const MachineState& state, std::string_view pattern) {
  auto parsed = state.Parse(pattern, true);
  if (!parsed.ok()) return parsed.error;
  if (parsed.value.closing_backslash || parsed.value.parts.empty()) return Error::FileNotFound;
  auto place = state.disk.FindPlace(parsed.value);
  if (!place.ok()) return Error::PathNotFound;
  const Entry& folder = *place.value.folder;
  const std::string wanted = FoldName(place.value.name);
  std::vector<FindData> found;
  const Disk::FolderSizes sizes(state.disk, folder);
  auto take = [&](const Entry& entry, const std::string& name) {
    FindData& data = found.emplace_back();
    data.attributes = entry.WindowsAttributes();
    data.created = entry.created;
    data.accessed = entry.accessed;
    data.written = entry.written;
    const std::uint64_t size = sizes.Of(entry);
    data.size_high = static_cast<std::uint32_t>(size >> 32);
    data.size_low = static_cast<std::uint32_t>(size);
    data.name = name;
    data.short_name = entry.short_name;
  };
  if (wanted.find_first_of("*?") == std::string::npos) {
    if (const Entry* entry = state.disk.Child(folder, wanted)) take(*entry, entry->name);
  } else {
    if (folder.parent != nullptr) {
      for (const char* dots : {".", ".."}) {
        if (MatchesPattern(wanted, dots)) take(folder, dots);
      }
    }
    for (const auto& [folded, child] : folder.children) {
      const bool by_short = !child->short_name.empty() && MatchesPattern(wanted, child->short_name);
      if (by_short || MatchesPattern(wanted, folded)) take(*child, child->name);
    }
  }
  if (found.empty()) return Error::FileNotFound;
  return found;
}

Result<std::string> PathInNames(const MachineState& state, std::string_view path, bool short_names) {
  auto parsed = state.Parse(path);
  if (!parsed.ok()) return parsed.error;
  std::string text{parsed.value.drive, ':'};
  const Entry* at = state.disk.Root(parsed.value.drive);
  if (at == nullptr) return Error::PathNotFound;
  ParsedPath so_far;
  so_far.drive = parsed.value.drive;
  for (const std::string& part : parsed.value.parts) {
    so_far.parts.push_back(part);
    auto found = state.disk.Find(so_far);
    if (!found.ok()) return found.error;
    const Entry& entry = *found.value;
    const std::string own = OwnShortName(entry.name);
    text += '\\' + (!short_names ? entry.name : own.empty() ? entry.short_name : own);
  }
  if (parsed.value.parts.empty() || parsed.value.closing_backslash) text += '\\';
  return text;
}

}  // namespace qb::machine
