#include "platform/machine/machine.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/machine/operations/operations.h"
#include "platform/machine/world/host_text.h"
#include "platform/machine/world/machine_boot.h"
#include "platform/machine/world/machine_config.h"
#include "platform/machine/world/recycle_bin.h"
#include "platform/machine/world/user_files.h"
#include "platform/machine/world/user_registry.h"
#include "runtime/text.h"

namespace qb::machine {

namespace {

constexpr const char* kConfigFile = "machine.ini";
constexpr const char* kRegistryFile = "registry.reg";
constexpr const char* kCacheFile = "urlcache.ini";
constexpr std::uint64_t kFirstClock = 132038640000000000;  // 2019-06-01 12:00:00

constexpr std::string_view kDriveWords[] = {"fixed", "removable", "remote", "cdrom", "ramdisk", "unknown", "gone"};

class MachineImpl final : public Machine {
 public:
  bool Load(const std::string& host_folder, std::string& problem);

  Platform& platform() override { return operations_.platform(); }
  Gate& gate() override { return state_.gate; }
  bool Save(std::string& problem) override;

  void SetWindowsVersion(std::uint32_t major, std::uint32_t minor, std::uint32_t platform_id) override {
    state_.config.major = major;
    state_.config.minor = minor;
    state_.config.platform_id = platform_id;
  }
  void SetUser(std::string_view name) override { state_.config.user = name; }
  void SetWindowsFolder(std::string_view path) override {
    state_.config.windows_folder = WithoutBackslash(path);
    MakeFolder(state_.config.windows_folder);
  }
  void SetProgramFolder(std::string_view path) override;
  void EnterProgramFolder() override;
  std::string ProgramFolder() const override { return state_.config.program_folder; }
  void SetSpecialFolder(std::uint32_t number, std::uint32_t result, std::string_view path) override {
    state_.config.special_folders[number] = {result, std::string(path)};
  }
  bool SetDrive(char letter, std::string_view type) override;
  void Associate(std::string_view extension, std::string_view program) override {
    std::string key = LowerCase(extension);
    if (key.empty() || key.front() != '.') key.insert(key.begin(), '.');
    state_.config.associations[key] = program;
  }

  bool MakeFolder(std::string_view path) override { return files_.MakeFolder(path); }
  bool MakeFile(std::string_view path, std::string_view content) override { return files_.MakeFile(path, content); }
  bool MakeFileOfSize(std::string_view path, std::uint64_t size) override { return files_.MakeFileOfSize(path, size); }
  bool ChangeAttributes(std::string_view path, const std::vector<std::string>& changes) override {
    return files_.ChangeAttributes(path, changes);
  }
  bool Delete(std::string_view path) override { return files_.Delete(path); }
  bool Discard(std::string_view path) override { return files_.Discard(path); }
  bool Lock(std::string_view path) override { return files_.SetLocked(path, true); }
  bool Unlock(std::string_view path) override { return files_.SetLocked(path, false); }
  bool MakeLink(std::string_view path, std::string_view target) override { return files_.MakeLink(path, target); }

  bool RegistryAddKey(std::string_view key) override { return registry_.AddKey(key); }
  bool RegistrySetValue(std::string_view key, const RegistryValue& value) override {
    return registry_.SetValue(key, value);
  }
  bool RegistryDeleteKey(std::string_view key) override { return registry_.DeleteKey(key); }
  bool RegistryDeleteValue(std::string_view key, std::string_view name) override {
    return registry_.DeleteValue(key, name);
  }
  bool RegistryDeny(std::string_view key) override { return registry_.SetDenied(key, true); }
  bool RegistryAllow(std::string_view key) override { return registry_.SetDenied(key, false); }

  void CacheAdd(const CacheEntry& entry) override { state_.cache.Add(entry); }
  void CacheClear() override { state_.cache.Clear(); }

