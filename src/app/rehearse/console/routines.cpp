#include "app/rehearse/console/routines.h"

#include <array>

namespace qb::rehearse {
namespace {

// The unit of traces that a routine belongs to.
FirefoxTraces& UnitOf(TraceUnits& units, void (FirefoxTraces::*)()) {
  return units.firefox;
}
ChromeTraces& UnitOf(TraceUnits& units, void (ChromeTraces::*)()) {
  return units.chrome;
}
SafariTraces& UnitOf(TraceUnits& units, void (SafariTraces::*)()) {
  return units.safari;
}
AolTraces& UnitOf(TraceUnits& units, void (AolTraces::*)()) {
  return units.aol;
}
IeTraces& UnitOf(TraceUnits& units, void (IeTraces::*)()) {
  return units.ie;
}
IndexDat& UnitOf(TraceUnits& units, void (IndexDat::*)()) {
  return units.index_dat;
}
AutoCompleteStore& UnitOf(TraceUnits& units, void (AutoCompleteStore::*)()) {
  return units.auto_complete;
}
WindowsTraces& UnitOf(TraceUnits& units, void (WindowsTraces::*)()) {
  return units.windows;
}

template <auto routine>
auto Kill() {
  return Bind([](Program& program) { (UnitOf(program.trace_units(), routine).*routine)(); });
}

}  // namespace

std::span<const ProgramRoutine> CoreRoutines() {
  static const std::vector<ProgramRoutine> table = {
      {"InitCommonControlsVB", Bind([](Program& p) { return p.InitCommonControlsVB(); })},
      {"Close_Unwanted_Instance", Bind([](Program& p) { p.Close_Unwanted_Instance(); })},
      {"Register_Run_Key", Bind([](Program& p) { p.Register_Run_Key(); })},
      {"Create_Data_Folder", Bind([](Program& p) { p.Create_Data_Folder(); })},
      {"Center_Form", Bind([](Program& p) { p.main_window().Center(); })},
      {"Pause_Seconds", Bind([](Program& p, double seconds) { p.Pause_Seconds(seconds); })},
      {"popShutdownHK_Click", Bind([](Program& p) { p.ShutDown(); })},
      {"Get_Quillbarrow_Settings", Bind([](Program& p) { p.services().settings.Get_Quillbarrow_Settings(); })},
      {"HomePage", Bind([](Program& p) { return p.guards().HomePage(); })},
      {"Detect_WinVer", Bind([](Program& p) { p.options().Detect_WinVer(); })},
      {"Write_Error_Log",
       Bind([](Program& p, const std::string& routine) { p.services().error_log.Write_Error_Log(routine, 0); })},
  };
  return table;
}

std::span<const ProgramRoutine> KillRoutines() {
  static const std::vector<ProgramRoutine> table = {
      {"Do_Start_Up", Bind([](Program& p, std::int16_t mode) { p.kill_run().Do_Start_Up(mode); })},
      {"Log_Step", Bind([](Program& p, std::int16_t code) { p.run_log().Log_Step(code); })},
      {"Kill_Firefox_Traces", Bind([](Program& p) { p.kill_run().Kill_Firefox_Traces(); })},
      {"Kill_Chrome_Traces", Bind([](Program& p) { p.kill_run().Kill_Chrome_Traces(); })},
      {"Kill_Safari_Traces", Bind([](Program& p) { p.kill_run().Kill_Safari_Traces(); })},
      {"Kill_AOL_Traces", Bind([](Program& p) { p.kill_run().Kill_AOL_Traces(); })},
      {"Kill_IE_Traces", Bind([](Program& p) { p.kill_run().Kill_IE_Traces(); })},
      {"Kill_Windows_Traces", Bind([](Program& p) { p.kill_run().Kill_Windows_Traces(); })},
      {"Kill_Firefox_Droplist", Kill<&FirefoxTraces::Kill_Firefox_Droplist>()},
      {"Kill_Firefox_History", Kill<&FirefoxTraces::Kill_Firefox_History>()},
      {"Kill_Firefox_Cache", Kill<&FirefoxTraces::Kill_Firefox_Cache>()},
      {"Kill_Firefox_Cookies", Kill<&FirefoxTraces::Kill_Firefox_Cookies>()},
      {"Kill_Firefox_AutoComplete", Kill<&FirefoxTraces::Kill_Firefox_AutoComplete>()},
      {"Kill_Firefox_Downloads", Kill<&FirefoxTraces::Kill_Firefox_Downloads>()},
      {"Kill_Firefox_Jump_List", Kill<&FirefoxTraces::Kill_Firefox_Jump_List>()},
      {"Kill_Firefox_Session", Kill<&FirefoxTraces::Kill_Firefox_Session>()},
      {"Kill_Chrome_Visited_Links", Kill<&ChromeTraces::Kill_Chrome_Visited_Links>()},
      {"Kill_Chrome_History", Kill<&ChromeTraces::Kill_Chrome_History>()},
      {"Kill_Chrome_Cache", Kill<&ChromeTraces::Kill_Chrome_Cache>()},
      {"Kill_Chrome_Cookies", Kill<&ChromeTraces::Kill_Chrome_Cookies>()},
      {"Kill_Chrome_AutoComplete", Kill<&ChromeTraces::Kill_Chrome_AutoComplete>()},
      {"Kill_Chrome_Archived_History", Kill<&ChromeTraces::Kill_Chrome_Archived_History>()},
      {"Kill_Chrome_Thumbnails", Kill<&ChromeTraces::Kill_Chrome_Thumbnails>()},
      {"Kill_Chrome_Local_Storage", Kill<&ChromeTraces::Kill_Chrome_Local_Storage>()},
      {"Kill_Chrome_Jump_List", Kill<&ChromeTraces::Kill_Chrome_Jump_List>()},
      {"Kill_Chrome_Session", Kill<&ChromeTraces::Kill_Chrome_Session>()},
      {"Kill_Chrome_Flash_Cookies", Kill<&ChromeTraces::Kill_Chrome_Flash_Cookies>()},
      {"Kill_Chrome_Top_Sites", Kill<&ChromeTraces::Kill_Chrome_Top_Sites>()},
      {"Kill_Safari_History", Kill<&SafariTraces::Kill_Safari_History>()},
      {"Kill_Safari_Cache", Kill<&SafariTraces::Kill_Safari_Cache>()},
      {"Kill_Safari_Cookies", Kill<&SafariTraces::Kill_Safari_Cookies>()},
      {"Kill_Safari_Downloads", Kill<&SafariTraces::Kill_Safari_Downloads>()},
      {"Kill_Safari_AutoComplete", Kill<&SafariTraces::Kill_Safari_AutoComplete>()},
      {"Kill_Safari_Thumbnails", Kill<&SafariTraces::Kill_Safari_Thumbnails>()},
      {"Kill_Safari_Top_Sites", Kill<&SafariTraces::Kill_Safari_Top_Sites>()},
      {"Kill_Safari_Local_Storage", Kill<&SafariTraces::Kill_Safari_Local_Storage>()},
      {"Kill_Safari_Session", Kill<&SafariTraces::Kill_Safari_Session>()},
      {"Kill_AOL_Droplist", Kill<&AolTraces::Kill_AOL_Droplist>()},
      {"Kill_AOL_Cache", Kill<&AolTraces::Kill_AOL_Cache>()},
      {"Kill_Opera", Kill<&AolTraces::Kill_Opera>()},
      {"GetCacheURLList", Kill<&IeTraces::GetCacheURLList>()},
      {"Kill_Typed_URLs", Kill<&IeTraces::Kill_Typed_URLs>()},
      {"Kill_History_Store", Kill<&IeTraces::Kill_History_Store>()},
      {"Kill_History_Helper", Kill<&IeTraces::Kill_History_Helper>()},
      {"Kill_Temp_Helper", Kill<&IeTraces::Kill_Temp_Helper>()},
      {"Kill_Cookies_Helper", Kill<&IeTraces::Kill_Cookies_Helper>()},
      {"Kill_Cache_Entries", Bind([](Program& p, std::int16_t mode) {
         p.trace_units().ie.Kill_Cache_Entries(static_cast<CachePass>(mode));
       })},
      {"Strip_Cookie_Suffix", Bind([](Program&, const std::string& text) { return Strip_Cookie_Suffix(text); })},
      {"Kill_Cookie_Files", Kill<&IeTraces::Kill_Cookie_Files>()},
      {"Kill_Google_Bar", Kill<&IeTraces::Kill_Google_Bar>()},
      {"Kill_Search_History", Kill<&IeTraces::Kill_Search_History>()},
      {"Kill_IE_Recovery", Kill<&IeTraces::Kill_IE_Recovery>()},
      {"Kill_Edge_Cache", Kill<&IeTraces::Kill_Edge_Cache>()},
      {"Schedule_Index_Dat_WinInit", Kill<&IndexDat::Schedule_Index_Dat_WinInit>()},
      {"Schedule_Index_Dat_NT",
       Bind([](Program& p, std::int16_t flag) { p.trace_units().index_dat.Schedule_Index_Dat_NT(flag); })},
      {"Clear_Auto_Exec2",
       Bind([](Program& p, std::int16_t kind) { p.trace_units().index_dat.Clear_Auto_Exec2(kind); })},
      {"Kill_IE_AutoComplete", Kill<&AutoCompleteStore::Kill_IE_AutoComplete>()},
      {"RenableAutoComplete", Kill<&AutoCompleteStore::RenableAutoComplete>()},
      {"Delete_Key_Tree", Bind([](Program& p, KeyHandle root, const std::string& key) {
         p.trace_units().auto_complete.Delete_Key_Tree(root, key);
       })},
      {"Fill_Cookie_List", Bind([](Program& p) { p.cookie_manager().Fill_Cookie_List(); })},
      {"Kill_Run_MRU", Kill<&WindowsTraces::Kill_Run_MRU>()},
      {"Kill_Recent_Docs", Kill<&WindowsTraces::Kill_Recent_Docs>()},
      {"Kill_Media_Player", Kill<&WindowsTraces::Kill_Media_Player>()},
      {"Kill_Recycle_Bin", Kill<&WindowsTraces::Kill_Recycle_Bin>()},
      {"Kill_File_Fragments", Kill<&WindowsTraces::Kill_File_Fragments>()},
      {"Kill_Windows_Temp", Kill<&WindowsTraces::Kill_Windows_Temp>()},
      {"Kill_Office_Recent", Kill<&WindowsTraces::Kill_Office_Recent>()},
      {"Empty_Recycle_Bin", Bind([](Program& p, const std::optional<std::string>& root) {
         return p.trace_units().windows.Empty_Recycle_Bin(root.value_or(""));
       })},
      {"Query_Recycle_Bin", Bind([](Program& p) { return p.trace_units().windows.Query_Recycle_Bin(); })},
  };
  return table;
}

CallOutcome CallRoutine(Program& program, std::string_view name, const std::vector<std::string>& arguments) {
  const std::array tables = {CoreRoutines(),   KillRoutines(),     FolderRoutines(),
                             DeleteRoutines(), RegistryRoutines(), AnalyzerRoutines()};
  for (std::span<const ProgramRoutine> table : tables) {
    for (const ProgramRoutine& routine : table) {
      if (SameText(routine.name, name)) return routine.call(program, arguments);
    }
  }
  return {CallOutcome::Kind::NoSuchRoutine, {}};
}

}  // namespace qb::rehearse
