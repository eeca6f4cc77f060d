// The run, its traces and what it writes down.
#include "app/rehearse/console/routines.h"

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
auto Trace() {
  return Bind([](Program& program) { (UnitOf(program.trace_units(), routine).*routine)(); });
}

}  // namespace

namespace routines {

std::span<const ProgramRoutine> Kill() {
  static const std::vector<ProgramRoutine> table = {
      {"Do_Start_Up", Bind([](Program& p, std::int16_t mode) { p.kill_run().Do_Start_Up(mode); })},
      {"Log_Step", Bind([](Program& p, std::int16_t code) { p.run_log().Log_Step(code); })},
      {"Kill_Firefox_Traces", Bind([](Program& p) { p.kill_run().Kill_Firefox_Traces(); })},
      {"Kill_Chrome_Traces", Bind([](Program& p) { p.kill_run().Kill_Chrome_Traces(); })},
      {"Kill_Safari_Traces", Bind([](Program& p) { p.kill_run().Kill_Safari_Traces(); })},
      {"Kill_AOL_Traces", Bind([](Program& p) { p.kill_run().Kill_AOL_Traces(); })},
      {"Kill_IE_Traces", Bind([](Program& p) { p.kill_run().Kill_IE_Traces(); })},
      {"Kill_Windows_Traces", Bind([](Program& p) { p.kill_run().Kill_Windows_Traces(); })},
      {"Kill_Firefox_Droplist", Trace<&FirefoxTraces::Kill_Firefox_Droplist>()},
      {"Kill_Firefox_History", Trace<&FirefoxTraces::Kill_Firefox_History>()},
      {"Kill_Firefox_Cache", Trace<&FirefoxTraces::Kill_Firefox_Cache>()},
      {"Kill_Firefox_Cookies", Trace<&FirefoxTraces::Kill_Firefox_Cookies>()},
      {"Kill_Firefox_AutoComplete", Trace<&FirefoxTraces::Kill_Firefox_AutoComplete>()},
      {"Kill_Firefox_Downloads", Trace<&FirefoxTraces::Kill_Firefox_Downloads>()},
      {"Kill_Firefox_Jump_List", Trace<&FirefoxTraces::Kill_Firefox_Jump_List>()},
      {"Kill_Firefox_Session", Trace<&FirefoxTraces::Kill_Firefox_Session>()},
      {"Kill_Chrome_Visited_Links", Trace<&ChromeTraces::Kill_Chrome_Visited_Links>()},
      {"Kill_Chrome_History", Trace<&ChromeTraces::Kill_Chrome_History>()},
      {"Kill_Chrome_Cache", Trace<&ChromeTraces::Kill_Chrome_Cache>()},
      {"Kill_Chrome_Cookies", Trace<&ChromeTraces::Kill_Chrome_Cookies>()},
      {"Kill_Chrome_AutoComplete", Trace<&ChromeTraces::Kill_Chrome_AutoComplete>()},
      {"Kill_Chrome_Archived_History", Trace<&ChromeTraces::Kill_Chrome_Archived_History>()},
      {"Kill_Chrome_Thumbnails", Trace<&ChromeTraces::Kill_Chrome_Thumbnails>()},
      {"Kill_Chrome_Local_Storage", Trace<&ChromeTraces::Kill_Chrome_Local_Storage>()},
      {"Kill_Chrome_Jump_List", Trace<&ChromeTraces::Kill_Chrome_Jump_List>()},
      {"Kill_Chrome_Session", Trace<&ChromeTraces::Kill_Chrome_Session>()},
      {"Kill_Chrome_Flash_Cookies", Trace<&ChromeTraces::Kill_Chrome_Flash_Cookies>()},
      {"Kill_Chrome_Top_Sites", Trace<&ChromeTraces::Kill_Chrome_Top_Sites>()},
      {"Kill_Safari_History", Trace<&SafariTraces::Kill_Safari_History>()},
      {"Kill_Safari_Cache", Trace<&SafariTraces::Kill_Safari_Cache>()},
      {"Kill_Safari_Cookies", Trace<&SafariTraces::Kill_Safari_Cookies>()},
      {"Kill_Safari_Downloads", Trace<&SafariTraces::Kill_Safari_Downloads>()},
      {"Kill_Safari_AutoComplete", Trace<&SafariTraces::Kill_Safari_AutoComplete>()},
      {"Kill_Safari_Thumbnails", Trace<&SafariTraces::Kill_Safari_Thumbnails>()},
      {"Kill_Safari_Top_Sites", Trace<&SafariTraces::Kill_Safari_Top_Sites>()},
      {"Kill_Safari_Local_Storage", Trace<&SafariTraces::Kill_Safari_Local_Storage>()},
      {"Kill_Safari_Session", Trace<&SafariTraces::Kill_Safari_Session>()},
      {"Kill_AOL_Droplist", Trace<&AolTraces::Kill_AOL_Droplist>()},
      {"Kill_AOL_Cache", Trace<&AolTraces::Kill_AOL_Cache>()},
      {"Kill_Opera", Trace<&AolTraces::Kill_Opera>()},
      {"GetCacheURLList", Trace<&IeTraces::GetCacheURLList>()},
      {"Kill_Typed_URLs", Trace<&IeTraces::Kill_Typed_URLs>()},
      {"Kill_History_Store", Trace<&IeTraces::Kill_History_Store>()},
      {"Kill_History_Helper", Trace<&IeTraces::Kill_History_Helper>()},
      {"Kill_Temp_Helper", Trace<&IeTraces::Kill_Temp_Helper>()},
      {"Kill_Cookies_Helper", Trace<&IeTraces::Kill_Cookies_Helper>()},
      {"Kill_Cache_Entries", Bind([](Program& p, std::int16_t mode) {
         p.trace_units().ie.Kill_Cache_Entries(static_cast<CachePass>(mode));
       })},
      {"Strip_Cookie_Suffix", Bind([](Program&, const std::string& text) { return Strip_Cookie_Suffix(text); })},
      {"Kill_Cookie_Files", Trace<&IeTraces::Kill_Cookie_Files>()},
      {"Kill_Google_Bar", Trace<&IeTraces::Kill_Google_Bar>()},
      {"Kill_Search_History", Trace<&IeTraces::Kill_Search_History>()},
      {"Kill_IE_Recovery", Trace<&IeTraces::Kill_IE_Recovery>()},
      {"Kill_Edge_Cache", Trace<&IeTraces::Kill_Edge_Cache>()},
      {"Schedule_Index_Dat_WinInit", Trace<&IndexDat::Schedule_Index_Dat_WinInit>()},
      {"Schedule_Index_Dat_NT",
       Bind([](Program& p, std::int16_t flag) { p.trace_units().index_dat.Schedule_Index_Dat_NT(flag); })},
      {"Clear_Auto_Exec2",
       Bind([](Program& p, std::int16_t kind) { p.trace_units().index_dat.Clear_Auto_Exec2(kind); })},
      {"Kill_IE_AutoComplete", Trace<&AutoCompleteStore::Kill_IE_AutoComplete>()},
      {"RenableAutoComplete", Trace<&AutoCompleteStore::RenableAutoComplete>()},
      {"Delete_Key_Tree", Bind([](Program& p, KeyHandle root, const std::string& key) {
         p.trace_units().auto_complete.Delete_Key_Tree(root, key);
       })},
      {"Fill_Cookie_List", Bind([](Program& p) { p.cookie_manager().Fill_Cookie_List(); })},
      {"Kill_Run_MRU", Trace<&WindowsTraces::Kill_Run_MRU>()},
      {"Kill_Recent_Docs", Trace<&WindowsTraces::Kill_Recent_Docs>()},
      {"Kill_Media_Player", Trace<&WindowsTraces::Kill_Media_Player>()},
      {"Kill_Recycle_Bin", Trace<&WindowsTraces::Kill_Recycle_Bin>()},
      {"Kill_File_Fragments", Trace<&WindowsTraces::Kill_File_Fragments>()},
      {"Kill_Windows_Temp", Trace<&WindowsTraces::Kill_Windows_Temp>()},
      {"Kill_Office_Recent", Trace<&WindowsTraces::Kill_Office_Recent>()},
      {"Empty_Recycle_Bin", Bind([](Program& p, const std::optional<std::string>& root) {
         return p.trace_units().windows.Empty_Recycle_Bin(root.value_or(""));
       })},
      {"Query_Recycle_Bin", Bind([](Program& p) { return p.trace_units().windows.Query_Recycle_Bin(); })},
  };
  return table;
}

}  // namespace routines

}  // namespace qb::rehearse
