// Folders: making, copying, deleting, and the special ones.
#include <algorithm>

#include "delete/file_analyzer/file_analyzer.h"
#include "runtime/text.h"

namespace qb {

namespace {

constexpr std::uint32_t kRecycleBin = 10;
constexpr std::uint32_t kTemporaryFolder = 15;
constexpr std::size_t kPathBuffer = 260;  // MAX_PATH
constexpr std::size_t kRootLength = 3;

}  // namespace

Error clsFileAnalyzer::MakeMissingParents(const std::string& path) {
  std::vector<std::string> missing;
  for (std::string below = path;;) {
    std::string parent = GetParentFolder(below);
    if (parent.size() <= kRootLength || parent == below || Exists(parent)) break;
    missing.push_back(parent);
    below = std::move(parent);
  }
  Error error = Error::Success;
  for (auto parent = missing.rbegin(); Ok(error) && parent != missing.rend(); ++parent) {
    error = platform_.files.CreateDirectoryA(AsName(*parent));
  }
  return error;
}

int clsFileAnalyzer::CreateFolder(const std::string& path, bool create_parents) {
  if (create_parents) {
    if (Error error = MakeMissingParents(path); !Ok(error)) return Trap(error, "CreateFolder");
  }
  const Error error = platform_.files.CreateDirectoryA(AsName(path));
  // A folder that is there is a path that cannot be had; the number for an existing file is for files.
  if (error == Error::AlreadyExists) return Trap(RuntimeError::PathFileAccess, "CreateFolder");
  return Trap(error, "CreateFolder");
}

int clsFileAnalyzer::CopyFolder(const std::string& from, const std::string& to, bool move, bool overwrite,
                                bool create) {
  if (!IsFolder(from)) return Trap(RuntimeError::PathNotFound, "CopyFolder");
  if (create) {
    if (Error error = MakeMissingParents(to); !Ok(error)) return Trap(error, "CopyFolder");
  }
  if (move && SameText(GetPathDrive(from), GetPathDrive(to))) {
    return Trap(platform_.files.MoveFileExA(AsName(from), AsName(to), 0), "CopyFolder");
  }
  // Of its own, and no recursion: somebody else decides how deep folders lie inside each other.
  std::vector<Copy> pending;
  int number = CopyOneFolder({from, to}, pending);
  while (number == 0 && !pending.empty()) {
    const Copy next = std::move(pending.back());
    pending.pop_back();
    // The copy is no part of what is copied: below itself it would grow without end.
    if (next.folder && SameText(FixPath(next.from), FixPath(to))) continue;
    number = next.folder ? CopyOneFolder(next, pending) : CopyFile(next.from, next.to, false, overwrite, false);
  }
  if (number == 0 && move) number = DeleteFolder(from);
  return Trap(static_cast<RuntimeError>(number), "CopyFolder");
}

int clsFileAnalyzer::CopyOneFolder(const Copy& folder, std::vector<Copy>& pending) {
  if (!IsFolder(folder.from)) return static_cast<int>(RuntimeError::PathNotFound);
  // Moving a link to another drive would delete it without having copied what it leads to.
  if (IsLink(folder.from)) return static_cast<int>(RuntimeError::PathFileAccess);
  // Listed before the target is made: a copy into the folder itself must not find its own copy.
  const std::vector<FolderEntry> entries = List(folder.from);
  const int number = Exists(folder.to) ? 0 : CreateFolder(folder.to, false);
  // The last one that is added is the next one.
  for (auto entry = entries.rbegin(); number == 0 && entry != entries.rend(); ++entry) {
    if (entry->IsLink()) continue;
    pending.push_back({FixPath(folder.from) + entry->name, FixPath(folder.to) + entry->name, entry->IsFolder()});
  }
  return number;
}

int clsFileAnalyzer::DeleteFolder(const std::string& path) {
  struct Entry {
    std::string path;
    bool emptied = false;  // what lies in it has had its turn
  };
  auto number_of = [this](Error error) { return Trap(error, "DeleteFolder"); };
  std::vector<Entry> pending = {{path}};
  while (!pending.empty()) {
    const Entry entry = pending.back();
    int number = 0;
    if (entry.emptied) {
      pending.pop_back();
      number = number_of(ClearAttributes(AsName(entry.path)));
      if (number == 0) number = number_of(platform_.files.RemoveDirectoryA(AsName(entry.path)));
    } else if (pending.size() > 1 && !IsFolder(entry.path)) {
      pending.pop_back();
      number = DeleteFile(entry.path);
    } else {
      auto attributes = platform_.files.GetFileAttributesA(AsName(entry.path));
      if (!attributes.ok()) return number_of(attributes.error);
      if ((attributes.value & kAttributeDirectory) == 0) return number_of(Error::DirectoryName);
      pending.back().emptied = true;
      // A link lists as empty here, and RemoveDirectoryA on a junction removes only the junction.
      std::vector<std::string> contents;
      GetFolderContents(entry.path, EntryKind::Both, false, "", contents);
      for (auto next = contents.rbegin(); next != contents.rend(); ++next) pending.push_back({*next});
    }
    if (number != 0) return Trap(static_cast<RuntimeError>(number), "DeleteFolder");
  }
  return 0;
}

bool clsFileAnalyzer::PathHasSubfolders(const std::string& path) const {
  const std::vector<FolderEntry> entries = List(path);
  return std::any_of(entries.begin(), entries.end(), [](const FolderEntry& entry) { return entry.IsFolder(); });
}

bool clsFileAnalyzer::IsEmpty(const std::string& path) const {
  const std::vector<FolderEntry> entries = List(path);
  return std::all_of(entries.begin(), entries.end(),
                     [](const FolderEntry& entry) { return entry.name.starts_with('.'); });
}

Currency clsFileAnalyzer::GetFolderSize(const std::string& path) const {
  std::vector<std::string> files;
  GetFolderContents(path, EntryKind::Files, true, "", files);
  Currency size;
  for (const std::string& file : files) size += GetFileSize(file);
  return size;
}

std::string clsFileAnalyzer::LookUpSpecialFolder(std::uint32_t number) const {
  auto item = platform_.shell.SHGetSpecialFolderLocation(WindowHandle::None, number);
  if (!item.ok()) return {};
  TextBuffer path(kPathBuffer);
  const bool placed = platform_.shell.SHGetPathFromIDListA(item.value, path);
  platform_.shell.CoTaskMemFree(item.value);
  return placed ? path.text() : std::string();
}

std::string clsFileAnalyzer::GetSpecialFolder(std::uint32_t number) const {
  if (number == kTemporaryFolder) return platform_.files.GetTempPathA().value_or("");
  std::string folder = LookUpSpecialFolder(number);
  if (number != kRecycleBin || !folder.empty()) return folder;
  // The shell knows the Recycle Bin as no place in the file system.
  folder = GetSystemDrive() + "RECYCLER";
  return Exists(folder) ? folder : std::string();
}

}  // namespace qb
