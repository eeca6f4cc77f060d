#include "platform/machine/world/files.h"

#include <algorithm>

#include "platform/machine/world/name_pattern.h"

namespace qb::machine {

namespace {

constexpr std::uint32_t kBackupSemantics = 0x02000000;  // FILE_FLAG_BACKUP_SEMANTICS: folders may be opened

constexpr std::uint32_t kReadData = 0x1, kWriteData = 0x2, kAppendData = 0x4, kExecute = 0x20, kDelete = 0x10000;
constexpr std::uint32_t kGenericAll = 0x10000000, kGenericExecute = 0x20000000;

// What counts of an access that is asked for, beside other handles of the same file.
Entry::Use UseFor(std::uint32_t access, std::uint32_t share) {
  auto any = [access](std::uint32_t rights) { return (access & (rights | kGenericAll)) != 0; };
  return {any(kGenericRead | kGenericExecute | kReadData | kExecute), any(kGenericWrite | kWriteData | kAppendData),
          any(kDelete), share};
}

FileHandle Keep(MachineState& state, std::unique_ptr<OpenFile> opened) {
  if (opened->entry != nullptr) opened->entry->uses.push_back(&opened->use);
  const std::uint64_t handle = state.NewHandle();
  state.open_files[handle] = std::move(opened);
  return static_cast<FileHandle>(handle);
}

// The access that a file is deleted or renamed with.
constexpr Entry::Use kDeletion{false, false, true, kShareRead | kShareWrite | kShareDelete};

// The access that a folder is listed with.
constexpr Entry::Use kListing{true, false, false, kShareRead | kShareWrite | kShareDelete};

// The folder that relative paths hang on is held open for going through, which counts as reading, and without sharing
// its deletion.
bool SharedWithCurrent(const Entry::Use& use) {
  return !use.deletes && ((use.share & kShareRead) != 0 || !(use.reads || use.writes));
}
bool IsCurrent(const MachineState& state, const Entry& entry) {
  const auto current = state.disk.Find(state.current, true);
  return current.ok() && current.value == &entry;
}

}  // namespace

Result<FileHandle> OpenFileEntry(MachineState& state, std::string_view path, std::uint32_t access, std::uint32_t share,
                                 std::uint32_t disposition, std::uint32_t flags_and_attributes) {
  if (path.find('\0') != std::string_view::npos) return Error::InvalidName;
  if (disposition < kCreateNew || disposition > kTruncateExisting) return Error::InvalidParameter;
  if (disposition == kTruncateExisting && (access & (kGenericWrite | kGenericAll)) == 0) return Error::InvalidParameter;
  auto parsed = state.Parse(path);
  if (!parsed.ok()) return parsed.error;
  auto opened = std::make_unique<OpenFile>();
  opened->use = UseFor(access, share);
  opened->sets_times = (access & (kGenericWrite | kGenericAll | kFileWriteAttributes)) != 0;
  if (parsed.value.device) return Keep(state, std::move(opened));
  const bool closing_backslash = std::exchange(parsed.value.closing_backslash, false);
  auto found = state.disk.Find(parsed.value, true);
  const bool makes = disposition != kOpenExisting && disposition != kTruncateExisting;
  if (!found.ok() && (found.error != Error::FileNotFound || !makes)) return found.error;
  if (found.ok() && disposition == kCreateNew) return Error::FileExists;
  if (closing_backslash && (!found.ok() || !found.value->IsFolder())) return Error::InvalidName;
  const bool made = !found.ok();
  if (made) {
    auto place = state.disk.FindPlace(parsed.value);
    if (!place.ok()) return place.error;
    found = state.disk.MakeFile(*place.value.folder, place.value.name, opened->host);
    if (!found.ok()) return found.error;
    found.value->attributes |= flags_and_attributes & kKeptAttributes;
  }
  Entry& entry = *found.value;
  const bool cuts = !made && (disposition == kCreateAlways || disposition == kTruncateExisting);
  if (entry.kind == Entry::Kind::HostLink) return Error::AccessDenied;
  if (entry.IsFolder() && (flags_and_attributes & kBackupSemantics) == 0) return Error::AccessDenied;
  if (entry.IsFolder() && cuts) return Error::FileExists;
  if (!made && (opened->use.writes || cuts) && (entry.attributes & kAttributeReadOnly) != 0) return Error::AccessDenied;
  // A file that hides or belongs to the system is only replaced by those who say so.
  if (!made && disposition == kCreateAlways &&
      (entry.attributes & ~flags_and_attributes & (kAttributeHidden | kAttributeSystem)) != 0) {
    return Error::AccessDenied;
  }
  opened->entry = &entry;
  if (!entry.Allows(opened->use)) return Error::SharingViolation;
  if (entry.IsFolder() && IsCurrent(state, entry) && !SharedWithCurrent(opened->use)) return Error::SharingViolation;
  if (!made && !entry.IsFolder() && (opened->use.reads || opened->use.writes)) {
    auto host = state.disk.Open(entry, opened->use.writes);
    if (!host.ok()) return host.error;
    opened->host = std::move(host.value);
  }
  if (cuts) {
    if (!Ok(state.disk.Truncate(entry))) return Error::AccessDenied;
    if (disposition == kCreateAlways) entry.attributes = flags_and_attributes & kKeptAttributes;
    entry.attributes |= kAttributeArchive;
    entry.written = state.Now();
  }
  return Keep(state, std::move(opened));
}

void CloseFileEntry(MachineState& state, FileHandle file) {
  const auto open = state.open_files.find(Plain(file));
  if (Entry* entry = open->second->entry) {
    std::erase(entry->uses, &open->second->use);
    state.disk.Settle(*entry);
  }
  state.open_files.erase(open);
  state.open_handles.erase(Plain(file));
}

Error RemoveEntry(MachineState& state, std::string_view path, bool folder) {
  auto parsed = state.Parse(path);
  if (folder && path.find_first_not_of(' ') == std::string_view::npos) return Error::InvalidName;
  if (!parsed.ok()) return parsed.error;
  if (parsed.value.device) return folder ? Error::DirectoryName : Error::InvalidParameter;
  // The junction itself, whatever the path ends in.
  const bool closing_backslash = std::exchange(parsed.value.closing_backslash, false);
  auto found = state.disk.Find(parsed.value);
  if (!found.ok()) return found.error;
  Entry& entry = *found.value;
  if (entry.parent == nullptr || entry.kind == Entry::Kind::HostLink) return Error::AccessDenied;
  if (closing_backslash && !entry.IsFolder()) return Error::InvalidName;
  if (entry.IsFolder() != folder) return folder ? Error::DirectoryName : Error::AccessDenied;
  if (!entry.Allows(kDeletion) || IsCurrent(state, entry)) return Error::SharingViolation;
  if ((entry.attributes & kAttributeReadOnly) != 0) return Error::AccessDenied;
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
  auto entry = state.Find(from);
  if (!entry.ok()) return entry.error;
  if (!to) return Error::InvalidParameter;
  Entry& moved = *entry.value;
  if (moved.kind == Entry::Kind::HostLink) return Error::AccessDenied;
  if (!moved.Allows(kDeletion) || IsCurrent(state, moved)) {
    return Error::SharingViolation;
  }
  auto target = state.Parse(*to);
  if (!target.ok()) return target.error;
  if (target.value.device) return Error::InvalidParameter;
  if (target.value.parts.empty()) {  // a root
    return (flags & kMoveReplaceExisting) != 0 ? Error::AccessDenied : Error::AlreadyExists;
  }
  auto place = state.disk.FindPlace(target.value);
  if (!place.ok()) return place.error;
  if (moved.parent == nullptr) return Error::AccessDenied;
  const bool to_another_drive = state.Parse(from).value.drive != target.value.drive;
  if (to_another_drive && (moved.IsFolder() || (flags & kMoveCopyAllowed) == 0)) return Error::NotSameDevice;
  Entry* there = state.disk.Child(*place.value.folder, place.value.name);
  const bool as_folder = target.value.closing_backslash && !moved.IsFolder();
  if (as_folder && (there == nullptr || there == &moved)) return Error::DirectoryName;
  if (there != nullptr && there != &moved) {
    if ((flags & kMoveReplaceExisting) == 0) return Error::AlreadyExists;
    if (there->IsFolder() || moved.IsFolder() || (there->attributes & kAttributeReadOnly) != 0 || there->IsOpen()) {
      return Error::AccessDenied;
    }
    if (Error error = state.disk.Remove(*there); !Ok(error)) return error;
  }
  return state.disk.Move(moved, *place.value.folder, place.value.name);
}

Error CopyEntry(MachineState& state, std::string_view from, std::string_view to, bool fail_if_exists) {
  if (auto source = state.Parse(from); source.ok() && source.value.device) return Error::InvalidParameter;
  if (to.find('\0') != std::string_view::npos) return Error::InvalidName;
  const auto reader =
      OpenFileEntry(state, from, kGenericRead, kShareRead | kShareWrite | kShareDelete, kOpenExisting, 0);
  if (!reader.ok()) return reader.error;
  const OpenFile& source = *state.open_files.at(Plain(reader.value));
  // A target that others have open and share is written all the same, unless it is the source.
  const auto there = state.Find(to, true);
  const std::uint32_t share = there.ok() && there.value == source.entry ? kShareNone : kShareRead | kShareWrite;
  const auto writer = OpenFileEntry(state, to, kGenericWrite, share, fail_if_exists ? kCreateNew : kCreateAlways,
                                    source.entry->attributes);
  Error error = writer.error;
  if (writer.ok()) {
    const OpenFile& target = *state.open_files.at(Plain(writer.value));
    if (target.entry != nullptr && !CopyContent(source.host, target.host)) error = Error::DiskFull;
    if (target.entry != nullptr) target.entry->written = source.entry->written;
    CloseFileEntry(state, writer.value);
  }
  CloseFileEntry(state, reader.value);
  return error;
}

Error MakeFolderEntry(MachineState& state, std::string_view path) {
  constexpr std::size_t kLongestFolder = 248;  // of a relative path: room for an 8.3 name behind it
  if (!FromRoot(path) && Utf16Length(path) >= kLongestFolder) return Error::FilenameTooLong;
  auto parsed = state.Parse(path);
  if (!parsed.ok()) return parsed.error;
  if (parsed.value.device) return Error::DirectoryName;
  parsed.value.closing_backslash = false;
  auto found = state.disk.Find(parsed.value);
  if (found.ok()) return Error::AlreadyExists;
  if (found.error != Error::FileNotFound) return found.error;
  auto place = state.disk.FindPlace(parsed.value);
  return place.ok() ? state.disk.MakeFolder(*place.value.folder, place.value.name).error : place.error;
}

Result<Search> MatchingEntries(const MachineState& state, std::string_view pattern) {
  auto parsed = state.Parse(pattern, true);
  if (!parsed.ok()) return parsed.error;
  if (parsed.value.closing_backslash || parsed.value.parts.empty() || parsed.value.device) return Error::FileNotFound;
  const std::string last = parsed.value.parts.back();
  const std::u32string wanted = NtPattern(last);
  parsed.value.parts.pop_back();
  auto place = state.disk.Find(parsed.value, true);
  if (!place.ok()) return place.error == Error::FileNotFound ? Error::PathNotFound : place.error;
  if (place.value->kind != Entry::Kind::Folder) return Error::DirectoryName;
  Entry& folder = *place.value;
  if (!folder.Allows(kListing)) return Error::SharingViolation;
  if (folder.searches == nullptr) folder.searches = std::make_shared<char>();
  Search search{&folder, folder.searches, {}, 0};
  std::vector<FindData>& found = search.found;
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
  if (!HasWildcards(wanted)) {
    if (const Entry* entry = state.disk.Child(folder, last)) take(*entry, entry->name);
  } else {
    if (folder.parent != nullptr) {
      for (const char* dots : {".", ".."}) {
        if (MatchesNtPattern(wanted, dots)) take(dots[1] == '\0' ? folder : *folder.parent, dots);
      }
    }
    for (const auto& [folded, child] : folder.children) {
      const bool by_short = !child->short_name.empty() && MatchesNtPattern(wanted, child->short_name);
      if (by_short || MatchesNtPattern(wanted, folded)) take(*child, child->name);
    }
  }
  if (found.empty()) return Error::FileNotFound;
  return search;
}

Result<std::string> PathInNames(const MachineState& state, std::string_view path, bool short_names) {
  auto whole = state.Find(path);
  if (!whole.ok()) return whole.error;
  // What is relative stays so: only the names are exchanged, each by that of the entry which it leads to.
  const std::size_t names = path.starts_with("\\\\?\\") ? 4 : 0;
  std::string text;
  for (std::size_t at = names; at <= path.size();) {
    const std::size_t cut = std::min(path.find_first_of("\\/", at), path.size());
    std::string name(path.substr(at, cut - at));
    const bool drive = at == names && name.size() >= 2 && name[1] == ':';
    const std::string before = drive ? name.substr(0, 2) : std::string();
    name.erase(0, before.size());
    if (!name.empty() && name.find_first_not_of(". ") != std::string::npos) {
      auto found = state.Find(path.substr(0, cut));
      if (!found.ok()) return found.error;
      const std::string own = OwnShortName(found.value->name);
      name = !short_names ? found.value->name : own.empty() ? found.value->short_name : own;
    }
    text += before + name;
    if (cut < path.size()) text += '\\';
    at = cut + 1;
  }
  return text;
}

}  // namespace qb::machine
