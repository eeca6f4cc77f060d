#include "platform/machine/world/disk.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace qb::machine {

namespace {

constexpr int kDeepestJunctions = 32;
constexpr std::uint64_t kTicksASecond = 10000000;
constexpr std::uint64_t kSecondsFrom1601To1970 = 11644473600;

Error FromErrno(int error) {
  switch (error) {
    case ENOENT:
      return Error::FileNotFound;
    case ENOSPC:
      return Error::DiskFull;
    case EEXIST:
      return Error::AlreadyExists;
    case ENOTEMPTY:
      return Error::DirNotEmpty;
    case EROFS:
      return Error::WriteProtect;
    case ENAMETOOLONG:
      return Error::FilenameTooLong;
    default:
      return Error::AccessDenied;
  }
}

// Puts a copy of an open file in the place of its name in a folder.
Error PartFromOtherNames(const HostFile& folder, const std::string& name, const HostFile& file) {
  constexpr const char* kCopy = "*copy";  // no name that a file of the machine can have
  unlinkat(folder.fd(), kCopy, 0);
  const HostFile copy(openat(folder.fd(), kCopy, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644));
  if (!copy.ok()) return FromErrno(errno);
  if (CopyContent(file, copy) && renameat(folder.fd(), kCopy, folder.fd(), name.c_str()) == 0) return Error::Success;
  unlinkat(folder.fd(), kCopy, 0);
  return Error::DiskFull;
}

FileTime HostTime(const timespec& time) {
  return {(static_cast<std::uint64_t>(time.tv_sec) + kSecondsFrom1601To1970) * kTicksASecond +
          static_cast<std::uint64_t>(time.tv_nsec) / 100};
}

}  // namespace

std::uint32_t Entry::WindowsAttributes() const {
  std::uint32_t all = attributes;
  if (IsFolder()) all |= kAttributeDirectory;
  if (IsLink() || kind == Kind::HostLink) all |= kAttributeReparsePoint;
  return all == 0 ? kAttributeNormal : all;
}

bool Entry::InUse() const {
  return locked || !uses.empty() ||
         std::any_of(children.begin(), children.end(), [](const auto& child) { return child.second->InUse(); });
}

bool Entry::OpenBelow() const {
  return std::any_of(children.begin(), children.end(),
                     [](const auto& child) { return child.second->IsOpen() || child.second->OpenBelow(); });
}

bool Entry::Allows(const Use& wanted) const {
  auto shared = [](const Use& use, std::uint32_t share) {
    return (!use.reads || (share & kShareRead) != 0) && (!use.writes || (share & kShareWrite) != 0) &&
           (!use.deletes || (share & kShareDelete) != 0);
  };
  auto counts = [](const Use& use) { return use.reads || use.writes || use.deletes; };
  if (!counts(wanted)) return true;
  return !locked && std::all_of(uses.begin(), uses.end(), [&](const Use* there) {
    return !counts(*there) || (shared(wanted, there->share) && shared(*there, wanted.share));
  });
}

Result<bool> Disk::Load(const HostFile& machine_folder) {
  if (mkdirat(machine_folder.fd(), "drives", 0755) != 0 && errno != EEXIST) return FromErrno(errno);
  drives_ = FolderIn(machine_folder.fd(), "drives");
  if (!drives_.ok()) return FromErrno(errno);
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    const char name[] = {letter, '\0'};
    const HostFile folder = FolderIn(drives_.fd(), name);
    if (!folder.ok()) continue;
    auto root = std::make_unique<Entry>();
    root->name = name;
    root->kind = Entry::Kind::Folder;
    LoadFolder(*root, folder);
    roots_[letter] = std::move(root);
  }
  return true;
}

