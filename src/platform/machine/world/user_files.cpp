#include "platform/machine/world/user_files.h"

#include <unistd.h>

#include <algorithm>
#include <functional>

#include "platform/machine/world/machine_config.h"
#include "platform/machine/world/recycle_bin.h"
#include "runtime/text.h"

namespace qb::machine {

Result<Entry*> UserFiles::FolderWithParents(std::string_view path) {
  auto parsed = state_.Parse(path);
  if (!parsed.ok()) return parsed.error;
  ParsedPath so_far;
  so_far.drive = parsed.value.drive;
  Entry* at = state_.disk.Root(so_far.drive);
  if (at == nullptr) return Error::PathNotFound;
  for (const std::string& part : parsed.value.parts) {
    so_far.parts.push_back(part);
    auto found = state_.disk.Find(so_far, true);
    if (!found.ok() && found.error == Error::FileNotFound) found = state_.disk.MakeFolder(*at, part);
    if (!found.ok()) return found;
    if (!found.value->IsFolder()) return Error::AlreadyExists;
    at = found.value;
  }
  return at;
}

Result<HostFile> UserFiles::EmptyFile(std::string_view path) {
  auto parsed = state_.Parse(path);
  if (!parsed.ok() || parsed.value.parts.empty() || parsed.value.closing_backslash) return Error::InvalidName;
  const std::string name = parsed.value.parts.back();
  ParsedPath above = parsed.value;
  above.parts.pop_back();
  auto folder = FolderWithParents(PathText(above));
  if (!folder.ok()) return folder.error;
  Entry* entry = state_.disk.Child(*folder.value, name);
  if (entry == nullptr) {
    auto made = state_.disk.MakeFile(*folder.value, name);
    if (!made.ok()) return made.error;
    entry = made.value;
  }
  if (entry->kind != Entry::Kind::File) return Error::AccessDenied;
  if (const Error error = state_.disk.Truncate(*entry); !Ok(error)) return error;
  entry->attributes = kAttributeArchive;
  entry->written = state_.Now();
  return state_.disk.Open(*entry, true);
}

bool UserFiles::MakeFile(std::string_view path, std::string_view content) {
  auto host = EmptyFile(path);
  return host.ok() &&
         pwrite(host.value.fd(), content.data(), content.size(), 0) == static_cast<ssize_t>(content.size());
}

bool UserFiles::MakeFileOfSize(std::string_view path, std::uint64_t size) {
  auto host = EmptyFile(path);
  if (!host.ok()) return false;
  const std::string block(static_cast<std::size_t>(std::min<std::uint64_t>(size, 1 << 20)), 'A');
  for (std::uint64_t place = 0; place < size;) {
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(size - place, block.size()));
    if (pwrite(host.value.fd(), block.data(), count, static_cast<off_t>(place)) != static_cast<ssize_t>(count))
      return false;
    place += count;
  }
  return true;
}

bool UserFiles::ChangeAttributes(std::string_view path, const std::vector<std::string>& changes) {
  auto found = state_.Find(path);
  if (!found.ok()) return false;
  std::uint32_t attributes = found.value->attributes;
  for (const std::string& change : changes) {
    if (change.size() < 2 || (change[0] != '+' && change[0] != '-')) return false;
    for (char letter : std::string_view(change).substr(1)) {
      const std::uint32_t bit = AttributeBit(letter);
      if (bit == 0) return false;
      attributes = change[0] == '+' ? attributes | bit : attributes & ~bit;
    }
  }
  found.value->attributes = attributes;
  return true;
}

bool UserFiles::Delete(std::string_view path) {
  auto found = state_.Find(path);
  return found.ok() && found.value->parent != nullptr && Ok(state_.disk.RemoveTree(*found.value));
}

bool UserFiles::Discard(std::string_view path) {
  auto found = state_.Find(path);
  return found.ok() && Ok(DiscardEntry(state_, *found.value));
}

bool UserFiles::SetLocked(std::string_view path, bool locked) {
  auto found = state_.Find(path, true);
  if (!found.ok() || found.value->kind != Entry::Kind::File) return false;
  found.value->locked = locked;
  return true;
}

bool UserFiles::MakeLink(std::string_view path, std::string_view target) {
  auto parsed = state_.Parse(path);
  if (!parsed.ok() || parsed.value.parts.empty() || !state_.Parse(target).ok()) return false;
  const std::string name = parsed.value.parts.back();
  parsed.value.parts.pop_back();
  auto folder = FolderWithParents(PathText(parsed.value));
  if (!folder.ok() || state_.disk.Child(*folder.value, name) != nullptr) return false;
  return state_.disk.MakeLink(*folder.value, name, std::string(target)).ok();
}

std::string UserFiles::Exists(std::string_view path) const {
  auto found = state_.Find(path);
  if (!found.ok()) return "no";
  switch (found.value->kind) {
    case Entry::Kind::File:
      return "file";
    case Entry::Kind::Folder:
      return "folder";
    default:
      return "link";
  }
}

std::string UserFiles::Attributes(std::string_view path) const {
  auto found = state_.Find(path);
  return found.ok() ? AttributeLetters(found.value->WindowsAttributes()) : std::string();
}

std::optional<std::vector<std::string>> UserFiles::ListBelow(std::string_view folder) const {
  auto found = state_.Find(folder, true);
  if (!found.ok() || !found.value->IsFolder()) return std::nullopt;
  std::vector<std::string> paths;
  std::function<void(const Entry&, const std::string&)> walk = [&](const Entry& at, const std::string& prefix) {
    for (const auto& [folded, child] : at.children) {
      paths.push_back(prefix + child->name + (child->IsFolder() ? "\\" : ""));
      if (child->kind == Entry::Kind::Folder) walk(*child, prefix + child->name + "\\");
    }
  };
  walk(*found.value, "");
  std::sort(paths.begin(), paths.end(), [](const std::string& a, const std::string& b) {
    return std::pair(LowerCase(FoldName(a)), a) < std::pair(LowerCase(FoldName(b)), b);
  });
  return paths;
}

std::optional<std::string> UserFiles::Content(std::string_view path) const {
  auto found = state_.Find(path, true);
  if (!found.ok() || found.value->kind != Entry::Kind::File) return std::nullopt;
  auto content = state_.disk.Read(*found.value);
  if (!content.ok()) return std::nullopt;
  return content.value;
}

std::optional<std::uint64_t> UserFiles::Size(std::string_view path) const {
  auto found = state_.Find(path, true);
  if (!found.ok() || found.value->kind != Entry::Kind::File) return std::nullopt;
  return state_.disk.SizeOf(*found.value);
}

}  // namespace qb::machine
