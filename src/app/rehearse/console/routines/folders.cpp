// Folders and browser profiles.
#include "app/rehearse/console/routines.h"

namespace qb::rehearse {

namespace routines {

std::span<const ProgramRoutine> Folders() {
  static const std::vector<ProgramRoutine> table = {
      {"Get_Special_Folder",
       Bind([](Program& p, std::uint32_t number) { return p.services().folders.Get_Special_Folder(number); })},
      {"Read_Ini_Value",
       Bind([](Program& p, const std::string& section, const std::string& key, const std::string& file) {
         return p.services().folders.Read_Ini_Value(section, key, file);
       })},
      {"Get_Version_Code", Bind([](Program& p) { return p.services().folders.Get_Version_Code(); })},
      {"Get_Short_Path",
       Bind([](Program& p, const std::string& path) { return p.services().folders.Get_Short_Path(path); })},
      {"Get_User_Name", Bind([](Program& p) { return p.services().folders.Get_User_Name(); })},
      {"Get_Windows_Dir", Bind([](Program& p) { return p.services().folders.Get_Windows_Dir(); })},
      {"Add_Backslash", Bind([](Program&, const std::string& path) { return Add_Backslash(path); })},
      {"Open_URL", Bind([](Program& p, const std::string& url) {
         p.services().folders.Open_URL(url, p.services().data_folder, p.main_window().Window());
       })},
      {"Shell_Open", Bind([](Program& p, const std::string& path) { return p.services().folders.Shell_Open(path); })},
      {"GetWinDirs", Bind([](Program& p) { p.products().GetWinDirs(); })},
      {"GetIEVersion", Bind([](Program& p) { p.products().GetIEVersion(); })},
      {"Get_AOL_Dir", Bind([](Program& p) { return p.products().Get_AOL_Dir(); })},
      {"Get_MSN8_Profile", Bind([](Program& p) { return p.products().Get_MSN8_Profile(); })},
      {"Get45CurrentUser", Bind([](Program& p) { return p.products().Get45CurrentUser(); })},
      {"Get45CurrentUserDir", Bind([](Program& p) { return p.products().Get45CurrentUserDir(); })},
      {"Get45CurrentNetscapeDir", Bind([](Program& p) { return p.products().Get45CurrentNetscapeDir(); })},
      {"cmdBrowse_Click2", Bind([](Program& p) { return p.products().cmdBrowse_Click2(p.main_window().Window()); })},
      {"AOL_Browse", Bind([](Program& p) { return p.products().AOL_Browse(p.main_window().Window()); })},
      {"Check_Safari_Installed", Bind([](Program& p) { return p.services().profiles.Check_Safari_Installed(); })},
      {"Get_Safari_Profile_Path", Bind([](Program& p) { return p.services().profiles.Get_Safari_Profile_Path(); })},
      {"Get_Safari_Local_Profile_Path",
       Bind([](Program& p) { return p.services().profiles.Get_Safari_Local_Profile_Path(); })},
      {"Check_Chrome_Installed", Bind([](Program& p) { return p.services().profiles.Check_Chrome_Installed(); })},
      {"Get_Chrome_Profile_Path", Bind([](Program& p) { return p.services().profiles.Get_Chrome_Profile_Path(); })},
      {"Get_Chrome_Multi_Profile_Path",
       Bind([](Program& p, int number) { return p.services().profiles.Get_Chrome_Multi_Profile_Path(number); })},
      {"Check_Chrome_Multi_Profile_Path",
       Bind([](Program& p, int number) { return p.services().profiles.Check_Chrome_Multi_Profile_Path(number); })},
      {"Get_IE_Profile_Path", Bind([](Program& p) { return p.services().profiles.Get_IE_Profile_Path(); })},
      {"Read_Firefox_Profile", Bind([](Program& p) { p.services().profiles.Read_Firefox_Profile(); })},
      {"Read_Netscape_Profile", Bind([](Program& p) { p.services().profiles.Read_Netscape_Profile(); })},
  };
  return table;
}

}  // namespace routines

}  // namespace qb::rehearse
