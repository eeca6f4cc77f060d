#include "core/program.h"

#include <algorithm>

#include "kill/log_step.h"
#include "runtime/folders.h"
#include "runtime/text.h"

namespace qb {

Program::Program(Platform& platform, FormWatcher& watcher, std::string command_line, WindowHandle application_window)
    : command_line_(std::move(command_line)),
      application_window_(application_window),
      platform_(platform),
      services_(platform),
      keep_list_(platform.files, services_.channels, services_.settings, services_.data_folder),
      products_(platform, services_.reg_settings, services_.settings, *this),
      main_window_({platform, watcher, services_.life}, services_, *this),
      options_({platform, watcher, services_.life}, services_, products_, [this] { ShowMainWindow(); }),
      cookie_manager_({platform, watcher, services_.life}, services_.settings, keep_list_,
                      [this] { main_window_.Refresh(); }),
      wizard_(
          {platform, watcher, services_.life},
          {services_.settings, services_.profiles, keep_list_, main_window_.interval(), services_.run.StartedAtBoot},
          *this),
      about_({platform, watcher, services_.life}, services_, kProgramVersion),
      engine_({platform, services_.channels, services_.settings, services_.reg_settings, services_.folders, products_,
               services_.profiles, keep_list_, services_.history_removed, services_.run, services_.thumbs,
               short_folders_, services_.life},
              main_window_.display(), *this),
      resident_(services_, main_window_, engine_.run(), *this),
      thumbs_({platform, watcher, services_.life},
              {services_.channels, services_.settings, services_.folders, engine_.delete_path(),
               services_.history_removed, services_.thumbs, services_.data_folder}) {
  engine_.file_analyzer().active_window = [&watcher] { return watcher.ActiveWindow(); };
  Wire();
}

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

void Program::AskForSelection() {
  wizard_.Show();
  wizard_.cmd_Default_Click();
}

void Program::ShowForRun() {
  main_window_.Show();
  main_window_.SetState(WindowState::Normal);
}

void Program::HideAfterRun() {
  main_window_.Hide();
  main_window_.SetState(WindowState::Minimised);
}

void Program::ShowThumbnailScan() {
  if (thumbs_.Loaded()) return thumbs_.SetFocus();
  main_window_.EnableWatcherTimer(false);
  thumbs_.ShowModal();
  if (Ended()) return;
  main_window_.EnableWatcherTimer(true);
  main_window_.display().ShowLog();
  run_log().Log_Step(services_.thumbs.Thumbs_Deleted >= 1 ? kLogThumbsKilled : kLogThumbsFound);
  if (Ended()) return;
  main_window_.display().SetValue(main_window_.display().Max());
}

void Program::Pause_Seconds(double seconds) {
  constexpr double kMost = 100.0 * 366 * 24 * 3600;  // what fits into a count of milliseconds
  if (!(seconds > 0)) return;
  const std::uint64_t until =
      platform_.system.GetTickCount() + static_cast<std::uint64_t>(std::min(seconds, kMost) * 1000);
  while (platform_.system.GetTickCount() < until && RestAndLive(platform_, services_.life)) {
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
    resident_.Leave();
    return;
  }
  cancel = true;
  main_window_.Hide();
  main_window_.SetState(WindowState::Minimised);
  run.MainWindowHidden = true;
  // Nobody keeps the end of the session waiting.
  if (mode != UnloadMode::WindowsSession) return;
  resident_.Leave();
  thumbs_.CloseWithProgram();
  End();
}

void Program::MainWindowUnload(bool& cancel) {
  if (!services_.run.MainWindowHidden) {
    cancel = true;
    main_window_.SetState(WindowState::Minimised);
    main_window_.Hide();
    return;
  }
  thumbs_.CloseWithProgram();
  End();
}

void Program::OpenSite(std::string_view url) {
  services_.folders.Open_URL(url, services_.data_folder, main_window_.Window());
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
