// The delete path.
#include "app/rehearse/console/routines.h"

namespace qb::rehearse {

namespace routines {

std::span<const ProgramRoutine> Delete() {
  static const std::vector<ProgramRoutine> table = {
      {"Wipe_File", Bind([](Program& p, const std::string& path) { StepOver(p.delete_path().Wipe_File(path)); })},
      {"File_Can_Open", Bind([](Program& p, const std::string& path) { return p.delete_path().File_Can_Open(path); })},
      {"Wipe_Folder_Files",
       Bind([](Program& p, const std::string& folder) { p.delete_path().Wipe_Folder_Files(folder); })},
      {"Delete_Folder_Files",
       Bind([](Program& p, const std::string& folder) { p.delete_path().Delete_Folder_Files(folder); })},
      {"Count_Matching_Files",
       Bind([](Program& p, const std::string& pattern, std::optional<bool> hidden, std::optional<bool> system) {
         return p.delete_path().Count_Matching_Files(pattern, hidden.value_or(false), system.value_or(false));
       })},
  };
  return table;
}

}  // namespace routines

}  // namespace qb::rehearse
