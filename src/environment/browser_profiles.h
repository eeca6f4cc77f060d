// Whether a browser is here and where its profile lies: path rules over the special folders, and one
// reader of an ini file.
#pragma once

#include <string>

#include "environment/windows_folders.h"
#include "settings/settings.h"

namespace qb {

class BrowserProfiles {
 public:
  BrowserProfiles(Platform& platform, const Channels& channels, const WindowsFolders& folders, Settings& settings)
      : platform_(platform), channels_(channels), folders_(folders), settings_(settings) {}

  bool Check_Safari_Installed() const;
  std::string Get_Safari_Profile_Path() const;
  std::string Get_Safari_Local_Profile_Path() const;
  bool Check_Chrome_Installed() const;
  std::string Get_Chrome_Profile_Path() const;
  // `number` is any; the folder need not be there. Numbers have no upper bound here.
  std::string Get_Chrome_Multi_Profile_Path(int number) const;
  bool Check_Chrome_Multi_Profile_Path(int number) const;
  std::string Get_IE_Profile_Path() const;

  // Reads the first profile out of profiles.ini, once at start. Without the file the name is empty and
  // the paths end in "\Profiles\".
  void Read_Firefox_Profile();
  void Read_Netscape_Profile();
  const std::string& FirefoxProfileName() const { return firefox_name_; }
  const std::string& FirefoxProfilePath() const { return firefox_path_; }
  const std::string& FirefoxLocalProfilePath() const { return firefox_local_path_; }
  const std::string& NetscapeProfilePath() const { return netscape_path_; }

 private:
  // A folder below the user's local data, which the layout of code 5 has elsewhere.
  std::string LocalDataPath(std::string_view below) const;
  // Whether a program's file can be opened below the folder of the programs, or below that of the 32-bit ones.
  bool ProgramIsHere(std::string_view below) const;
  // The profile's folder name and its full path, from the ini file below the roaming data.
  struct IniProfile {
    std::string name, path;
  };
  IniProfile ReadProfile(std::string_view ini_below_roaming) const;

  Platform& platform_;
  const Channels& channels_;
  const WindowsFolders& folders_;
  Settings& settings_;
  std::string firefox_name_, firefox_path_, firefox_local_path_, netscape_path_;
};

}  // namespace qb
