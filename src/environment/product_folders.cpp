#include "environment/product_folders.h"

namespace qb {

void ProductFolders::GetWinDirs() {
  ProductScope scope(reg_, "Microsoft", "Windows");
  const struct {
    std::string_view value;
    std::string& folder;
  } reads[] = {{"History", history_}, {"Recent", recent_}, {"Cookies", cookies_}, {"Cache", cache_}};
  for (const auto& read : reads) {
    read.folder = Add_Backslash(reg_.GetSetting2("CurrentVersion\\Explorer\\Shell Folders", read.value, ""));
  }
}

void ProductFolders::GetIEVersion() {
  ProductScope scope(reg_, "Microsoft", "Internet Explorer");
  const std::string version = reg_.GetSetting("", "Version", "");
  settings_.SaveNumber(Setting::IEVer, LeadingNumber(version.substr(0, 1)) == 6 ? 6 : 5);
}

std::string ProductFolders::Get_AOL_Dir() {
  ProductScope scope(reg_, "America Online", "America Online");
  return Add_Backslash(reg_.GetSetting("CurrentVersion", "AppPath", ""));
}

std::string ProductFolders::Get_MSN8_Profile() {
  std::string last_run_from;
  {
    ProductScope scope(reg_, "Microsoft", "MSN6");
    last_run_from = reg_.GetSetting2("", "LastRunFrom", "");
  }
  if (last_run_from.size() < 4) {
    settings_.SetText(Setting::MSN8Profile, "");
    return {};
  }
  StepOver(platform_.desktop.MessageBoxA(
      WindowHandle::None,
      "MSN Explorer was detected on your machine.  If you use MSN to browse the web you can set up your Profile Name "
      "on the next screen.",
      "Quillbarrow Setup Wizard", kBoxOk | kBoxInformation));
  asker_.AskGeneralSetup();
  return {};
}

std::string ProductFolders::Get45CurrentUser() {
  return reg_.GetSetting("Users", "CurrentUser", "");
}

std::string ProductFolders::Get45CurrentUserDir() {
  return reg_.GetSetting("Users\\" + Get45CurrentUser(), "DirRoot", "");
}

std::string ProductFolders::Get45CurrentNetscapeDir() {
  constexpr std::string_view kUsers = "Users\\";
  return WithoutLast(Get45CurrentUserDir(), Get45CurrentUser().size() + kUsers.size());
}

std::string ProductFolders::cmdBrowse_Click2(WindowHandle owner) {
  return Browse(owner, "Select the Netscape Directory \r\n(typically in \"C:\\Program Files\\Netscape\")");
}

std::string ProductFolders::AOL_Browse(WindowHandle owner) {
  return Browse(owner, "Select your AOL folder: ");
}

std::string ProductFolders::Browse(WindowHandle owner, std::string_view title) {
  constexpr std::uint32_t kFileSystemFoldersOnly = 1;  // BIF_RETURNONLYFSDIRS
  const ItemIdList item = platform_.shell.SHBrowseForFolderA(owner, title, kFileSystemFoldersOnly);
  if (item == ItemIdList::None) return {};
  TextBuffer path(260);
  const bool found = platform_.shell.SHGetPathFromIDListA(item, path);
  platform_.shell.CoTaskMemFree(item);
  return found ? path.text() : std::string();
}

}  // namespace qb
