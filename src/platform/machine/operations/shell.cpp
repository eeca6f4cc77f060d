// The shell of a machine.
#include "platform/machine/operation.h"
#include "platform/machine/operations/operations.h"
#include "platform/machine/world/recycle_bin.h"
#include "runtime/text.h"

namespace qb::machine {
namespace {

constexpr std::uint32_t kFailed = 0x80004005;           // E_FAIL
constexpr std::uint32_t kInvalidArgument = 0x80070057;  // E_INVALIDARG
constexpr std::uint32_t kUnexpected = 0x8000FFFF;       // E_UNEXPECTED, for a bin that is empty already
constexpr std::uint32_t kStarted = 42;
constexpr std::uint32_t kFileNotFound = 2, kAccessDenied = 5, kNoAssociation = 31;
constexpr std::uint32_t kDelete = 3;                                // FO_DELETE
constexpr std::uint32_t kAllowUndo = 64;                            // FOF_ALLOWUNDO
constexpr std::uint32_t kFileInfoRecord = 352, kTypeName = 0x0400;  // SHFILEINFOA, SHGFI_TYPENAME

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

class MachineShell final : public Shell {
 public:
  explicit MachineShell(MachineState& state) : state_(state) {}

  std::uint32_t SHGetFolderPathA(std::uint32_t folder, TextBuffer& path) override {
    return gate_.Call<"SHGetFolderPathA">(kNull, folder, kNull, 0, Bytes(path)).ReturnsNumberOr(kFailed, [&] {
      const auto found = state_.config.special_folders.find(folder);
      if (found == state_.config.special_folders.end()) return kInvalidArgument;
      if (found->second.result != 0) return found->second.result;
      return path.Takes(found->second.path) ? 0 : kFailed;
    });
  }

  Result<ItemIdList> SHGetSpecialFolderLocation(WindowHandle owner, std::uint32_t folder) override {
    ItemIdList item = ItemIdList::None;
    return gate_.Call<"SHGetSpecialFolderLocation">(owner, folder, item)
        .ReturnsAs(
            [&]() -> Result<ItemIdList> {
              const auto found = state_.config.special_folders.find(folder);
              if (found == state_.config.special_folders.end() || found->second.result != 0) return Error::FileNotFound;
              return item = NewItem(found->second.path);
            },
            [](const auto& outcome) { return outcome.ok() ? 0 : kInvalidArgument; });
  }

  ItemIdList SHBrowseForFolderA(WindowHandle /*owner*/, std::string_view /*title*/, std::uint32_t /*flags*/) override {
    return gate_.Call<"SHBrowseForFolderA">(kStructure).ReturnsValue([&] {
      const std::string answer = state_.TakeAnswer().value_or("cancel");
      return answer == "cancel" ? ItemIdList::None : NewItem(answer);
    });
  }

  bool SHGetPathFromIDListA(ItemIdList item, TextBuffer& path) override {
    return gate_.Call<"SHGetPathFromIDListA">(item, Bytes(path)).ReturnsBool([&] {
      const auto place = items_.find(Plain(item));
      return place != items_.end() && path.Takes(place->second);
    });
  }

  void CoTaskMemFree(ItemIdList item) override {
    gate_.Call<"CoTaskMemFree">(item).ReturnsNothing([&] {
      items_.erase(Plain(item));
      state_.open_handles.erase(Plain(item));
    });
  }

  std::uint32_t ShellExecuteA(WindowHandle owner, std::optional<std::string_view> verb, std::string_view file,
                              std::optional<std::string_view> parameters, std::optional<std::string_view> folder,
                              std::uint32_t show) override {
    return gate_.Call<"ShellExecuteA">(owner, verb, file, parameters, folder, show).ReturnsNumberOr(kAccessDenied, [&] {
      const bool page_in_browser = parameters && IsPage(*parameters);
      const std::uint32_t result = Execute(file, page_in_browser);
      if (result == kStarted) {
        std::string line(page_in_browser ? *parameters : file);
        if (!page_in_browser && parameters && !parameters->empty()) line += " " + std::string(*parameters);
        state_.opened.push_back(std::move(line));
      }
      return result;
    });
  }

