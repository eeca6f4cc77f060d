#include "core/program.h"

#include <algorithm>

#include "runtime/folders.h"
#include "runtime/text.h"

namespace qb {

Program::Program(Platform& platform, FormWatcher& watcher, std::string command_line, WindowHandle application_window)
    : command_line_(std::move(command_line)),
      application_window_(application_window),
      platform_(platform),
      services_(platform),
      keep_list_(services_.channels, services_.settings, services_.data_folder),
      products_(platform, services_.reg_settings, services_.settings, *this),
      main_window_({platform, watcher, services_.life}, services_, *this),
      options_({platform, watcher, services_.life}, services_, products_, [this] { ShowMainWindow(); }),
      cookie_manager_({platform, watcher, services_.life}, services_.settings, keep_list_,
                      [this] { main_window_.Refresh(); }),
      delete_path_(platform, services_.channels, services_.history_removed, main_window_.Bar(), services_.life),
      file_analyzer_(platform, services_.channels, services_.life),
      named_traces_(delete_path_, services_.history_removed, services_.life),
      firefox_traces_(services_.profiles, services_.folders, named_traces_),
      chrome_traces_(services_.profiles, named_traces_),
      safari_traces_(services_.profiles, named_traces_),
      aol_traces_(services_.settings, named_traces_),
      ie_traces_({platform, services_.settings, services_.folders, products_, services_.profiles, delete_path_,
                  file_analyzer_, named_traces_, services_.history_removed, keep_list_, main_window_.CacheList(),
                  main_window_.Bar(), services_.life}),
      index_dat_(platform, services_.channels, services_.folders, products_, ie_folders_moved_,
                 services_.history_removed, main_window_),
      auto_complete_(platform, services_.reg_settings, services_.history_removed, services_.life),
      windows_traces_(platform, delete_path_, services_.folders, products_, services_.history_removed, services_.life,
                      main_window_),
      units_{firefox_traces_, chrome_traces_, safari_traces_, aol_traces_,
             ie_traces_,      index_dat_,     auto_complete_, windows_traces_},
      run_log_(platform, services_.settings, services_.run, services_.life, main_window_, services_.thumbs),
      kill_run_(platform, services_.settings, services_.profiles, services_.run, services_.life, main_window_, run_log_,
                units_, services_.history_removed),
      guards_(services_.reg_settings, services_.store, main_window_.HomePageTimer()) {}

Program::~Program() {
  if (instance_ != MutexHandle::None) StepOver(platform_.processes.CloseHandle(instance_));
}

bool Program::Start() {
  main_window_.Load();
  // A boot start shows the window by itself, if at all; its run may have cleared StartedAtBoot by now.
  if (!HasBootSwitch()) main_window_.Show();
  return !Ended();
}

void Program::ShowMainWindow() {
  services_.run.MainWindowHidden = false;
  main_window_.SetState(WindowState::Normal);
  main_window_.Show();
  main_window_.SetFocus();
}

void Program::Pause_Seconds(double seconds) {
  constexpr double kMost = 100.0 * 366 * 24 * 3600;  // what fits into a count of milliseconds
  if (!(seconds > 0)) return;
  const std::uint64_t until =
      platform_.system.GetTickCount() + static_cast<std::uint64_t>(std::min(seconds, kMost) * 1000);
  while (platform_.system.GetTickCount() < until && PumpAndLive(platform_, services_.life)) {
  }
}

void Program::MainWindowCloseRequest(bool& cancel, UnloadMode mode) {
  RunState& run = services_.run;
  Settings& settings = services_.settings;
  if (settings.StoredNumber(Setting::CloseQB, "") == 1) {
    run.MainWindowHidden = false;
    settings.SaveNumber(Setting::CloseQB, 0);
  }
  if (settings.On(Setting::Disable_AK) && run.StartedAtBoot) run.MainWindowHidden = true;
  if (run.MainWindowHidden) {
    settings.Save(Setting::HistoryRemoved);
    return;
  }
  cancel = true;
  main_window_.Hide();
  main_window_.SetState(WindowState::Minimised);
  run.MainWindowHidden = true;
  // Nobody keeps the end of the session waiting.
  if (mode == UnloadMode::WindowsSession) End();
}

void Program::MainWindowUnload(bool& cancel) {
  if (!services_.run.MainWindowHidden) {
    cancel = true;
    main_window_.SetState(WindowState::Minimised);
    main_window_.Hide();
    return;
  }
  End();
}

void Program::ShutDown() {
  const BoxAnswer answer = platform_.desktop.MessageBoxA(
      main_window_.Window(),
      "Are you sure you want to exit Quillbarrow?  Doing this will disable the Auto-Kill and Tanglegate privacy "
      "features!",
      "Warning!  About to Exit Quillbarrow!", kBoxYesNo | kBoxQuestion);
  if (answer != BoxAnswer::Yes || Ended()) return;
  services_.run.MainWindowHidden = true;
  services_.settings.SaveNumber(Setting::CloseQB, 0);
  StepOver(main_window_.Unload());
}

}  // namespace qb
