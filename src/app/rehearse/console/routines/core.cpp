// The life of the program.
#include "app/rehearse/console/routines.h"

namespace qb::rehearse {

namespace routines {

std::span<const ProgramRoutine> Core() {
  static const std::vector<ProgramRoutine> table = {
      {"InitCommonControlsVB", Bind([](Program& p) { return p.InitCommonControlsVB(); })},
      {"Close_Unwanted_Instance", Bind([](Program& p) { p.Close_Unwanted_Instance(); })},
      {"Register_Run_Key", Bind([](Program& p) { p.Register_Run_Key(); })},
      {"Create_Data_Folder", Bind([](Program& p) { p.Create_Data_Folder(); })},
      {"Center_Form", Bind([](Program& p) { p.main_window().Center(); })},
      {"Pause_Seconds", Bind([](Program& p, double seconds) { p.Pause_Seconds(seconds); })},
      {"popShutdownHK_Click", Bind([](Program& p) { p.ShutDown(); })},
      {"Get_Quillbarrow_Settings", Bind([](Program& p) { p.Get_Quillbarrow_Settings(); })},
      {"Detect_WinVer", Bind([](Program& p) { p.options().Detect_WinVer(); })},
      {"Write_Error_Log",
       Bind([](Program& p, const std::string& routine) { p.services().error_log.Write_Error_Log(routine, 0); })},
  };
  return table;
}

}  // namespace routines

}  // namespace qb::rehearse
