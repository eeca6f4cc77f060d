// The run, its traces and what it writes down.
#include "app/rehearse/console/routines.h"

namespace qb::rehearse {
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
      {"Kill_Cache_Entries", Bind([](Program& p, std::int16_t mode) {
         p.trace_units().ie.Kill_Cache_Entries(static_cast<CachePass>(mode));
       })},
      {"Strip_Cookie_Suffix", Bind([](Program&, const std::string& text) { return Strip_Cookie_Suffix(text); })},
      {"Schedule_Index_Dat_NT",
       Bind([](Program& p, std::int16_t flag) { p.trace_units().index_dat.Schedule_Index_Dat_NT(flag); })},
      {"Clear_Auto_Exec2",
       Bind([](Program& p, std::int16_t kind) { p.trace_units().index_dat.Clear_Auto_Exec2(kind); })},
      {"Delete_Key_Tree", Bind([](Program& p, KeyHandle root, const std::string& key) {
         p.trace_units().auto_complete.Delete_Key_Tree(root, key);
       })},
      {"Fill_Cookie_List", Bind([](Program& p) { p.cookie_manager().Fill_Cookie_List(); })},
      {"Empty_Recycle_Bin", Bind([](Program& p, const std::optional<std::string>& root) {
         return p.trace_units().windows.Empty_Recycle_Bin(root.value_or(""));
       })},
      {"Query_Recycle_Bin", Bind([](Program& p) { return p.trace_units().windows.Query_Recycle_Bin(); })},
  };
  return table;
}

}  // namespace routines

}  // namespace qb::rehearse
