// The program: what it owns, and its life from the load of the main window to its real end.
#pragma once

#include <memory>
#include <string>

#include "autokill/wizard.h"
#include "cookies/cookie_manager.h"
#include "core/about.h"
#include "core/general_setup.h"
#include "core/main_window.h"
#include "core/program_life.h"
#include "core/resident.h"
#include "core/services.h"
#include "core/version.h"
#include "kill/kill_engine.h"
#include "thumbs/thumbs_window.h"

namespace qb {

inline constexpr std::string_view kProgramVersion = QUILLBARROW_VERSION;

class Program : public ProgramLife, public SetupAsker, private RunHost, private WizardHost, private ResidentHost {
 public:
  // `command_line` is what stands behind the program's name, as typed. `application_window` is the
  // window whose title names this program to a second copy of it.
  Program(Platform& platform, FormWatcher& watcher, std::string command_line, WindowHandle application_window);
  ~Program() override;

  // Loads the main window, which runs the whole start sequence, and shows it unless this is a start
  // with Windows. False if the program has ended already.
  bool Start();
  bool Ended() const { return services_.life.Over(); }
  // Ends the program at once, from wherever it is called: all timers stop and all windows go, no handler
  // runs any more, and whatever is under way stops at its next step.
  void End() { services_.life.End(); }

  // What can be reached of the running program by name.
  Services& services() { return services_; }
  frmMain& main_window() { return main_window_; }
  frmOptions& options() { return options_; }
  frmCookieManager& cookie_manager() { return cookie_manager_; }
  frmAutoKill& wizard() { return wizard_; }
  clsFileAnalyzer& file_analyzer() { return engine_.file_analyzer(); }
  KillEngine& engine() { return engine_; }
  KillRun& kill_run() { return engine_.run(); }
  RunLog& run_log() { return engine_.log(); }
  DeletePath& delete_path() { return engine_.delete_path(); }
  ProductFolders& products() { return products_; }
  TraceUnits& trace_units() { return engine_.units(); }
  Resident& resident() { return resident_; }
  frmAbout& about() { return about_; }
  frmThumbs& thumbs() { return thumbs_; }
  bool IEFoldersMoved() const { return short_folders_.ie_folders_moved; }

  // Reads the settings anew, as the start does, and sets their controls. The product itself does not call it.
  void Get_Quillbarrow_Settings();
  void Register_Run_Key();
  void Create_Data_Folder();
  bool InitCommonControlsVB();
  // Brings the first copy to the front and ends this one.
  void Close_Unwanted_Instance();

  // ProgramLife
  void MainWindowLoaded() override;
  void MainWindowCloseRequest(bool& cancel, UnloadMode mode) override;
  void MainWindowUnload(bool& cancel) override;
  // What its controls set off.
  void ShowThumbnailScan();
  // In the user's browser.
  void OpenSite(std::string_view url);
  // Asks, and ends the program on Yes.
  void ShutDown();
  // WizardHost
  void ShowGeneralSetup() override { options_.Show(); }
  void ShowCookieManager() override { cookie_manager_.OpenAnew(); }
  // ResidentHost
  void ShowMainWindow() override;
  void ShowWizard() override { wizard_.Show(); }
  // RunHost
  void Pause_Seconds(double seconds) override;
  // SetupAsker
  void AskGeneralSetup() override { options_.ShowModal(); }

 private:
  // RunHost
  void AskForAolFolder() override { options_.Show(); }
  void AskForSelection() override;
  void ShowForRun() override;
  void HideAfterRun() override;
  // WizardHost
  void RunAfterWizard() override { engine_.run().Do_Start_Up(0); }

  // Gives the controls of the main window what they set off beyond it.
  void Wire();
  bool PreviousInstance();
  void ReadSettings();
  void ComputeShortFolders();
  void DeleteLeftovers(std::span<const std::string_view> names);
  void FirstRun();
  bool HasBootSwitch() const;  // the command line is that of the Run value
  void StartWithWindows();

  const std::string command_line_;
  const WindowHandle application_window_;
  Platform& platform_;
  Services services_;
  KeepList keep_list_;
  ProductFolders products_;
  frmMain main_window_;
  frmOptions options_;
  frmCookieManager cookie_manager_;
  frmAutoKill wizard_;
  frmAbout about_;
  KillEngine engine_;
  Resident resident_;
  frmThumbs thumbs_;
  MutexHandle instance_ = MutexHandle::None;
  ShortFolders short_folders_;
};

}  // namespace qb
