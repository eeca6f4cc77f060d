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
  const std::string parent = GetParentFolder(path);
  if (parent.size() <= kRootLength || parent == path || Exists(parent)) return Error::Success;
  if (Error error = MakeMissingParents(parent); !Ok(error)) return error;
  return platform_.files.CreateDirectoryA(AsName(parent));
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
  // Moving a link to another drive would delete it without having copied what it leads to.
  if (IsLink(from)) return Trap(RuntimeError::PathFileAccess, "CopyFolder");

  // Listed before the target is made: a copy into the folder itself must not find its own copy.
  const std::vector<FolderEntry> entries = List(from);
  int number = Exists(to) ? 0 : CreateFolder(to, false);
  for (auto entry = entries.begin(); number == 0 && entry != entries.end(); ++entry) {
    if (entry->IsLink()) continue;
    const std::string source = FixPath(from) + entry->name, target = FixPath(to) + entry->name;
    number = entry->IsFolder() ? CopyFolder(source, target, false, overwrite, false)
                               : CopyFile(source, target, false, overwrite, false);
  }
  if (number == 0 && move) number = DeleteFolder(from);
  return Trap(static_cast<RuntimeError>(number), "CopyFolder");
}

int clsFileAnalyzer::DeleteFolder(const std::string& path) {
  auto attributes = platform_.files.GetFileAttributesA(AsName(path));
  if (!attributes.ok()) return Trap(attributes.error, "DeleteFolder");
  if ((attributes.value & kAttributeDirectory) == 0) return Trap(Error::DirectoryName, "DeleteFolder");
  // A link lists as empty here, and RemoveDirectoryA on a junction removes only the junction.
  std::vector<std::string> contents;
  GetFolderContents(path, EntryKind::Both, false, "", contents);
  for (const std::string& entry : contents) {
    const int number = IsFolder(entry) ? DeleteFolder(entry) : DeleteFile(entry);
    if (number != 0) return Trap(static_cast<RuntimeError>(number), "DeleteFolder");
  }
  if (Error error = ClearAttributes(AsName(path)); !Ok(error)) return Trap(error, "DeleteFolder");
  return Trap(platform_.files.RemoveDirectoryA(AsName(path)), "DeleteFolder");
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
