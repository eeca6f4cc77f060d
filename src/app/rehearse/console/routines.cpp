#include "app/rehearse/console/routines.h"

#include <array>

namespace qb::rehearse {

std::span<const ProgramRoutine> CoreRoutines() {
  static const std::vector<ProgramRoutine> table = {
      {"InitCommonControlsVB", Bind([](Program& p) { return p.InitCommonControlsVB(); })},
      {"Close_Unwanted_Instance", Bind([](Program& p) { p.Close_Unwanted_Instance(); })},
      {"Register_Run_Key", Bind([](Program& p) { p.Register_Run_Key(); })},
      {"Create_Data_Folder", Bind([](Program& p) { p.Create_Data_Folder(); })},
      {"Center_Form", Bind([](Program& p) { p.main_window().Center(); })},
      {"Pause_Seconds", Bind([](Program& p, double seconds) { p.Pause_Seconds(seconds); })},
      {"mnuShutDown_Click", Bind([](Program& p) { p.ShutDown(); })},
      {"popShutdownHK_Click", Bind([](Program& p) { p.ShutDown(); })},
      {"Exit_Click", Bind([](Program& p) { p.main_window().Exit_Click(); })},
      {"Get_Quillbarrow_Settings", Bind([](Program& p) { p.services().settings.Get_Quillbarrow_Settings(); })},
      {"Detect_WinVer", Bind([](Program& p) { p.options().Detect_WinVer(); })},
      {"Write_Error_Log",
       Bind([](Program& p, std::string routine) { p.services().error_log.Write_Error_Log(routine, 0); })},
  };
  return table;
}

std::span<const ProgramRoutine> KillRoutines() {
  static const std::vector<ProgramRoutine> table = {
      {"cmdKILLALL_Click", Bind([](Program& p) { p.kill_run().cmdKILLALL_Click(); })},
      {"Do_Start_Up", Bind([](Program& p, std::int16_t mode) { p.kill_run().Do_Start_Up(mode); })},
      {"Log_Step", Bind([](Program& p, std::int16_t code) { p.run_log().Log_Step(code); })},
      {"Kill_Firefox_Traces", Bind([](Program& p) { p.kill_run().Kill_Firefox_Traces(); })},
      {"Kill_Chrome_Traces", Bind([](Program& p) { p.kill_run().Kill_Chrome_Traces(); })},
      {"Kill_Safari_Traces", Bind([](Program& p) { p.kill_run().Kill_Safari_Traces(); })},
      {"Kill_AOL_Traces", Bind([](Program& p) { p.kill_run().Kill_AOL_Traces(); })},
      {"Kill_IE_Traces", Bind([](Program& p) { p.kill_run().Kill_IE_Traces(); })},
      {"Kill_Windows_Traces", Bind([](Program& p) { p.kill_run().Kill_Windows_Traces(); })},
      {"Kill_Run_MRU", Bind([](Program& p) { p.windows_traces().Kill_Run_MRU(); })},
      {"Kill_Recent_Docs", Bind([](Program& p) { p.windows_traces().Kill_Recent_Docs(); })},
      {"Kill_Media_Player", Bind([](Program& p) { p.windows_traces().Kill_Media_Player(); })},
      {"Kill_Recycle_Bin", Bind([](Program& p) { p.windows_traces().Kill_Recycle_Bin(); })},
      {"Kill_File_Fragments", Bind([](Program& p) { p.windows_traces().Kill_File_Fragments(); })},
      {"Kill_Windows_Temp", Bind([](Program& p) { p.windows_traces().Kill_Windows_Temp(); })},
      {"Kill_Office_Recent", Bind([](Program& p) { p.windows_traces().Kill_Office_Recent(); })},
      {"Empty_Recycle_Bin", Bind([](Program& p, std::optional<std::string> root) {
         return p.windows_traces().Empty_Recycle_Bin(root.value_or(""));
       })},
      {"Query_Recycle_Bin", Bind([](Program& p) { return p.windows_traces().Query_Recycle_Bin(); })},
  };
  return table;
}

CallOutcome CallRoutine(Program& program, std::string_view name, const std::vector<std::string>& arguments) {
  const std::array tables = {CoreRoutines(), KillRoutines(), FolderRoutines(), DeleteRoutines(), RegistryRoutines()};
  for (std::span<const ProgramRoutine> table : tables) {
    for (const ProgramRoutine& routine : table) {
      if (SameText(routine.name, name)) return routine.call(program, arguments);
    }
  }
  return {CallOutcome::Kind::NoSuchRoutine, {}};
}

}  // namespace qb::rehearse