void Disk::LoadFolder(Entry& folder, const HostFile& host) {
  ForEachName(host.fd(), [&](const std::string& name) {
    struct stat info {};
    if (fstatat(host.fd(), name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) return;
    auto entry = std::make_unique<Entry>();
    entry->name = name;
    entry->created = entry->accessed = entry->written = HostTime(info.st_mtim);
    if (S_ISDIR(info.st_mode)) {
      entry->kind = Entry::Kind::Folder;
      if (HostFile below = FolderIn(host.fd(), name); below.ok()) LoadFolder(*entry, below);
    } else if (S_ISREG(info.st_mode)) {
      entry->attributes = kAttributeArchive;
    } else {
      entry->kind = Entry::Kind::HostLink;
    }
    // Of two host names that Windows cannot tell apart the first stands for both.
    if (folder.children.count(FoldName(name)) == 0) Adopt(folder, std::move(entry));
  });
}

void Disk::FinishLoading() {
  loading_ = false;
  for (auto& [letter, root] : roots_) FinishFolder(*root);
}

void Disk::FinishFolder(Entry& folder) {
  for (auto& [folded, child] : folder.children) {
    if (child->short_name.empty()) GiveShortName(*child);
    FinishFolder(*child);
  }
}

std::vector<char> Disk::DriveLetters() const {
  std::vector<char> letters;
  for (const auto& [letter, root] : roots_) letters.push_back(letter);
  return letters;
}

void Disk::AddDrive(char letter) {
  if (roots_.count(letter) != 0) return;
  const char name[] = {letter, '\0'};
  if (mkdirat(drives_.fd(), name, 0755) != 0 && errno != EEXIST) return;
  auto root = std::make_unique<Entry>();
  root->name = name;
  root->kind = Entry::Kind::Folder;
  roots_[letter] = std::move(root);
}

Entry* Disk::Root(char drive) const {
  auto found = roots_.find(drive);
  return found == roots_.end() ? nullptr : found->second.get();
}

Entry* Disk::Child(const Entry& folder, std::string_view name) const {
  const std::string folded = FoldName(name);
  auto found = folder.children.find(folded);
  if (found != folder.children.end()) return found->second.get();
  auto by_short = folder.by_short_name.find(folded);
  return by_short == folder.by_short_name.end() ? nullptr : by_short->second;
}

Result<Entry*> Disk::Follow(Entry* entry, int depth) const {
  if (!entry->IsLink()) return entry;
  if (depth >= kDeepestJunctions) return Error::PathNotFound;
  auto target = ParsePath(entry->target, ParsedPath(), false);
  if (!target.ok()) return Error::PathNotFound;
  auto led_to = Walk(target.value, target.value.parts.size(), true, depth + 1);
  return led_to.ok() ? led_to : Result<Entry*>(Error::PathNotFound);
}

Result<Entry*> Disk::Walk(const ParsedPath& path, std::size_t parts, bool through_last, int depth) const {
  Entry* at = Root(path.drive);
  if (at == nullptr) return Error::PathNotFound;
  for (std::size_t i = 0; i < parts; ++i) {
    const bool last = i + 1 == parts;
    if (at->kind != Entry::Kind::Folder) return Error::PathNotFound;
    Entry* next = Child(*at, path.parts[i]);
    if (next == nullptr) return last ? Error::FileNotFound : Error::PathNotFound;
    if (next->going && (last || next->IsFolder())) return Error::AccessDenied;
    if (!last || through_last) {
      auto followed = Follow(next, depth);
      if (!followed.ok()) return followed;
      next = followed.value;
    }
    at = next;
  }
  return at;
}

Result<Entry*> Disk::Find(const ParsedPath& path, bool through_last) const {
  // A closing backslash asks for what a junction leads to.
  auto found = Walk(path, path.parts.size(), through_last || path.closing_backslash, 0);
  const bool file = found.ok() && path.closing_backslash && found.value->kind == Entry::Kind::File;
  return file ? Result<Entry*>(Error::InvalidName) : found;
}

Result<Disk::Place> Disk::FindPlace(const ParsedPath& path) const {
  if (path.parts.empty()) return Error::AccessDenied;
  auto folder = Walk(path, path.parts.size() - 1, true, 0);
  if (folder.error == Error::AccessDenied) return folder.error;
  if (!folder.ok() || folder.value->kind != Entry::Kind::Folder) return Error::PathNotFound;
  return Place{folder.value, path.parts.back()};
}

// Below the folder of the drives.
std::string Disk::HostPath(const Entry& entry) {
  std::vector<const Entry*> way;
  for (const Entry* at = &entry; at != nullptr; at = at->parent) way.push_back(at);
  std::string path;
  for (auto at = way.rbegin(); at != way.rend(); ++at) path.append(path.empty() ? "" : "/").append((*at)->name);
  return path;
}

HostFile Disk::OpenFolder(const Entry& folder) const {
  return FolderBelow(drives_.fd(), HostPath(folder));
}

Entry* Disk::Adopt(Entry& folder, std::unique_ptr<Entry> entry) {
  entry->parent = &folder;
  Entry* raw = entry.get();
  folder.children[FoldName(raw->name)] = std::move(entry);
  if (!loading_) GiveShortName(*raw);
  return raw;
}

std::unique_ptr<Entry> Disk::Detach(Entry& entry) {
  Entry& folder = *entry.parent;
  auto by_short = folder.by_short_name.find(entry.short_name);
  if (by_short != folder.by_short_name.end() && by_short->second == &entry) folder.by_short_name.erase(by_short);
  auto node = folder.children.extract(FoldName(entry.name));
  return std::move(node.mapped());
}

void Disk::GiveShortName(Entry& entry) {
  if (!OwnShortName(entry.name).empty()) return;
  const ShortParts parts = ShortPartsOf(entry.name);
  Entry& folder = *entry.parent;
  int& number = folder.short_numbers[parts.stem + parts.extension];
  std::string made;
  do {
    made = parts.stem + '~' + std::to_string(++number) + parts.extension;
  } while (Child(folder, made) != nullptr);
  SetShortName(entry, made);
}

void Disk::SetShortName(Entry& entry, const std::string& short_name) {
  auto old = entry.parent->by_short_name.find(entry.short_name);
  if (old != entry.parent->by_short_name.end() && old->second == &entry) entry.parent->by_short_name.erase(old);
  entry.short_name = FoldName(short_name);
  entry.parent->by_short_name[entry.short_name] = &entry;
}

Result<Entry*> Disk::MakeFile(Entry& folder, const std::string& name) {
  HostFile closed;
  return MakeFile(folder, name, closed);
}

Result<Entry*> Disk::MakeFile(Entry& folder, const std::string& name, HostFile& opened) {
  const HostFile host = OpenFolder(folder);
  if (!host.ok()) return Error::PathNotFound;
  opened = HostFile(openat(host.fd(), name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644));
  if (!opened.ok()) return FromErrno(errno);
  auto entry = std::make_unique<Entry>();
  entry->name = name;
  entry->attributes = kAttributeArchive;
  entry->created = entry->accessed = entry->written = now_;
  return Adopt(folder, std::move(entry));
}

Result<Entry*> Disk::MakeFolder(Entry& folder, const std::string& name) {
  const HostFile host = OpenFolder(folder);
  if (!host.ok()) return Error::PathNotFound;
  if (mkdirat(host.fd(), name.c_str(), 0755) != 0) return FromErrno(errno);
  auto entry = std::make_unique<Entry>();
  entry->name = name;
  entry->kind = Entry::Kind::Folder;
  entry->created = entry->accessed = entry->written = now_;
  return Adopt(folder, std::move(entry));
}

Result<Entry*> Disk::MakeLink(Entry& folder, const std::string& name, const std::string& target) {
  auto path = ParsePath(target, ParsedPath(), false);
  auto led_to = path.ok() ? Find(path.value, true) : Result<Entry*>(path.error);
  const bool to_file = led_to.ok() && led_to.value->kind == Entry::Kind::File;
  auto made = to_file ? MakeFile(folder, name) : MakeFolder(folder, name);
  if (made.ok()) {
    made.value->kind = to_file ? Entry::Kind::FileLink : Entry::Kind::Junction;
    made.value->target = target;
  }
  return made;
}

Error Disk::Remove(Entry& entry) {
  if (entry.parent == nullptr) return Error::AccessDenied;
  if (!entry.Allows({false, false, true, kShareRead | kShareWrite | kShareDelete})) return Error::SharingViolation;
  if (!entry.IsOpen()) return RemoveNow(entry);
  entry.going = true;
  return Error::Success;
}

void Disk::Settle(Entry& entry) {
  if (entry.going && !entry.IsOpen()) StepOver(RemoveNow(entry));
}

Error Disk::RemoveNow(Entry& entry) {
  if (entry.parent == nullptr) return Error::AccessDenied;
  const HostFile host = OpenFolder(*entry.parent);
  if (!host.ok()) return Error::PathNotFound;
  if (unlinkat(host.fd(), entry.name.c_str(), entry.IsFolder() ? AT_REMOVEDIR : 0) != 0) return FromErrno(errno);
  Detach(entry);
  return Error::Success;
}

Error Disk::RemoveTree(Entry& entry) {
  if (entry.InUse()) return Error::SharingViolation;
  while (!entry.children.empty()) {
    if (Error error = RemoveTree(*entry.children.begin()->second); !Ok(error)) return error;
  }
  return RemoveNow(entry);
}

Error Disk::Move(Entry& entry, Entry& folder, const std::string& name) {
  // A folder cannot be renamed while a file below it is open.
  if (entry.OpenBelow()) return Error::AccessDenied;
  for (const Entry* above = &folder; above != nullptr; above = above->parent) {
    if (above == &entry) return Error::AccessDenied;  // into itself
  }
  const HostFile from = OpenFolder(*entry.parent);
  const HostFile to = OpenFolder(folder);
  if (!from.ok() || !to.ok()) return Error::PathNotFound;
  if (renameat(from.fd(), entry.name.c_str(), to.fd(), name.c_str()) != 0) return FromErrno(errno);
  auto moved = Detach(entry);
  moved->name = name;
  moved->short_name.clear();
  Adopt(folder, std::move(moved));
  return Error::Success;
}

Error Disk::MoveOut(Entry& entry, const HostFile& folder, const std::string& name) {
  if (entry.parent == nullptr) return Error::AccessDenied;
  if (entry.InUse()) return Error::SharingViolation;
  const HostFile from = OpenFolder(*entry.parent);
  if (!from.ok()) return Error::PathNotFound;
  if (renameat(from.fd(), entry.name.c_str(), folder.fd(), name.c_str()) != 0) return FromErrno(errno);
  Detach(entry);
  return Error::Success;
}

Result<HostFile> Disk::Open(const Entry& entry, bool write) const {
  if (entry.kind != Entry::Kind::File) return Error::AccessDenied;
  const std::string path = HostPath(entry);
  HostFile file = FileBelow(drives_.fd(), path, write);
  if (!file.ok()) {
    const Error error = FromErrno(errno);
    return OpenFolder(*entry.parent).ok() ? error : Error::PathNotFound;
  }
  struct stat info {};
  if (!write || (fstat(file.fd(), &info) == 0 && info.st_nlink == 1)) return file;
  // The host knows this file by another name too, maybe outside the machine.
  const HostFile folder = OpenFolder(*entry.parent);
  if (!folder.ok()) return Error::PathNotFound;
  if (Error error = PartFromOtherNames(folder, entry.name, file); !Ok(error)) return error;
  HostFile own = FileBelow(drives_.fd(), path, write);
  if (!own.ok()) return FromErrno(errno);
  return own;
}

std::uint64_t Disk::SizeOf(const Entry& entry) const {
  return entry.kind == Entry::Kind::File ? FolderSizes(*this, *entry.parent).Of(entry) : 0;
}

std::uint64_t Disk::FolderSizes::Of(const Entry& child) const {
  if (child.kind != Entry::Kind::File) return 0;
  struct stat info {};
  const bool told = host_.ok() && fstatat(host_.fd(), child.name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0;
  return told && S_ISREG(info.st_mode) ? static_cast<std::uint64_t>(info.st_size) : 0;
}

Result<std::string> Disk::Read(const Entry& entry) const {
  auto file = Open(entry, false);
  if (!file.ok()) return file.error;
  std::string content(SizeOf(entry), '\0');
  std::size_t place = 0;
  while (place < content.size()) {
    // One call gives a little less than 2 GiB at most.
    const ssize_t got =
        pread(file.value.fd(), content.data() + place, content.size() - place, static_cast<off_t>(place));
    if (got < 0) return FromErrno(errno);
    if (got == 0) break;
    place += static_cast<std::size_t>(got);
  }
  content.resize(place);
  return content;
}

Error Disk::Truncate(const Entry& entry) const {
  auto file = Open(entry, true);
  if (!file.ok()) return file.error;
  return ftruncate(file.value.fd(), 0) == 0 ? Error::Success : FromErrno(errno);
}

void Disk::LetGoBelow(Entry& entry) {
  entry.locked = false;
  entry.uses.clear();
  for (auto child = entry.children.begin(); child != entry.children.end();) {
    Entry& next = *(child++)->second;  // it may go now
    LetGoBelow(next);
    Settle(next);
  }
}

void Disk::LetGo() {
  for (auto& [letter, root] : roots_) LetGoBelow(*root);
}

std::string Disk::PathOf(const Entry& entry) const {
  if (entry.parent == nullptr) return entry.name + ":";
  return PathOf(*entry.parent) + '\\' + entry.name;
}

}  // namespace qb::machine
