// The start sequence: what runs, in which order, when the main window is loaded.
#include "core/program.h"
#include "runtime/folders.h"
#include "runtime/text.h"
#include "settings/registry_text.h"

namespace qb {

namespace {

constexpr std::string_view kInstanceName = "Quillbarrow running instance";
constexpr std::string_view kApplicationTitle = "Quillbarrow";
// Titles of the hidden window that names a running copy stand under one of these classes.
constexpr std::string_view kApplicationClasses[] = {"ThunderRTMain", "ThunderRT5Main", "ThunderRT6Main"};
constexpr std::string_view kRunKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr std::string_view kBootSwitch = "/STARTUP";

constexpr std::string_view kIndexLeftovers[] = {"\\INDEX.DAT",  "\\INDEX2.DAT", "\\INDEX3.DAT", "\\INDEX4.DAT",
                                                "\\INDEX5.DAT", "\\INDEX6.DAT", "\\INDEX7.DAT"};

constexpr std::string_view kReportLeftovers[] = {
    "\\QBFernledger.html",          "\\QBFernledgerSuspect1.html", "\\QBFernledgerSuspect2.html",
    "\\QBFernledgerSuspect3.html",  "\\QBFernledgerSuspect4.html", "\\QBFernledgerSuspect5.html",
    "\\QBFernledgerSuspect6.html",  "\\QBFernledgerSuspect7.html", "\\QBFernledger_InternetTempFiles.html",
    "\\Fernledger_thumbnails.html", "\\Fernledger_illegal.html",   "\\Fernledger_videos.html",
    "\\Fernledger_teen.html",       "\\Fernledger_summary.html",   "\\Fernledger_sports.html",
    "\\Fernledger_social.html",     "\\Fernledger_news.html",      "\\Fernledger_images.html",
    "\\Fernledger_images2.html",    "\\Fernledger_history.html",   "\\Fernledger_gambling.html",
    "\\Fernledger_cookies.html",
};

}  // namespace

void Program::MainWindowLoaded() {
  StepOver(InitCommonControlsVB());
  if (PreviousInstance()) {
    Close_Unwanted_Instance();
    return;
  }
  Register_Run_Key();
  services_.run = {};
  services_.settings.Reset();
  resident_.boss_key.hot_keys.Register(main_window_.Window());
  resident_.tray.ListenForTaskbar();
  ReadSettings();
  resident_.tray.Add_Tray_Icon();
  services_.reg_settings.SetCompany(ProductScope::kRestCompany);
  services_.reg_settings.SetAppName(ProductScope::kRestAppName);
  products_.GetWinDirs();
  Create_Data_Folder();
  cookie_manager_.Load();
  DeleteLeftovers(kIndexLeftovers);
  ComputeShortFolders();
  main_window_.Center();
  main_window_.Hide();
  resident_.boss_key.hider.Reset();
  services_.run.StartedAtBoot = HasBootSwitch();
  main_window_.EnableHomePageTimer(services_.settings.On(Setting::HomePageProt));
  if (services_.settings.On(Setting::HideIcon)) resident_.tray.Remove_Tray_Icon();
  DeleteLeftovers(kReportLeftovers);
  products_.GetIEVersion();
  services_.profiles.Read_Firefox_Profile();
  if (services_.settings.FirstRunOfAccount()) FirstRun();
  if (Ended()) return;
  services_.settings.SaveText(Setting::QBBuild, std::string(kProgramVersion));
  if (services_.run.StartedAtBoot) StartWithWindows();
}

bool Program::InitCommonControlsVB() {
  constexpr std::uint32_t kStructureSize = 8;
  constexpr std::uint32_t kExtendedCombo = 0x200;  // ICC_USEREX_CLASSES
  // Deliberate: what the call answers is not looked at.
  static_cast<void>(platform_.system.InitCommonControlsEx(kStructureSize, kExtendedCombo));
  return true;
}

bool Program::PreviousInstance() {
  auto mutex = platform_.processes.CreateMutexA(kInstanceName);
  if (!mutex.ok()) return false;
  instance_ = mutex.value.handle;
  return mutex.value.existed;
}

void Program::Close_Unwanted_Instance() {
  Desktop& desktop = platform_.desktop;
  // So that the search does not find this copy itself.
  StepOver(desktop.SetWindowTextA(application_window_, "unwanted instance"));
  for (std::string_view class_name : kApplicationClasses) {
    const WindowHandle found = desktop.FindWindowA(class_name, kApplicationTitle);
    if (found == WindowHandle::None) continue;
    // The hidden window owns the main one, which therefore stands right above it.
    const WindowHandle first_copy = desktop.GetWindow(found, kWindowPrevious);
    StepOver(desktop.ShowWindow(first_copy, kShowNormal));
    StepOver(desktop.OpenIcon(first_copy));
    StepOver(desktop.SetForegroundWindow(first_copy));
    break;
  }
  services_.settings.SaveNumber(Setting::CloseQB, 1);
  // Never handled: the window that it is for goes with the program.
  StepOver(platform_.pump.PostMessageA(main_window_.Window(), kMessageClose, 0, 0));
  End();
}

void Program::Register_Run_Key() {
  auto key = platform_.registry.RegOpenKeyExA(KeyHandle::CurrentUser, kRunKey, kKeyRead);
  if (key.ok()) {
    KeyCloser closer(platform_.registry, key.value);
    auto value = QueryData(platform_.registry, key.value, kProductName);
    if (value.ok() && (value.value.type == kRegSz || value.value.type == kRegExpandSz)) return;
  }
  const std::string program = Add_Backslash(services_.folders.ProgramFolder()) + services_.folders.ProgramBaseName();
  services_.registry_counter.SaveRegString(KeyHandle::CurrentUser, kRunKey, kProductName,
                                           "\"" + program + ".exe\" " + std::string(kBootSwitch));
}

void Program::ReadSettings() {
  Settings& settings = services_.settings;
  settings.Read();
  if (settings.FirstRunOfAccount()) settings.StoreFirstRun();
  resident_.guards.LoadSiblingSettings();
  main_window_.LoadFromSettings();
}

void Program::Get_Quillbarrow_Settings() {
  services_.settings.Read();
  main_window_.LoadFromSettings();
}

void Program::Create_Data_Folder() {
  const WindowsFolders& folders = services_.folders;
  const std::string candidate =
      folders.Get_Version_Code() == kLocalSettingsCode
          ? folders.Get_Special_Folder(kUserProfile) + "\\Local Settings\\Application Data\\Quillbarrow"
          : folders.Get_Special_Folder(kLocalData) + "\\Quillbarrow";
  Files& files = platform_.files;
  if (!FolderExists(files, candidate)) StepOver(files.CreateDirectoryA(candidate));
  services_.data_folder = candidate;
  const std::string logo = candidate + "\\logo.gif";
  if (!FileExists(files, logo)) StepOver(files.CopyFileA(folders.ProgramFolder() + "\\logo.gif", logo, false));
}

void Program::DeleteLeftovers(std::span<const std::string_view> names) {
  for (std::string_view name : names) {
    const std::string path = services_.data_folder + std::string(name);
    if (services_.channels.CanOpen(path)) StepOver(DeleteFiles(platform_.files, path));
  }
}

void Program::ComputeShortFolders() {
  const WindowsFolders& folders = services_.folders;
  const std::string windows = folders.Get_Windows_Dir();
  short_folders_.cache = folders.Get_Short_Path(products_.Cache());
  short_folders_.cookies = folders.Get_Short_Path(products_.Cookies());
  short_folders_.history = folders.Get_Short_Path(products_.History());
  short_folders_.ie_folders_moved = UpperCase(short_folders_.cache) != UpperCase(windows + "\\TEMPOR~1\\") ||
                                    UpperCase(short_folders_.cookies) != UpperCase(windows + "\\COOKIES\\");
}

void Program::FirstRun() {
  services_.settings.SaveText(Setting::AOLdir, products_.Get_AOL_Dir());
  StepOver(products_.Get_MSN8_Profile());
  if (Ended()) return;
  options_.Load();
  options_.Detect_WinVer();
  StepOver(options_.Unload());
}

bool Program::HasBootSwitch() const {
  return UpperCase(command_line_) == kBootSwitch;
}

void Program::StartWithWindows() {
  if (services_.settings.On(Setting::Disable_AK)) {
    StepOver(main_window_.Unload());
    return;
  }
  main_window_.Hide();
  services_.run.MainWindowHidden = true;
  if (services_.settings.On(Setting::AK_WinStart)) engine_.run().Do_Start_Up(0);
}

}  // namespace qb
