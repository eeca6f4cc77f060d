// Which Windows this is and where it keeps the user's folders, plus the helpers for paths and for
// opening a page in the browser.
#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"
#include "runtime/channels.h"
#include "runtime/text.h"

namespace qb {

// Shell folder numbers of Get_Special_Folder.
inline constexpr std::uint32_t kRoamingData = 26;   // CSIDL_APPDATA
inline constexpr std::uint32_t kLocalData = 28;     // CSIDL_LOCAL_APPDATA
inline constexpr std::uint32_t kProgramFiles = 38;  // CSIDL_PROGRAM_FILES
inline constexpr std::uint32_t kUserProfile = 40;   // CSIDL_PROFILE

// The version code of Windows XP, and of everything newer than 6.1: the folders lie below "\Local Settings".
inline constexpr std::int16_t kLocalSettingsCode = 5;

class WindowsFolders {
 public:
  WindowsFolders(Platform& platform, Channels& channels) : platform_(platform), channels_(channels) {}

  // Without a closing backslash. A folder that the shell does not know gives the text "Folder Does Not
  // Exist" or "Folder Not Valid on this OS", and a path made of that simply fails.
  std::string Get_Special_Folder(std::uint32_t number) const;
  // Empty for a missing file, section or key; at most 254 characters.
  std::string Read_Ini_Value(std::string_view section, std::string_view key, std::string_view file) const;
  // 0 to 7; a failed version call gives 0.
  std::int16_t Get_Version_Code() const;
  // The 8.3 form; empty on failure or for an empty path.
  std::string Get_Short_Path(std::string_view path) const;
  std::string Get_User_Name() const;
  // Without a closing backslash; empty on failure.
  std::string Get_Windows_Dir() const;
  // Opens a page in the user's browser. Windows tells which that is only for a file, so a small page is
  // written to the data folder and taken away again.
  void Open_URL(std::string_view url, std::string_view data_folder, WindowHandle owner);
  // Above 32 is success.
  std::uint32_t Shell_Open(std::string_view path);
  // The folder of the running program, without a closing backslash.
  std::string ProgramFolder() const;
  // Its name without folder and extension.
  std::string ProgramBaseName() const;

 private:
  Platform& platform_;
  Channels& channels_;
};

}  // namespace qb
