#include "platform/machine/machine_shell.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>

#include "runtime/text.h"

namespace qb::machine {

namespace {

constexpr std::uint32_t kFailed = 0x80004005;           // E_FAIL
constexpr std::uint32_t kInvalidArgument = 0x80070057;  // E_INVALIDARG
constexpr std::uint32_t kUnexpected = 0x8000FFFF;       // E_UNEXPECTED, for a bin that is empty already
constexpr std::uint32_t kStarted = 42;
constexpr std::uint32_t kFileNotFound = 2, kAccessDenied = 5, kNoAssociation = 31;
constexpr std::uint32_t kDelete = 3;      // FO_DELETE
constexpr std::uint32_t kAllowUndo = 64;  // FOF_ALLOWUNDO

CallText& AddOptional(CallText& call, std::optional<std::string_view> text) {
  return text ? call.Text(*text) : call.Null();
}

std::string ExtensionOf(std::string_view path) {
  const std::size_t name = path.find_last_of("\\/");
  const std::size_t dot = path.rfind('.');
  if (dot == std::string_view::npos || (name != std::string_view::npos && dot < name)) return {};
  return LowerCase(path.substr(dot));
}

bool IsPage(std::string_view file) {
  return file.find("://") != std::string_view::npos;
}

bool IsProgram(const std::string& extension) {
  return extension == ".exe" || extension == ".com" || extension == ".bat" || extension == ".cmd";
}

// Calls `visit` with each name in an open folder of the host.
void ForEachIn(int folder, const std::function<void(const std::string&)>& visit) {
  const int copy = openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  DIR* listing = copy < 0 ? nullptr : fdopendir(copy);
  if (listing == nullptr) {
    if (copy >= 0) close(copy);
    return;
  }
  while (const dirent* item = readdir(listing)) {
    const std::string name = item->d_name;
    if (name != "." && name != "..") visit(name);
  }
  closedir(listing);
}

HostFile FolderIn(int folder, const std::string& name) {
  return HostFile(openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// Removes what lies in a folder of the host, links as links.
void EmptyHostFolder(int folder) {
  ForEachIn(folder, [folder](const std::string& name) {
    if (unlinkat(folder, name.c_str(), 0) == 0) return;
    const HostFile below = FolderIn(folder, name);
    if (!below.ok()) return;
    EmptyHostFolder(below.fd());
    unlinkat(folder, name.c_str(), AT_REMOVEDIR);
  });
}

// Of a file, or of all files below a folder.
std::uint64_t BytesOf(int folder, const std::string& name) {
  struct stat info {};
  if (fstatat(folder, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) return 0;
  if (S_ISREG(info.st_mode)) return static_cast<std::uint64_t>(info.st_size);
  std::uint64_t bytes = 0;
  if (const HostFile below = FolderIn(folder, name); below.ok()) {
    ForEachIn(below.fd(), [&](const std::string& inside) { bytes += BytesOf(below.fd(), inside); });
  }
  return bytes;
}

}  // namespace

RecycleBinInfo BinContents(const MachineState& state) {
  RecycleBinInfo info;
  ForEachIn(state.bin.fd(), [&](const std::string& name) {
    ++info.items;
    info.bytes += BytesOf(state.bin.fd(), name);
  });
  return info;
}

void EmptyBin(const MachineState& state) {
  EmptyHostFolder(state.bin.fd());
}

Error DiscardEntry(MachineState& state, Entry& entry) {
  for (std::size_t number = 1;; ++number) {
    const std::string name = "item" + std::to_string(number);
    struct stat info {};
    if (fstatat(state.bin.fd(), name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0) continue;
    return state.disk.MoveOut(entry, state.bin, name);
  }
}

std::uint32_t MachineShell::SHGetFolderPathA(std::uint32_t folder, TextBuffer& path) {
  CallText call("SHGetFolderPathA");
  call.Null().Number(folder).Null().Number(0).Bytes(path.size());
  std::uint32_t result = kFailed;
  if (Ok(state_.gate.Enter("SHGetFolderPathA"))) {
    auto found = state_.config.special_folders.find(folder);
    result = found == state_.config.special_folders.end() ? kInvalidArgument : found->second.result;
    if (result == 0 && !path.Takes(found->second.path)) result = kFailed;
  }
  state_.gate.Record(call, std::to_string(result));
  return result;
}

ItemIdList MachineShell::NewItem(const std::string& path) {
  const std::uint64_t handle = state_.NewHandle();
  items_[handle] = path;
  return static_cast<ItemIdList>(handle);
}

Result<ItemIdList> MachineShell::SHGetSpecialFolderLocation(WindowHandle owner, std::uint32_t folder) {
  CallText call("SHGetSpecialFolderLocation");
  call.Handle(Plain(owner)).Number(folder);
  Result<ItemIdList> outcome = state_.gate.Enter("SHGetSpecialFolderLocation");
  if (outcome.ok()) {
    auto found = state_.config.special_folders.find(folder);
    if (found == state_.config.special_folders.end() || found->second.result != 0)
      outcome = Error::FileNotFound;
    else
      outcome = NewItem(found->second.path);
  }
  call.Handle(outcome.ok() ? Plain(outcome.value) : 0);
  state_.gate.Record(call, std::to_string(outcome.ok() ? 0 : kInvalidArgument));
  return outcome;
}

ItemIdList MachineShell::SHBrowseForFolderA(WindowHandle /*owner*/, std::string_view /*title*/,
                                            std::uint32_t /*flags*/) {
  ItemIdList item = ItemIdList::None;
  if (Ok(state_.gate.Enter("SHBrowseForFolderA"))) {
    const std::string answer = state_.TakeAnswer().value_or("cancel");
    if (answer != "cancel") item = NewItem(answer);
  }
  state_.gate.Record(CallText("SHBrowseForFolderA").Structure(), HandleText(Plain(item)));
  return item;
}

bool MachineShell::SHGetPathFromIDListA(ItemIdList item, TextBuffer& path) {
  bool found = false;
  if (Ok(state_.gate.Enter("SHGetPathFromIDListA"))) {
    auto place = items_.find(Plain(item));
    found = place != items_.end() && path.Takes(place->second);
  }
  CallText call("SHGetPathFromIDListA");
  call.Handle(Plain(item)).Bytes(path.size());
  state_.gate.Record(call, BoolText(found));
  return found;
}

void MachineShell::CoTaskMemFree(ItemIdList item) {
  if (Ok(state_.gate.Enter("CoTaskMemFree"))) {
    items_.erase(Plain(item));
    state_.open_handles.erase(Plain(item));
  }
  state_.gate.Record(CallText("CoTaskMemFree").Handle(Plain(item)), "");
}

std::uint32_t MachineShell::ShellExecuteA(WindowHandle owner, std::optional<std::string_view> verb,
                                          std::string_view file, std::optional<std::string_view> parameters,
                                          std::optional<std::string_view> folder, std::uint32_t show) {
  CallText call("ShellExecuteA");
  call.Handle(Plain(owner));
  AddOptional(call, verb).Text(file);
  AddOptional(call, parameters);
  AddOptional(call, folder).Number(show);
  std::uint32_t result = kAccessDenied;
  if (Ok(state_.gate.Enter("ShellExecuteA"))) {
    auto associated = state_.config.associations.find(ExtensionOf(file));
    const bool opens = IsProgram(ExtensionOf(file)) || associated != state_.config.associations.end();
    if (IsPage(file))
      result = state_.config.associations.count(".htm") != 0 ? kStarted : kNoAssociation;
    else if (IsProgram(ExtensionOf(file)) && parameters && IsPage(*parameters))
      result = kStarted;  // the browser
    else if (!state_.Find(file, true).ok())
      result = kFileNotFound;
    else
      result = opens ? kStarted : kNoAssociation;
    if (result == kStarted) {
      const bool page_in_browser = parameters && IsPage(*parameters);
      std::string line(page_in_browser ? *parameters : file);
      if (!page_in_browser && parameters && !parameters->empty()) line += " " + std::string(*parameters);
      state_.opened.push_back(std::move(line));
    }
  }
  state_.gate.Record(call, std::to_string(result));
  return result;
}

std::uint32_t MachineShell::FindExecutableA(std::string_view file, std::optional<std::string_view> folder,
                                            TextBuffer& program) {
  CallText call("FindExecutableA");
  call.Text(file);
  AddOptional(call, folder).Bytes(program.size());
  std::uint32_t result = kAccessDenied;
  if (Ok(state_.gate.Enter("FindExecutableA"))) {
    const std::string extension = ExtensionOf(file);
    auto associated = state_.config.associations.find(extension);
    result = kNoAssociation;
    if (!state_.Find(file, true).ok()) {
      result = kFileNotFound;
    } else if (IsProgram(extension)) {
      result = program.Takes(file) ? kStarted : kAccessDenied;
    } else if (associated != state_.config.associations.end()) {
      result = program.Takes(associated->second) ? kStarted : kAccessDenied;
    }
  }
  state_.gate.Record(call, std::to_string(result));
  return result;
}

std::string MachineShell::SHGetFileInfoA(std::string_view path) {
  std::string type_name;
  if (Ok(state_.gate.Enter("SHGetFileInfoA"))) {
    auto found = state_.Find(path);
    if (found.ok() && found.value->IsFolder()) type_name = "File folder";
  }
  CallText call("SHGetFileInfoA");
  call.Text(path).Number(0).Structure().Number(352).Number(1024);
  state_.gate.Record(call, BoolText(!type_name.empty()));
  return type_name;
}

std::uint32_t MachineShell::SHFileOperationA(const FileOperation& operation) {
  std::uint32_t result = kAccessDenied;
  if (Ok(state_.gate.Enter("SHFileOperationA"))) {
    auto found = state_.Find(operation.from);
    if (!found.ok()) {
      result = kFileNotFound;
    } else if (operation.operation == kDelete) {
      const Error error = (operation.flags & kAllowUndo) != 0 ? DiscardEntry(state_, *found.value)
                                                              : state_.disk.RemoveTree(*found.value);
      result = static_cast<std::uint32_t>(error);
    }
  }
  state_.gate.Record(CallText("SHFileOperationA").Structure(), std::to_string(result));
  return result;
}

void MachineShell::SHAddToRecentDocs(std::uint32_t flags, std::optional<std::string_view> path) {
  CallText call("SHAddToRecentDocs");
  AddOptional(call.Number(flags), path);
  if (Ok(state_.gate.Enter("SHAddToRecentDocs")) && !path) {
    // Windows keeps the list as shortcuts in the Recent folder.
    RegKey& user = state_.registry.Root("HKEY_CURRENT_USER");
    RegKey* folders =
        state_.registry.Find(user, "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders");
    const RegKey::Value* recent = folders == nullptr ? nullptr : folders->Find("Recent");
    auto folder = recent == nullptr ? Result<Entry*>(Error::FileNotFound) : state_.Find(TextOf(recent->data), true);
    if (folder.ok() && folder.value->IsFolder()) {
      std::vector<Entry*> shortcuts;
      for (auto& [folded, child] : folder.value->children) {
        if (child->kind == Entry::Kind::File && ExtensionOf(folded) == ".lnk") shortcuts.push_back(child.get());
      }
      for (Entry* shortcut : shortcuts) StepOver(state_.disk.Remove(*shortcut));
    }
  }
  state_.gate.Record(call, "");
}

std::uint32_t MachineShell::SHEmptyRecycleBinA(WindowHandle owner, std::optional<std::string_view> root,
                                               std::uint32_t flags) {
  CallText call("SHEmptyRecycleBinA");
  AddOptional(call.Handle(Plain(owner)), root).Number(flags);
  std::uint32_t result = kFailed;
  if (Ok(state_.gate.Enter("SHEmptyRecycleBinA"))) {
    result = BinContents(state_).items == 0 ? kUnexpected : 0;
    EmptyBin(state_);
  }
  state_.gate.Record(call, std::to_string(result));
  return result;
}

Result<RecycleBinInfo> MachineShell::SHQueryRecycleBinA(std::optional<std::string_view> root) {
  CallText call("SHQueryRecycleBinA");
  AddOptional(call, root).Structure();
  Result<RecycleBinInfo> outcome = state_.gate.Enter("SHQueryRecycleBinA");
  if (outcome.ok()) outcome = BinContents(state_);
  state_.gate.Record(call, std::to_string(outcome.ok() ? 0 : kFailed));
  return outcome;
}

}  // namespace qb::machine