  std::uint64_t WindowOpen(std::string_view class_name, std::string_view title, std::uint64_t parent) override {
    return state_.windows.Open(class_name, title, parent);
  }
  bool WindowClose(std::uint64_t handle) override { return state_.windows.CloseOther(handle); }
  bool WindowCloseClass(std::string_view class_name) override { return state_.windows.CloseOthers(class_name); }
  bool OutsideProgram(std::string_view name, std::uint32_t exit_code, std::uint32_t pumps) override {
    if (!MakeFile(state_.config.program_folder + "\\" + std::string(name), "MZ")) return false;
    state_.config.outside_programs[std::string(name)] = {exit_code, pumps};
    return true;
  }

  bool TrayMouse(std::uint32_t mouse_message) override;
  bool HotKey(std::int32_t id) override {
    return Press([id](const GrantedHotKey& key) { return key.id == id; });
  }
  bool Chord(std::uint32_t modifiers, std::uint32_t key) override {
    return Press([=](const GrantedHotKey& granted) { return granted.modifiers == modifiers && granted.key == key; });
  }
  void RestartShell() override;

  void Advance(std::uint64_t ms) override;
  void Boot() override;
  void AddAnswers(const std::vector<std::string>& words) override {
    state_.answers.insert(state_.answers.end(), words.begin(), words.end());
  }

  std::vector<ShownBox> TakeBoxes() override { return std::exchange(state_.boxes, {}); }
  std::vector<std::string> TakeOpened() override { return std::exchange(state_.opened, {}); }
  std::string Exists(std::string_view path) const override { return files_.Exists(path); }
  std::string Attributes(std::string_view path) const override { return files_.Attributes(path); }
  std::optional<std::vector<std::string>> ListBelow(std::string_view folder) const override {
    return files_.ListBelow(folder);
  }
  std::optional<std::string> Content(std::string_view path) const override { return files_.Content(path); }
  std::optional<std::uint64_t> Size(std::string_view path) const override { return files_.Size(path); }
  std::optional<RegistryKey> ReadKey(std::string_view key) const override { return registry_.ReadKey(key); }
  std::vector<CacheEntry> Cache() const override {
    std::vector<CacheEntry> entries;
    std::uint64_t place = 0;
    while (const CacheEntry* entry = state_.cache.After(place)) entries.push_back(*entry);
    return entries;
  }
  std::vector<OtherWindow> Windows() const override { return state_.windows.Others(); }
  bool TrayIcon() const override { return !state_.tray.Icons().empty(); }
  std::vector<GrantedHotKey> HotKeys() const override {
    std::vector<GrantedHotKey> keys;
    for (const auto& [window, key] : state_.hot_keys.Granted()) keys.push_back(key);
    return keys;
  }
  std::vector<PendingRename> Pending() const override { return state_.config.pending; }
  std::size_t RecycleCount() const override { return BinContents(state_).items; }
  std::size_t OpenHandles() const override { return state_.open_handles.size(); }
  std::uint64_t ClockMs() const override { return state_.clock_ms; }

  WindowHandle OwnWindowCreate(std::string_view class_name, std::string_view title, OwnWindow actions) override {
    return static_cast<WindowHandle>(state_.windows.OpenOwn(class_name, title, std::move(actions)));
  }
  void OwnWindowDestroy(WindowHandle window) override { state_.CloseOwn(Plain(window)); }
  void OwnWindowState(WindowHandle window, bool visible, std::string_view title) override {
    state_.windows.SetState(Plain(window), visible, title);
  }
  void OwnWindowToFront(WindowHandle window) override { state_.windows.ToFront(Plain(window)); }

 private:
  template <typename Wanted>
  bool Press(Wanted wanted);
  void MakePlain();

