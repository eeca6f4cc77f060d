#include "platform/machine/machine_files.h"

#include <unistd.h>

#include <algorithm>
#include <array>

namespace qb::machine {

namespace {

constexpr std::uint32_t kKeptAttributes = kAttributeReadOnly | kAttributeHidden | kAttributeSystem | kAttributeArchive;
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

Result<FileHandle> MachineFiles::OpenEntry(std::string_view path, std::uint32_t access, std::uint32_t share,
                                           std::uint32_t disposition, std::uint32_t flags_and_attributes) {
  auto parsed = state_.Parse(path);
  if (!parsed.ok()) return parsed.error;
  auto found = state_.disk.Find(parsed.value, true);
  if (!found.ok() && (found.error != Error::FileNotFound || disposition == kOpenExisting)) return found.error;
  if (found.ok() && disposition == kCreateNew) return Error::FileExists;
  const bool made = !found.ok();
  if (made) {
    auto place = state_.disk.FindPlace(parsed.value);
    if (!place.ok()) return place.error;
    if (parsed.value.closing_backslash) return Error::InvalidName;
    found = state_.disk.MakeFile(*place.value.folder, place.value.name);
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
  auto opened = std::make_unique<Open>();
  opened->entry = &entry;
  opened->use = {Reads(access), Writes(access), share};
  if (entry.locked && (opened->use.reads || opened->use.writes)) return Error::SharingViolation;
  for (const Entry::Use* use : entry.uses) {
    if (!Shares(*use, opened->use)) return Error::SharingViolation;
  }
  if (!entry.IsFolder() && (opened->use.reads || opened->use.writes)) {
    auto host = state_.disk.Open(entry, opened->use.writes);
    if (!host.ok()) return host.error;
    opened->host = std::move(host.value);
  }
  if (truncates) {
    if (ftruncate(opened->host.fd(), 0) != 0) return Error::AccessDenied;
    entry.attributes = (flags_and_attributes & kKeptAttributes) | kAttributeArchive;
    entry.written = state_.Now();
  }
  entry.uses.push_back(&opened->use);
  const std::uint64_t handle = state_.NewHandle();
  open_[handle] = std::move(opened);
  return static_cast<FileHandle>(handle);
}

Result<FileHandle> MachineFiles::CreateFileA(std::string_view path, std::uint32_t access, std::uint32_t share,
                                             std::uint32_t disposition, std::uint32_t flags_and_attributes) {
  CallText call("CreateFileA");
  call.Text(path).Number(access).Number(share).Null().Number(disposition).Number(flags_and_attributes).Null();
  Result<FileHandle> outcome = state_.gate.Enter("CreateFileA");
  if (outcome.ok()) outcome = OpenEntry(path, access, share, disposition, flags_and_attributes);
  state_.gate.Record(call, HandleText(outcome.ok() ? Plain(outcome.value) : kInvalidHandle));
  return outcome;
}

Result<MachineFiles::Open*> MachineFiles::Get(FileHandle file) {
  auto found = open_.find(Plain(file));
  if (found == open_.end()) return Error::InvalidHandle;
  return found->second.get();
}

Result<std::uint32_t> MachineFiles::ReadFile(FileHandle file, Buffer buffer) {
  Result<std::uint32_t> outcome = state_.gate.Enter("ReadFile");
  if (outcome.ok()) {
    auto open = Get(file);
    if (!open.ok()) {
      outcome = open.error;
    } else if (!open.value->use.reads) {
      outcome = Error::AccessDenied;
    } else {
      const ssize_t count =
          pread(open.value->host.fd(), buffer.data(), buffer.size(), static_cast<off_t>(open.value->position));
      if (count < 0)
        outcome = Error::InvalidFunction;
      else
        outcome = static_cast<std::uint32_t>(count);
      if (outcome.ok()) open.value->position += outcome.value;
    }
  }
  CallText call("ReadFile");
  call.Handle(Plain(file)).Bytes(buffer.size()).Number(buffer.size()).Number(outcome.value).Null();
  state_.gate.Record(call, BoolText(outcome.ok()));
  return outcome;
}

Result<std::uint32_t> MachineFiles::WriteFile(FileHandle file, std::string_view data) {
  Result<std::uint32_t> outcome = state_.gate.Enter("WriteFile");
  if (outcome.ok()) {
    auto open = Get(file);
    if (!open.ok()) {
      outcome = open.error;
    } else if (!open.value->use.writes) {
      outcome = Error::AccessDenied;
    } else {
      const ssize_t count =
          pwrite(open.value->host.fd(), data.data(), data.size(), static_cast<off_t>(open.value->position));
      if (count < 0)
        outcome = Error::DiskFull;
      else
        outcome = static_cast<std::uint32_t>(count);
      if (outcome.ok()) open.value->position += outcome.value;
      open.value->changed = true;
    }
  }
  CallText call("WriteFile");
  call.Handle(Plain(file)).Bytes(data.size()).Number(data.size()).Number(outcome.value).Null();
  state_.gate.Record(call, BoolText(outcome.ok()));
  return outcome;
}

Result<std::uint64_t> MachineFiles::SetFilePointer(FileHandle file, std::int64_t distance, SeekFrom from) {
  CallText call("SetFilePointer");
  call.Handle(Plain(file)).Number(static_cast<std::uint32_t>(distance)).Null().Number(static_cast<std::uint32_t>(from));
  Result<std::uint64_t> outcome = state_.gate.Enter("SetFilePointer");
  if (outcome.ok()) {
    auto open = Get(file);
    if (!open.ok()) {
      outcome = open.error;
    } else {
      std::int64_t base = 0;
      if (from == SeekFrom::Current) base = static_cast<std::int64_t>(open.value->position);
      if (from == SeekFrom::End) base = lseek(open.value->host.fd(), 0, SEEK_END);
      if (base + distance < 0) {
        outcome = Error::InvalidParameter;
      } else {
        open.value->position = static_cast<std::uint64_t>(base + distance);
        outcome = open.value->position;
      }
    }
  }
  state_.gate.Record(call, std::to_string(outcome.ok() ? outcome.value : 0xFFFFFFFFu));
  return outcome;
}

Error MachineFiles::SetEndOfFile(FileHandle file) {
  CallText call("SetEndOfFile");
  call.Handle(Plain(file));
  Error error = state_.gate.Enter("SetEndOfFile");
  if (Ok(error)) {
    auto open = Get(file);
    error = open.error;
    if (open.ok() &&
        (!open.value->use.writes || ftruncate(open.value->host.fd(), static_cast<off_t>(open.value->position)) != 0)) {
      error = Error::AccessDenied;
    }
    if (Ok(error)) open.value->changed = true;
  }
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Result<std::uint64_t> MachineFiles::GetFileSize(FileHandle file) {
  CallText call("GetFileSize");
  call.Handle(Plain(file)).Null();
  Result<std::uint64_t> outcome = state_.gate.Enter("GetFileSize");
  if (outcome.ok()) {
    auto open = Get(file);
    if (open.ok())
      outcome = state_.disk.SizeOf(*open.value->entry);
    else
      outcome = open.error;
  }
  state_.gate.Record(call, std::to_string(outcome.ok() ? outcome.value : 0xFFFFFFFFu));
  return outcome;
}

Error MachineFiles::FlushFileBuffers(FileHandle file) {
  CallText call("FlushFileBuffers");
  call.Handle(Plain(file));
  Error error = state_.gate.Enter("FlushFileBuffers");
  if (Ok(error)) {
    auto open = Get(file);
    error = open.error;
    // Onto the disk of the host: what the program overwrites next must have been there.
    if (open.ok() && open.value->host.fd() >= 0 && fdatasync(open.value->host.fd()) != 0) error = Error::WriteProtect;
  }
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Error MachineFiles::SetFileTime(FileHandle file, std::optional<FileTime> created, std::optional<FileTime> accessed,
                                std::optional<FileTime> written) {
  CallText call("SetFileTime");
  call.Handle(Plain(file));
  for (const auto& time : {created, accessed, written}) time ? call.Structure() : call.Null();
  Error error = state_.gate.Enter("SetFileTime");
  if (Ok(error)) {
    auto open = Get(file);
    error = open.error;
    if (open.ok()) {
      Entry& entry = *open.value->entry;
      if (created) entry.created = *created;
      if (accessed) entry.accessed = *accessed;
      if (written) entry.written = *written;
      open.value->changed = false;
    }
  }
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Error MachineFiles::CloseHandle(FileHandle file) {
  CallText call("CloseHandle");
  call.Handle(Plain(file));
  Error error = state_.gate.Enter("CloseHandle");
  // A handle that could not be closed stays open until the program ends; the record shows it.
  if (Ok(error)) {
    auto open = Get(file);
    error = open.error;
    if (open.ok()) {
      if (open.value->changed) {
        open.value->entry->written = state_.Now();
        open.value->entry->attributes |= kAttributeArchive;
      }
      std::erase(open.value->entry->uses, &open.value->use);
      open_.erase(Plain(file));
      state_.open_handles.erase(Plain(file));
    }
  }
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

void MachineFiles::EndAll() {
  open_.clear();
  searches_.clear();
}

Error MachineFiles::Remove(std::string_view path, bool folder) {
  auto parsed = state_.Parse(path);
  if (!parsed.ok()) return parsed.error;
  parsed.value.closing_backslash = false;
  auto found = state_.disk.Find(parsed.value);
  if (!found.ok()) return found.error;
  Entry& entry = *found.value;
  if (entry.parent == nullptr || entry.kind == Entry::Kind::HostLink) return Error::AccessDenied;
  if (entry.IsFolder() != folder) return folder ? Error::DirectoryName : Error::AccessDenied;
  if ((entry.attributes & kAttributeReadOnly) != 0) return Error::AccessDenied;
  if (entry.locked || !entry.uses.empty()) return Error::SharingViolation;
  if (entry.kind == Entry::Kind::Folder && !entry.children.empty()) return Error::DirNotEmpty;
  return state_.disk.Remove(entry);
}

Error MachineFiles::DeleteFileA(std::string_view path) {
  CallText call("DeleteFileA");
  call.Text(path);
  Error error = state_.gate.Enter("DeleteFileA");
  if (Ok(error)) error = Remove(path, false);
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Error MachineFiles::RemoveDirectoryA(std::string_view path) {
  CallText call("RemoveDirectoryA");
  call.Text(path);
  Error error = state_.gate.Enter("RemoveDirectoryA");
  if (Ok(error)) error = Remove(path, true);
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Error MachineFiles::Move(std::string_view from, std::optional<std::string_view> to, std::uint32_t flags) {
  for (std::string_view path : {from, to.value_or("")}) {
    if (path.find('\0') != std::string_view::npos) return Error::InvalidName;
  }
  if ((flags & kMoveDelayUntilReboot) != 0) {
    // The system takes any path, also one that is not there.
    state_.config.pending.push_back({std::string(from), std::string(to.value_or("")), PathText(state_.current)});
    return Error::Success;
  }
  auto source = state_.Parse(from);
  if (!source.ok()) return source.error;
  auto entry = state_.disk.Find(source.value);
  if (!entry.ok()) return entry.error;
  if (!to) return Error::InvalidParameter;
  auto target = state_.Parse(*to);
  if (!target.ok()) return target.error;
  auto place = state_.disk.FindPlace(target.value);
  if (!place.ok()) return place.error;
  Entry& moved = *entry.value;
  if (moved.parent == nullptr || moved.kind == Entry::Kind::HostLink) return Error::AccessDenied;
  if (moved.locked || !moved.uses.empty()) return Error::SharingViolation;
  if (source.value.drive != target.value.drive && (moved.IsFolder() || (flags & kMoveCopyAllowed) == 0)) {
    return Error::NotSameDevice;
  }
  Entry* there = state_.disk.Child(*place.value.folder, place.value.name);
  if (there != nullptr && there != &moved) {
    if ((flags & kMoveReplaceExisting) == 0) return Error::AlreadyExists;
    if (there->IsFolder() || (there->attributes & kAttributeReadOnly) != 0) return Error::AccessDenied;
    if (there->locked || !there->uses.empty()) return Error::SharingViolation;
    if (Error error = state_.disk.Remove(*there); !Ok(error)) return error;
  }
  return state_.disk.Move(moved, *place.value.folder, place.value.name);
}

Error MachineFiles::MoveFileExA(std::string_view from, std::optional<std::string_view> to, std::uint32_t flags) {
  CallText call("MoveFileExA");
  call.Text(from);
  (to ? call.Text(*to) : call.Null()).Number(flags);
  Error error = state_.gate.Enter("MoveFileExA");
  if (Ok(error)) error = Move(from, to, flags);
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Error MachineFiles::Copy(std::string_view from, std::string_view to, bool fail_if_exists) {
  auto source = state_.Find(from, true);
  if (!source.ok()) return source.error;
  if (source.value->kind != Entry::Kind::File) return Error::AccessDenied;
  if (source.value->locked) return Error::SharingViolation;
  if (auto target = state_.Find(to, true); target.ok() && target.value == source.value) return Error::SharingViolation;
  const std::uint32_t attributes = source.value->attributes;
  auto reader = state_.disk.Open(*source.value, false);
  if (!reader.ok()) return reader.error;
  auto writer = OpenEntry(to, kGenericWrite, kShareNone, fail_if_exists ? kCreateNew : kCreateAlways, attributes);
  if (!writer.ok()) return writer.error;
  Open& target = *open_[Plain(writer.value)];
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
  std::erase(target.entry->uses, &target.use);
  open_.erase(Plain(writer.value));
  state_.open_handles.erase(Plain(writer.value));
  return error;
}

Error MachineFiles::CopyFileA(std::string_view from, std::string_view to, bool fail_if_exists) {
  CallText call("CopyFileA");
  call.Text(from).Text(to).Boolean(fail_if_exists);
  Error error = state_.gate.Enter("CopyFileA");
  if (Ok(error)) error = Copy(from, to, fail_if_exists);
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Error MachineFiles::CreateDirectoryA(std::string_view path) {
  CallText call("CreateDirectoryA");
  call.Text(path).Null();
  Error error = state_.gate.Enter("CreateDirectoryA");
  constexpr std::size_t kLongestFolder = 248;  // of a relative path: room for an 8.3 name behind it
  if (Ok(error) && !FromRoot(path) && Utf16Length(path) >= kLongestFolder) error = Error::FilenameTooLong;
  if (Ok(error)) {
    auto parsed = state_.Parse(path);
    error = parsed.error;
    if (parsed.ok()) {
      auto found = state_.disk.Find(parsed.value);
      if (found.ok())
        error = Error::AlreadyExists;
      else if (found.error != Error::FileNotFound)
        error = found.error;
      else {
        auto place = state_.disk.FindPlace(parsed.value);
        error = place.ok() ? state_.disk.MakeFolder(*place.value.folder, place.value.name).error : place.error;
      }
    }
  }
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Result<std::uint32_t> MachineFiles::GetFileAttributesA(std::string_view path) {
  CallText call("GetFileAttributesA");
  call.Text(path);
  Result<std::uint32_t> outcome = state_.gate.Enter("GetFileAttributesA");
  if (outcome.ok()) {
    auto found = state_.Find(path);
    if (found.ok())
      outcome = found.value->WindowsAttributes();
    else
      outcome = found.error;
  }
  state_.gate.Record(call, std::to_string(outcome.ok() ? outcome.value : 0xFFFFFFFFu));
  return outcome;
}

Error MachineFiles::SetFileAttributesA(std::string_view path, std::uint32_t attributes) {
  CallText call("SetFileAttributesA");
  call.Text(path).Number(attributes);
  Error error = state_.gate.Enter("SetFileAttributesA");
  if (Ok(error)) {
    auto found = state_.Find(path);
    error = found.error;
    if (found.ok() && found.value->kind == Entry::Kind::HostLink)
      error = Error::AccessDenied;
    else if (found.ok())
      found.value->attributes = attributes & kKeptAttributes;
  }
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

}  // namespace qb::machine
