// What the operations and the world of a machine share. `Machine` owns it; each part has one writer.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/machine/gate.h"
#include "platform/machine/machine.h"
#include "platform/machine/world/code_page.h"
#include "platform/machine/world/disk.h"
#include "platform/machine/world/open_keys.h"
#include "platform/machine/world/outside_programs.h"
#include "platform/machine/world/registry_tree.h"
#include "platform/machine/world/timers.h"
#include "platform/machine/world/tray.h"
#include "platform/machine/world/windows.h"

namespace qb::machine {

// Compares ASCII names without regard to case.
struct FoldLess {
  bool operator()(const std::string& a, const std::string& b) const { return FoldName(a) < FoldName(b); }
};

struct SpecialFolder {
  std::uint32_t result = 0;
  std::string path;
};

// The settings of a machine: what machine.ini holds besides files.
struct MachineConfig {
  std::uint32_t major = 6, minor = 1, platform_id = 2;
  CodePage code_page;  // of text files
  std::string user = "user";
  std::string windows_folder = "C:\\WINDOWS";
  std::string program_folder = "C:\\Program Files\\Quillbarrow";
  std::string temp_folder = "C:\\Users\\user\\AppData\\Local\\Temp";
  std::map<std::uint32_t, SpecialFolder> special_folders;
  std::map<char, std::string> drive_types;                              // by letter; "gone" hides the drive
  std::map<std::string, std::string> associations;                      // by extension in small letters; empty for none
  std::map<std::string, OutsideProgramEnd, FoldLess> outside_programs;  // by name
  std::map<std::string, std::string> environment;
  std::map<char, std::string> volume_labels;
  std::vector<PendingRename> pending;
};

// The entries of the URL cache in the order of their making, each URL once.
class UrlCacheEntries {
 public:
  void Add(const CacheEntry& entry) {
    Remove(entry.url);
    places_[entry.url] = next_;
    entries_[next_++] = entry;
  }
  bool Remove(const std::string& url) {
    auto place = places_.find(url);
    if (place == places_.end()) return false;
    entries_.erase(place->second);
    places_.erase(place);
    return true;
  }
  void Clear() {
    entries_.clear();
    places_.clear();
  }
  const CacheEntry* Find(const std::string& url) const {
    auto place = places_.find(url);
    return place == places_.end() ? nullptr : &entries_.at(place->second);
  }
  // The first entry behind a place, which is moved to it; null at the end. Places start at 0.
  const CacheEntry* After(std::uint64_t& place) const {
    auto next = entries_.upper_bound(place);
    if (next == entries_.end()) return nullptr;
    place = next->first;
    return &next->second;
  }

 private:
  std::map<std::uint64_t, CacheEntry> entries_;
  std::map<std::string, std::uint64_t> places_;
  std::uint64_t next_ = 1;
};

// A file that a program has open.
struct OpenFile {
  Entry* entry = nullptr;  // null for a device, which gives nothing and takes everything
  HostFile host;
  std::uint64_t position = 0;
  Entry::Use use;
  bool sets_times = false;
  bool keeps_written = false;  // the time of the last write was set
};

// A listing that a program goes through.
struct Search {
  Entry* folder = nullptr;
  std::shared_ptr<void> hold;  // the folder's own; without it, whoever else has it, the folder is no more
  std::vector<FindData> found;
  std::size_t next = 0;
};

struct MachineState {
  Gate gate;
  Disk disk;
  RegistryTree registry;
  MachineConfig config;
  ParsedPath current;  // drive and folder
  UrlCacheEntries cache;
  std::uint64_t boot_ticks = 0;  // 100 ns since 1601 when the clock stood at 0 ms
  std::uint64_t clock_ms = 0;
  std::uint64_t next_handle = 100001;
  std::set<std::uint64_t> open_handles;  // of all kinds
  std::unordered_map<std::uint64_t, std::unique_ptr<OpenFile>> open_files;
  std::unordered_map<std::uint64_t, Search> searches;
  OpenKeys open_keys{registry};
  OutsidePrograms outside;
  std::map<std::uint64_t, std::string> mutexes;  // names by handle
  Windows windows;
  Timers timers;
  HotKeys hot_keys;
  Tray tray;
  std::vector<std::string> shared_messages;  // names of RegisterWindowMessageA, in order
  std::deque<std::string> answers;
  std::vector<ShownBox> boxes;
  std::vector<std::string> opened;
  HostFile bin;  // folder of the host with the items of the Recycle Bin

  std::uint64_t NewHandle() {
    open_handles.insert(next_handle);
    return next_handle++;
  }
  FileTime Now() const { return {boot_ticks + clock_ms * 10000}; }
  void MoveClock(std::uint64_t ms) {
    clock_ms += ms;
    disk.SetNow(Now());
  }
  // As when all programs have ended, and with them what they held.
  void EndAll() {
    open_files.clear();
    searches.clear();
    open_keys.EndAll();
    outside.EndAll();
    mutexes.clear();
    windows.EndAll();
    timers.EndAll();
    hot_keys.EndAll();
    tray.Clear();
    disk.LetGo();
    open_handles.clear();
  }
  // An own window goes with what hangs on it; a tray icon stays until someone points at it.
  void CloseOwn(std::uint64_t window) {
    windows.Close(window);
    timers.KillAllOf(window);
    hot_keys.ReleaseAllOf(window);
  }
  Result<ParsedPath> Parse(std::string_view path, bool pattern = false) const {
    auto parsed = ParsePath(path, current, pattern);
    if (!parsed.ok()) return parsed;
    auto type = config.drive_types.find(parsed.value.drive);
    if (type == config.drive_types.end() || type->second == "gone") return Error::PathNotFound;
    // The folder of a device must be there.
    if (parsed.value.device && !disk.FindPlace(parsed.value).ok()) return Error::PathNotFound;
    return parsed;
  }
  // The entry of a path; junctions in the last place are not followed unless asked.
  Result<Entry*> Find(std::string_view path, bool through_last = false) const {
    auto parsed = Parse(path);
    if (!parsed.ok()) return parsed.error;
    if (parsed.value.device) return Error::InvalidParameter;
    return disk.Find(parsed.value, through_last);
  }
  // The next answer for a question (yes or no) or a chooser (anything).
  std::optional<std::string> TakeAnswer() {
    if (answers.empty()) return std::nullopt;
    std::string answer = answers.front();
    answers.pop_front();
    return answer;
  }
};

template <typename HandleType>
constexpr std::uint64_t Plain(HandleType handle) {
  return static_cast<std::uint64_t>(handle);
}

inline constexpr std::uint64_t kInvalidHandle = ~std::uint64_t{0};

}  // namespace qb::machine