  // The registry hands out its roots by reference; asking changes nothing.
  mutable MachineState state_;
  UserFiles files_{state_};
  UserRegistry registry_{state_};
  Operations operations_{state_, on_pump, on_wait, on_box};
  HostFile folder_;
};

bool MachineImpl::Load(const std::string& host_folder, std::string& problem) {
  if (mkdir(host_folder.c_str(), 0755) != 0 && errno != EEXIST) {
    // The parents are the caller's; one level more is made as a courtesy.
    const std::string parent = host_folder.substr(0, host_folder.find_last_of('/'));
    if (mkdir(parent.c_str(), 0755) != 0 || mkdir(host_folder.c_str(), 0755) != 0) {
      problem = HostProblem(host_folder.c_str());
      return false;
    }
  }
  folder_ = HostFile(open(host_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder_.ok()) {
    problem = HostProblem(host_folder.c_str());
    return false;
  }
  // Goes with the process, however that ends.
  if (flock(folder_.fd(), LOCK_EX | LOCK_NB) != 0) {
    problem = host_folder + ": another rehearsal uses this machine";
    return false;
  }
  std::optional<std::string> config, registry, cache;
  const std::string names[] = {kConfigFile, kRegistryFile, kCacheFile};
  if (!FinishWriting(folder_, names, problem)) return false;
  if (!ReadWhole(folder_, kConfigFile, config, problem) || !ReadWhole(folder_, kRegistryFile, registry, problem) ||
      !ReadWhole(folder_, kCacheFile, cache, problem)) {
    return false;
  }
  auto in_file = [&problem](const char* name) {
    problem = std::string(name) + ", " + problem;
    // It may tell a name of the file, which may hold anything.
    std::replace_if(
        problem.begin(), problem.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    return false;
  };
  SavedEntries saved;
  state_.boot_ticks = kFirstClock;
  if (config && !ReadConfig(*config, state_, saved, problem)) return in_file(kConfigFile);
  if (registry && !ReadRegistryFile(*registry, state_.registry, problem)) return in_file(kRegistryFile);
  if (cache && !ReadCache(*cache, state_.cache, problem)) return in_file(kCacheFile);
  if (faccessat(folder_.fd(), ".", W_OK, 0) != 0) {
    problem = host_folder + ": the machine's folder cannot be written";
    return false;
  }
  state_.disk.SetNow(state_.Now());
  if (auto loaded = state_.disk.Load(folder_); !loaded.ok()) {
    problem = host_folder + ": the drives cannot be read";
    return false;
  }
  if (mkdirat(folder_.fd(), "recycled", 0755) != 0 && errno != EEXIST) {
    problem = HostProblem("recycled");
    return false;
  }
  state_.bin = FolderIn(folder_.fd(), "recycled");
  if (!state_.bin.ok()) {
    problem = HostProblem("recycled");
    return false;
  }
  GiveBack(saved, state_);
  state_.disk.FinishLoading();
  if (!config) MakePlain();
  EnterProgramFolder();
  return true;
}

void MachineImpl::MakePlain() {
  MachineConfig& config = state_.config;
  SetDrive('C', "fixed");
  const std::string user = "C:\\Users\\user", roaming = user + "\\AppData\\Roaming", local = user + "\\AppData\\Local";
  config.special_folders = {{26, {0, roaming}}, {28, {0, local}}, {38, {0, "C:\\Program Files"}}, {40, {0, user}}};
  config.environment["SYSTEMDRIVE"] = "C:";
  config.associations = {{".htm", "C:\\Program Files\\Internet Explorer\\iexplore.exe"},
                         {".html", "C:\\Program Files\\Internet Explorer\\iexplore.exe"}};
  constexpr const char* kShellFolders = "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
  const std::pair<const char*, std::string> shell_folders[] = {
      {"History", local + "\\Microsoft\\Windows\\History"},
      {"Recent", roaming + "\\Microsoft\\Windows\\Recent"},
      {"Cookies", roaming + "\\Microsoft\\Windows\\Cookies"},
      {"Cache", local + "\\Microsoft\\Windows\\Temporary Internet Files"},
  };
  for (const auto& [name, path] : shell_folders) {
    RegistrySetValue(kShellFolders, {name, kRegSz, path});
    MakeFolder(path);
  }
  MakeFolder(config.temp_folder);
  MakeFolder(config.windows_folder + "\\TEMP");
  SetProgramFolder(config.program_folder);
}

void MachineImpl::EnterProgramFolder() {
  auto folder = ParsePath(state_.config.program_folder, ParsedPath(), false);
  if (folder.ok()) state_.current = folder.value;
}

void MachineImpl::SetProgramFolder(std::string_view path) {
  state_.config.program_folder = WithoutBackslash(path);
  MakeFolder(state_.config.program_folder);
  for (const auto& [name, content] : {std::pair("Quillbarrow.exe", "MZ"), std::pair("logo.gif", "GIF89a")}) {
    const std::string file = state_.config.program_folder + "\\" + name;
    if (!state_.Find(file).ok()) MakeFile(file, content);
  }
  EnterProgramFolder();
}

bool MachineImpl::SetDrive(char letter, std::string_view type) {
  if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
  if (letter < 'A' || letter > 'Z') return false;
  if (std::find(std::begin(kDriveWords), std::end(kDriveWords), type) == std::end(kDriveWords)) return false;
  state_.config.drive_types[letter] = type;
  if (type != "gone") state_.disk.AddDrive(letter);
  return true;
}

template <typename Wanted>
bool MachineImpl::Press(Wanted wanted) {
  const auto& granted = state_.hot_keys.Granted();
  auto found = std::find_if(granted.begin(), granted.end(), [&](const auto& there) { return wanted(there.key); });
  if (found == granted.end()) return false;
  const auto [window, key] = *found;
  state_.windows.Send(window, kMessageHotKey, static_cast<std::uint64_t>(key.id), key.modifiers | key.key << 16);
  return true;
}

bool MachineImpl::TrayMouse(std::uint32_t mouse_message) {
  if (state_.tray.Icons().empty()) return false;
  const NotifyIconData icon = state_.tray.Icons().begin()->second;
  if (!state_.windows.Has(Plain(icon.window))) {
    // The tray finds out about a program that left its icon behind when the mouse comes by.
    state_.tray.Delete(icon);
    return false;
  }
  state_.windows.Send(Plain(icon.window), icon.callback_message, icon.id, mouse_message);
  return true;
}

void MachineImpl::RestartShell() {
  state_.tray.Clear();
  const auto& names = state_.shared_messages;
  const auto told = std::find(names.begin(), names.end(), kTaskbarCreated);
  if (told == names.end()) return;  // nobody listens
  const auto message = kFirstSharedMessage + static_cast<std::uint32_t>(told - names.begin());
  for (std::uint64_t window : state_.windows.OfDesktop()) state_.windows.Send(window, message, 0, 0);
}

void MachineImpl::Advance(std::uint64_t ms) {
  const std::uint64_t until = state_.clock_ms + ms;
  while (state_.gate.Powered()) {
    auto next = state_.timers.NextDue(until);
    if (!next) break;
    // A handler that pumps may have moved the clock past the due time already.
    const std::uint64_t due = state_.timers.DueTime(*next);
    if (due > state_.clock_ms) state_.MoveClock(due - state_.clock_ms);
    state_.timers.Fire(*next, state_.clock_ms);
  }
  if (state_.clock_ms < until) state_.MoveClock(until - state_.clock_ms);
}

void MachineImpl::Boot() {
  state_.EndAll();
  CarryOutPendingRenames(state_);
  CarryOutWininit(state_);
}

bool MachineImpl::Save(std::string& problem) {
  const HostText texts[] = {{kConfigFile, WriteConfig(state_)},
                            {kRegistryFile, WriteRegistryFile(state_.registry)},
                            {kCacheFile, WriteCache(state_.cache)}};
  return WriteTogether(folder_, texts, problem);
}

}  // namespace

std::unique_ptr<Machine> Machine::Open(const std::string& host_folder, std::string& problem) {
  auto machine = std::make_unique<MachineImpl>();
  if (!machine->Load(host_folder, problem)) return nullptr;
  return machine;
}

}  // namespace qb::machine
