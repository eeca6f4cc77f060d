#include "kill/traces/windows_traces.h"

namespace qb {

namespace {

constexpr std::string_view kRunMru[] = {"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\RunMRU"};

constexpr std::string_view kPlayerLists[] = {
    "Software\\Microsoft\\MediaPlayer\\Player\\RecentURLList",
    "Software\\Microsoft\\MediaPlayer\\Player\\RecentFileList",
};

// Hard-wired: they do not follow the real Windows folder. Deliberate: the second row tests one spelling
// and deletes another, which is the same file to Windows.
constexpr struct {
  const char* tested;
  const char* deleted;
} kPlayerFiles[] = {
    {"C:\\WINDOWS\\wmplibrary_v_0_12.db", "C:\\WINDOWS\\wmplibrary_v_0_12.db"},
    {"C:\\WINDOWS\\Application Data\\Microsoft\\Media Player\\ActivePlaylist.dat",
     "C:\\Windows\\Application Data\\Microsoft\\Media Player\\ActivePlaylist.dat"},
};

// The last key is literally named with an asterisk and is no wildcard.
constexpr std::string_view kOpenSaveLists[] = {
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\doc",
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\xls",
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\pps",
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\exe",
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\txt",
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\zip",
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\*",
};

constexpr std::uint32_t kRecentDocsPath = 2;   // SHARD_PATHA
constexpr std::uint32_t kEmptyBinQuietly = 7;  // no confirmation, no progress display, no sound

}  // namespace

void CountAndDeleteKeys(Platform& platform, const Lifetime& life, TraceCounter& history_removed,
                        std::span<const std::string_view> keys) {
  RegistryCounter counter(platform.registry, [&] { return PumpAndLive(platform, life); });
  for (std::string_view key : keys) {
    const std::int32_t values = life.Over() ? 0 : counter.SubValueCount(KeyHandle::CurrentUser, key);
    if (life.Over()) return;
    StepOver(Registry_Delete_Key(platform.registry, KeyHandle::CurrentUser, key));
    history_removed.Add(values);
  }
}

void WindowsTraces::DeleteLists(std::span<const std::string_view> keys) {
  CountAndDeleteKeys(needs_.platform, needs_.life, needs_.history_removed, keys);
}

void WindowsTraces::Kill_Run_MRU() {
  DeleteLists(kRunMru);
}

void WindowsTraces::Kill_Recent_Docs() {
  needs_.platform.shell.SHAddToRecentDocs(kRecentDocsPath, std::nullopt);
  needs_.history_removed.Add(1);
}

void WindowsTraces::Kill_Media_Player() {
  DeleteLists(kPlayerLists);
  if (needs_.life.Over()) return;
  for (const auto& file : kPlayerFiles) {
    if (!delete_path_.File_Can_Open(file.tested)) continue;
    StepOver(delete_path_.Delete_Files(file.deleted));
    needs_.history_removed.Add(1);
  }
}

void WindowsTraces::Kill_Recycle_Bin() {
  StepOver(Empty_Recycle_Bin(""));
}

std::uint32_t WindowsTraces::Empty_Recycle_Bin(std::string_view root) {
  return needs_.platform.shell.SHEmptyRecycleBinA(progress_.Owner(), root.empty() ? std::nullopt : std::optional(root),
                                                  kEmptyBinQuietly);
}

double WindowsTraces::Query_Recycle_Bin() {
  auto bin = needs_.platform.shell.SHQueryRecycleBinA(std::nullopt);
  return bin.ok() ? static_cast<double>(bin.value.items) : 0;
}

void WindowsTraces::Kill_File_Fragments() {
  const std::string drive = needs_.folders.Get_Windows_Dir().substr(0, 1);
  if (drive.empty()) return;
  const std::string pattern = drive + ":\\FILE*.CHK";
  const int count = delete_path_.Count_Matching_Files(pattern, false, false);
  StepOver(delete_path_.Delete_Files(pattern));
  needs_.history_removed.Add(count);
}

void WindowsTraces::Kill_Windows_Temp() {
  // Without an answer of the system "\\TEMP" would be a folder in the root of the current drive.
  const std::string windows = needs_.folders.Get_Windows_Dir();
  if (!windows.empty()) delete_path_.Wipe_Folder_Files(windows + "\\TEMP");
  // And without a Cookies folder the second path would hang on the current folder.
  constexpr std::string_view kCookies = "Cookies\\";
  if (needs_.products.Cookies().size() <= kCookies.size()) return;
  const std::string user_temp = WithoutLast(needs_.products.Cookies(), kCookies.size()) + "Local Settings\\Temp";
  if (user_temp != windows) delete_path_.Wipe_Folder_Files(user_temp);
}

void WindowsTraces::Kill_Office_Recent() {
  const std::string windows = needs_.folders.Get_Windows_Dir();
  if (!windows.empty()) {
    delete_path_.Wipe_Folder_Files(windows + "\\Application Data\\Microsoft\\Office\\Recent");
  }
  DeleteLists(kOpenSaveLists);
}

std::span<const NamedRoutine<WindowsTraces>> WindowsTraces::Routines() {
  static constexpr NamedRoutine<WindowsTraces> kRoutines[] = {
      {"Kill_Run_MRU", &WindowsTraces::Kill_Run_MRU},
      {"Kill_Recent_Docs", &WindowsTraces::Kill_Recent_Docs},
      {"Kill_Media_Player", &WindowsTraces::Kill_Media_Player},
      {"Kill_Recycle_Bin", &WindowsTraces::Kill_Recycle_Bin},
      {"Kill_File_Fragments", &WindowsTraces::Kill_File_Fragments},
      {"Kill_Windows_Temp", &WindowsTraces::Kill_Windows_Temp},
      {"Kill_Office_Recent", &WindowsTraces::Kill_Office_Recent},
  };
  return kRoutines;
}

}  // namespace qb
