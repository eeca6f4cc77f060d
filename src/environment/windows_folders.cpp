#include "environment/windows_folders.h"

#include "runtime/folders.h"

namespace qb {

namespace {

constexpr std::uint32_t kInvalidArgument = 0x80070057;  // E_INVALIDARG
constexpr std::uint32_t kShellSuccess = 32;             // results above it are no errors

struct VersionRow {
  std::uint32_t platform_id;
  std::string_view version;  // "" is any other
  std::int16_t code;
};

// The first row that matches decides. Code 2, Windows NT 4, is never detected.
constexpr VersionRow kVersions[] = {
    {1, "4.0", 0},
    {1, "4.9", 4},
    {1, "4.1", 1},
    {1, "", 1},
    {2, "5.0", 3},
    {2, "5.1", kLocalSettingsCode},
    {2, "6.0", 6},
    {2, "6.1", 7},
    // Deliberate: everything newer than 6.1 counts as the old layout.
    {2, "", kLocalSettingsCode},
};

}  // namespace

std::string WindowsFolders::Get_Special_Folder(std::uint32_t number) const {
  TextBuffer path(260);
  switch (platform_.shell.SHGetFolderPathA(number, path)) {
    case 0:
      return path.text();
    case 1:
      return "Folder Does Not Exist";
    case kInvalidArgument:
    default:
      return "Folder Not Valid on this OS";
  }
}

std::string WindowsFolders::Read_Ini_Value(std::string_view section, std::string_view key,
                                           std::string_view file) const {
  TextBuffer value(255);
  platform_.system.GetPrivateProfileStringA(section, key, "", value, file);
  return value.text();
}

std::int16_t WindowsFolders::Get_Version_Code() const {
  auto version = platform_.system.GetVersionExA();
  if (!version.ok()) return 0;
  std::string text = std::to_string(version.value.major) + "." + std::to_string(version.value.minor);
  if (version.value.platform_id == 1) text = text.substr(0, 3);
  for (const VersionRow& row : kVersions) {
    if (row.platform_id == version.value.platform_id && (row.version.empty() || row.version == text)) return row.code;
  }
  return 0;
}

std::string WindowsFolders::Get_Short_Path(std::string_view path) const {
  if (path.empty()) return {};
  TextBuffer buffer(260);
  auto length = platform_.files.GetShortPathNameA(path, buffer);
  return length.ok() && length.value < buffer.size() ? buffer.text() : std::string();
}

std::string WindowsFolders::Get_User_Name() const {
  TextBuffer name(199);
  auto length = platform_.system.GetUserNameA(name);
  return length.ok() ? name.text() : std::string();
}

std::string WindowsFolders::Get_Windows_Dir() const {
  TextBuffer folder(255);
  auto length = platform_.system.GetWindowsDirectoryA(folder);
  return length.ok() && length.value < folder.size() ? folder.text() : std::string();
}

void WindowsFolders::Open_URL(std::string_view url, std::string_view data_folder, WindowHandle owner) {
  const std::string page = std::string(data_folder) + "\\temphtm.HTM";
  const int number = channels_.FreeNumber();
  if (Ok(channels_.Open(number, page, ChannelMode::Output))) {
    StepOver(channels_.PrintLine(number, "<HTML> <\\HTML>"));
    StepOver(channels_.Close(number));
  }
  TextBuffer buffer(255);
  const bool found = platform_.shell.FindExecutableA(page, std::nullopt, buffer) > kShellSuccess;
  const std::string browser = found ? Trim(buffer.text()) : std::string();
  const bool opened =
      !browser.empty() && platform_.shell.ShellExecuteA(owner, "open", browser, url, std::nullopt, 1) > kShellSuccess;
  if (!opened) StepOver(Shell_Open(url));
  StepOver(DeleteFiles(platform_.files, page));
}

std::uint32_t WindowsFolders::Shell_Open(std::string_view path) {
  return platform_.shell.ShellExecuteA(WindowHandle::None, std::nullopt, path, std::nullopt, std::nullopt, 1);
}

std::string WindowsFolders::ProgramFolder() const {
  const std::string path = platform_.system.GetModuleFileNameA().value_or({});
  const std::size_t cut = path.rfind('\\');
  return cut == std::string::npos ? std::string() : path.substr(0, cut);
}

std::string WindowsFolders::ProgramBaseName() const {
  const std::string path = platform_.system.GetModuleFileNameA().value_or({});
  const std::string name = path.substr(path.rfind('\\') + 1);
  return name.substr(0, name.rfind('.'));
}

}  // namespace qb
