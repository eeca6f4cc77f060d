// Listing, 8.3 names, the current folder and drives.
#include <algorithm>

#include "platform/machine/machine_files.h"
#include "runtime/folders.h"

namespace qb::machine {

namespace {

struct DriveTypeRow {
  std::string_view word;
  DriveType type;
};

constexpr DriveTypeRow kDriveTypes[] = {
    {"unknown", DriveType::Unknown}, {"gone", DriveType::NoRoot},   {"removable", DriveType::Removable},
    {"fixed", DriveType::Fixed},     {"remote", DriveType::Remote}, {"cdrom", DriveType::CdRom},
    {"ramdisk", DriveType::RamDisk},
};

}  // namespace

Result<std::vector<FindData>> MachineFiles::Matches(std::string_view pattern) const {
  auto parsed = state_.Parse(pattern, true);
  if (!parsed.ok()) return parsed.error;
  if (parsed.value.closing_backslash || parsed.value.parts.empty()) return Error::FileNotFound;
  auto place = state_.disk.FindPlace(parsed.value);
  if (!place.ok()) return Error::PathNotFound;
  const Entry& folder = *place.value.folder;
  const std::string wanted = FoldName(place.value.name);
  std::vector<FindData> found;
  auto take = [&](const Entry& entry, const std::string& name) {
    FindData data;
    data.attributes = entry.WindowsAttributes();
    data.created = entry.created;
    data.accessed = entry.accessed;
    data.written = entry.written;
    const std::uint64_t size = state_.disk.SizeOf(entry);
    data.size_high = static_cast<std::uint32_t>(size >> 32);
    data.size_low = static_cast<std::uint32_t>(size);
    data.name = name;
    data.short_name = entry.short_name;
    found.push_back(std::move(data));
  };
  if (wanted.find_first_of("*?") == std::string::npos) {
    if (const Entry* entry = state_.disk.Child(folder, wanted)) take(*entry, entry->name);
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

Result<FirstFile> MachineFiles::FindFirstFileA(std::string_view pattern) {
  CallText call("FindFirstFileA");
  call.Text(pattern).Structure();
  Result<FirstFile> outcome = state_.gate.Enter("FindFirstFileA");
  if (outcome.ok()) {
    auto matches = Matches(pattern);
    if (matches.ok()) {
      const std::uint64_t handle = state_.NewHandle();
      outcome = FirstFile{static_cast<FindHandle>(handle), matches.value.front()};
      searches_[handle] = {std::move(matches.value), 1};
    } else {
      outcome = matches.error;
    }
  }
  state_.gate.Record(call, HandleText(outcome.ok() ? Plain(outcome.value.handle) : kInvalidHandle));
  return outcome;
}

Result<FindData> MachineFiles::FindNextFileA(FindHandle handle) {
  CallText call("FindNextFileA");
  call.Handle(Plain(handle)).Structure();
  Result<FindData> outcome = state_.gate.Enter("FindNextFileA");
  if (outcome.ok()) {
    auto search = searches_.find(Plain(handle));
    if (search == searches_.end())
      outcome = Error::InvalidHandle;
    else if (search->second.next >= search->second.found.size())
      outcome = Error::NoMoreFiles;
    else
      outcome = search->second.found[search->second.next++];
  }
  state_.gate.Record(call, BoolText(outcome.ok()));
  return outcome;
}

Error MachineFiles::FindClose(FindHandle handle) {
  CallText call("FindClose");
  call.Handle(Plain(handle));
  Error error = state_.gate.Enter("FindClose");
  if (Ok(error)) {
    error = searches_.erase(Plain(handle)) != 0 ? Error::Success : Error::InvalidHandle;
    state_.open_handles.erase(Plain(handle));
  }
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Result<std::string> MachineFiles::PathInNames(std::string_view path, bool short_names) const {
  auto parsed = state_.Parse(path);
  if (!parsed.ok()) return parsed.error;
  std::string text{parsed.value.drive, ':'};
  const Entry* at = state_.disk.Root(parsed.value.drive);
  if (at == nullptr) return Error::PathNotFound;
  ParsedPath so_far;
  so_far.drive = parsed.value.drive;
  for (const std::string& part : parsed.value.parts) {
    so_far.parts.push_back(part);
    auto found = state_.disk.Find(so_far);
    if (!found.ok()) return found.error;
    const Entry& entry = *found.value;
    const std::string own = OwnShortName(entry.name);
    text += '\\' + (!short_names ? entry.name : own.empty() ? entry.short_name : own);
  }
  if (parsed.value.parts.empty() || parsed.value.closing_backslash) text += '\\';
  return text;
}

Result<std::uint32_t> MachineFiles::GetShortPathNameA(std::string_view path, TextBuffer& buffer) {
  CallText call("GetShortPathNameA");
  call.Text(path).Bytes(buffer.size()).Number(buffer.size());
  Result<std::uint32_t> outcome = state_.gate.Enter("GetShortPathNameA");
  if (outcome.ok()) {
    auto text = PathInNames(path, true);
    if (text.ok())
      outcome = buffer.Fill(text.value);
    else
      outcome = text.error;
  }
  state_.gate.Record(call, std::to_string(outcome.value));
  return outcome;
}

Result<std::uint32_t> MachineFiles::GetLongPathNameA(std::string_view path, TextBuffer& buffer) {
  CallText call("GetLongPathNameA");
  call.Text(path).Bytes(buffer.size()).Number(buffer.size());
  Result<std::uint32_t> outcome = state_.gate.Enter("GetLongPathNameA");
  if (outcome.ok()) {
    auto text = PathInNames(path, false);
    if (text.ok())
      outcome = buffer.Fill(text.value);
    else
      outcome = text.error;
  }
  state_.gate.Record(call, std::to_string(outcome.value));
  return outcome;
}

Result<std::string> MachineFiles::GetTempPathA() {
  CallText call("GetTempPathA");
  call.Number(260).Bytes(260);
  Result<std::string> outcome = state_.gate.Enter("GetTempPathA");
  if (outcome.ok()) outcome = state_.config.temp_folder + "\\";
  state_.gate.Record(call, std::to_string(outcome.value.size()));
  return outcome;
}

Result<std::string> MachineFiles::GetTempFileNameA(std::string_view folder, std::string_view prefix) {
  CallText call("GetTempFileNameA");
  call.Text(folder).Text(prefix).Number(0).Bytes(260);
  Result<std::string> outcome = state_.gate.Enter("GetTempFileNameA");
  if (outcome.ok()) {
    outcome = Error::FileExists;
    for (unsigned number = 1; number <= 0xFFFF && outcome.error == Error::FileExists; ++number) {
      constexpr std::string_view kDigits = "0123456789ABCDEF";
      std::string digits;
      for (unsigned rest = number; rest != 0; rest >>= 4) digits.insert(digits.begin(), kDigits[rest & 15]);
      std::string path(folder);
      if (path.empty() || path.back() != '\\') path += '\\';
      path += std::string(prefix.substr(0, 3)) + digits + ".tmp";
      auto made = OpenEntry(path, 0, kShareNone, kCreateNew, kAttributeNormal);
      if (!made.ok()) {
        outcome = made.error;
        continue;
      }
      std::erase(open_[Plain(made.value)]->entry->uses, &open_[Plain(made.value)]->use);
      open_.erase(Plain(made.value));
      state_.open_handles.erase(Plain(made.value));
      outcome = path;
    }
  }
  state_.gate.Record(call, BoolText(outcome.ok()));
  return outcome;
}

Result<std::string> MachineFiles::GetCurrentDirectoryA() {
  CallText call("GetCurrentDirectoryA");
  call.Number(260).Bytes(260);
  Result<std::string> outcome = state_.gate.Enter("GetCurrentDirectoryA");
  if (outcome.ok()) outcome = PathText(state_.current);
  state_.gate.Record(call, std::to_string(outcome.value.size()));
  return outcome;
}

Error MachineFiles::SetCurrentDirectoryA(std::string_view path) {
  CallText call("SetCurrentDirectoryA");
  call.Text(path);
  Error error = state_.gate.Enter("SetCurrentDirectoryA");
  if (Ok(error)) {
    auto found = state_.Find(path, true);
    if (!found.ok())
      error = found.error;
    else if (!found.value->IsFolder())
      error = Error::DirectoryName;
    else {
      auto parsed = state_.Parse(path);
      parsed.value.closing_backslash = false;
      state_.current = parsed.value;
    }
  }
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

bool MachineFiles::DriveIsThere(std::string_view root) const {
  return state_.Parse(root).ok();
}

Result<std::uint32_t> MachineFiles::GetLogicalDriveStringsA(Buffer buffer) {
  CallText call("GetLogicalDriveStringsA");
  call.Number(buffer.size()).Bytes(buffer.size());
  Result<std::uint32_t> outcome = state_.gate.Enter("GetLogicalDriveStringsA");
  if (outcome.ok()) {
    std::string roots;
    for (const auto& [letter, type] : state_.config.drive_types) {
      if (type != "gone") roots += std::string{letter, ':', '\\', '\0'};
    }
    if (buffer.size() <= roots.size()) {
      outcome = static_cast<std::uint32_t>(roots.size() + 1);
    } else {
      std::copy(roots.begin(), roots.end(), buffer.begin());
      buffer[roots.size()] = '\0';
      outcome = static_cast<std::uint32_t>(roots.size());
    }
  }
  state_.gate.Record(call, std::to_string(outcome.value));
  return outcome;
}

DriveType MachineFiles::GetDriveTypeA(std::string_view root) {
  CallText call("GetDriveTypeA");
  call.Text(root);
  DriveType type = DriveType::NoRoot;
  if (!Ok(state_.gate.Enter("GetDriveTypeA"))) {
    type = DriveType::Unknown;
  } else if (auto parsed = state_.Parse(root); parsed.ok()) {
    const std::string& word = state_.config.drive_types.at(parsed.value.drive);
    const auto* row = std::find_if(std::begin(kDriveTypes), std::end(kDriveTypes),
                                   [&](const DriveTypeRow& candidate) { return candidate.word == word; });
    if (row != std::end(kDriveTypes)) type = row->type;
  }
  state_.gate.Record(call, std::to_string(static_cast<std::uint32_t>(type)));
  return type;
}

Result<VolumeInfo> MachineFiles::GetVolumeInformationA(std::string_view root) {
  CallText call("GetVolumeInformationA");
  call.Text(root).Bytes(255).Number(255).Number(0).Number(0).Number(0).Bytes(255).Number(255);
  Result<VolumeInfo> outcome = state_.gate.Enter("GetVolumeInformationA");
  if (outcome.ok()) {
    if (DriveIsThere(root)) {
      const char letter = state_.Parse(root).value.drive;
      auto label = state_.config.volume_labels.find(letter);
      outcome = VolumeInfo{label == state_.config.volume_labels.end() ? "" : label->second, "NTFS",
                           0x51420000u + static_cast<unsigned char>(letter)};
    } else {
      outcome = Error::PathNotFound;
    }
  }
  state_.gate.Record(call, BoolText(outcome.ok()));
  return outcome;
}

Error MachineFiles::SetVolumeLabelA(std::string_view root, std::string_view label) {
  CallText call("SetVolumeLabelA");
  call.Text(root).Text(label);
  Error error = state_.gate.Enter("SetVolumeLabelA");
  if (Ok(error)) {
    auto parsed = state_.Parse(root);
    error = parsed.error;
    if (parsed.ok()) state_.config.volume_labels[parsed.value.drive] = label;
  }
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Result<DiskSpace> MachineFiles::GetDiskFreeSpaceExA(std::string_view root) {
  CallText call("GetDiskFreeSpaceExA");
  call.Text(root).Structure().Structure().Structure();
  Result<DiskSpace> outcome = state_.gate.Enter("GetDiskFreeSpaceExA");
  if (outcome.ok()) {
    constexpr std::uint64_t kTotal = std::uint64_t{64} << 30, kFree = std::uint64_t{48} << 30;
    if (DriveIsThere(root))
      outcome = DiskSpace{kFree, kTotal, kFree};
    else
      outcome = Error::PathNotFound;
  }
  state_.gate.Record(call, BoolText(outcome.ok()));
  return outcome;
}

}  // namespace qb::machine