  std::uint32_t FindExecutableA(std::string_view file, std::optional<std::string_view> folder,
                                TextBuffer& program) override {
    return gate_.Call<"FindExecutableA">(file, folder, Bytes(program)).ReturnsNumberOr(kAccessDenied, [&] {
      if (!state_.Find(file, true).ok()) return kFileNotFound;
      const std::string opener = Opener(file);
      if (opener.empty()) return kNoAssociation;
      return program.Takes(opener) ? kStarted : kAccessDenied;
    });
  }

  std::string SHGetFileInfoA(std::string_view path) override {
    return gate_.Call<"SHGetFileInfoA">(path, 0, kStructure, kFileInfoRecord, kTypeName).ReturnsBool([&] {
      const auto found = state_.Find(path);
      return std::string(found.ok() && found.value->IsFolder() ? "File folder" : "");
    });
  }

  std::uint32_t SHFileOperationA(const FileOperation& operation) override {
    return gate_.Call<"SHFileOperationA">(kStructure).ReturnsNumberOr(kAccessDenied, [&] {
      const auto found = state_.Find(operation.from);
      if (!found.ok()) return kFileNotFound;
      if (operation.operation != kDelete) return kAccessDenied;
      const bool to_bin = (operation.flags & kAllowUndo) != 0;
      return static_cast<std::uint32_t>(to_bin ? DiscardEntry(state_, *found.value)
                                               : state_.disk.RemoveTree(*found.value));
    });
  }

  void SHAddToRecentDocs(std::uint32_t flags, std::optional<std::string_view> path) override {
    gate_.Call<"SHAddToRecentDocs">(flags, path).ReturnsNothing([&] {
      if (!path) ClearRecent();
    });
  }

  std::uint32_t SHEmptyRecycleBinA(WindowHandle owner, std::optional<std::string_view> root,
                                   std::uint32_t flags) override {
    return gate_.Call<"SHEmptyRecycleBinA">(owner, root, flags).ReturnsNumberOr(kFailed, [&] {
      const bool empty = BinContents(state_).items == 0;
      EmptyBin(state_);
      return empty ? kUnexpected : 0;
    });
  }

  Result<RecycleBinInfo> SHQueryRecycleBinA(std::optional<std::string_view> root) override {
    return gate_.Call<"SHQueryRecycleBinA">(root, kStructure)
        .ReturnsAs([&] { return Result(BinContents(state_)); },
                   [](const auto& outcome) { return outcome.ok() ? 0 : kFailed; });
  }

 private:
  ItemIdList NewItem(const std::string& path) {
    const std::uint64_t handle = state_.NewHandle();
    items_[handle] = path;
    return static_cast<ItemIdList>(handle);
  }

  // The program that opens a file, empty if none does. A program is opened by itself, unless that was changed.
  std::string Opener(std::string_view file) const {
    const std::string extension = ExtensionOf(file);
    const auto associated = state_.config.associations.find(extension);
    if (associated != state_.config.associations.end()) return associated->second;
    return IsProgram(extension) ? std::string(file) : std::string();
  }

  std::uint32_t Execute(std::string_view file, bool page_in_browser) const {
    if (IsPage(file)) return Opener(".htm").empty() ? kNoAssociation : kStarted;
    if (IsProgram(ExtensionOf(file)) && page_in_browser) return kStarted;
    if (!state_.Find(file, true).ok()) return kFileNotFound;
    return Opener(file).empty() ? kNoAssociation : kStarted;
  }

  void ClearRecent() {
    // Windows keeps the list as shortcuts in the Recent folder.
    RegKey& user = state_.registry.Root("HKEY_CURRENT_USER");
    RegKey* folders =
        state_.registry.Find(user, "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders");
    const RegKey::Value* recent = folders == nullptr ? nullptr : folders->Find("Recent");
    auto folder = recent == nullptr ? Result<Entry*>(Error::FileNotFound) : state_.Find(TextOf(recent->data), true);
    if (!folder.ok() || !folder.value->IsFolder()) return;
    std::vector<Entry*> shortcuts;
    for (auto& [folded, child] : folder.value->children) {
      if (child->kind == Entry::Kind::File && ExtensionOf(folded) == ".lnk") shortcuts.push_back(child.get());
    }
    for (Entry* shortcut : shortcuts) StepOver(state_.disk.Remove(*shortcut));
  }

  MachineState& state_;
  Gate& gate_ = state_.gate;
  std::map<std::uint64_t, std::string> items_;
};

}  // namespace

std::unique_ptr<Shell> MakeShell(MachineState& state) {
  return std::make_unique<MachineShell>(state);
}

}  // namespace qb::machine
