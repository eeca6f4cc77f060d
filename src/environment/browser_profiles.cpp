#include "environment/browser_profiles.h"

#include <algorithm>
#include <vector>

#include "runtime/folders.h"

namespace qb {

namespace {

// `path` without its parts "." and "..", as Windows would resolve it; what climbs above the drive stays there.
std::vector<std::string_view> Resolved(std::string_view path) {
  std::vector<std::string_view> parts;
  while (!path.empty()) {
    const std::size_t cut = std::min(path.find_first_of("\\/"), path.size());
    const std::string_view part = path.substr(0, cut);
    if (part == "..") {
      if (parts.size() > 1) parts.pop_back();
    } else if (!part.empty() && part != ".") {
      parts.push_back(part);
    }
    path.remove_prefix(std::min(cut + 1, path.size()));
  }
  return parts;
}

// A profile's name as it stands, or, where it climbs with ".." and comes back, what it comes to below `folder`. One
// that leaves the folder keeps its "..", by which whoever deletes in it refuses it.
std::string NameBelow(const std::string& folder, const std::string& name) {
  if (name.find("..") == std::string::npos) return name;
  const std::vector<std::string_view> above = Resolved(folder);
  const std::string path = folder + name;
  const std::vector<std::string_view> parts = Resolved(path);
  if (parts.size() < above.size() || !std::equal(above.begin(), above.end(), parts.begin(), SameText)) return name;
  std::string resolved;
  for (std::size_t i = above.size(); i < parts.size(); ++i) {
    if (!resolved.empty()) resolved += '\\';
    resolved += parts[i];
  }
  return resolved;
}

}  // namespace

std::string BrowserProfiles::LocalDataPath(std::string_view below) const {
  if (folders_.Get_Version_Code() == kLocalSettingsCode) {
    return folders_.Get_Special_Folder(kUserProfile) + "\\Local Settings\\Application Data" + std::string(below);
  }
  return folders_.Get_Special_Folder(kLocalData) + std::string(below);
}

bool BrowserProfiles::ProgramIsHere(std::string_view below) const {
  // A 64-bit Windows keeps programs of 32 bits in a folder beside that of the others.
  const std::string programs = folders_.Get_Special_Folder(kProgramFiles);
  return channels_.CanOpen(programs + std::string(below)) ||
         channels_.CanOpen(programs + " (x86)" + std::string(below));
}

// Deliberate: the three routines of Safari ask for the version, and its folders are the same on each.
bool BrowserProfiles::Check_Safari_Installed() const {
  static_cast<void>(folders_.Get_Version_Code());
  return ProgramIsHere("\\Safari\\Safari.exe");
}

std::string BrowserProfiles::Get_Safari_Profile_Path() const {
  static_cast<void>(folders_.Get_Version_Code());
  return folders_.Get_Special_Folder(kRoamingData) + "\\Apple Computer\\Safari";
}

std::string BrowserProfiles::Get_Safari_Local_Profile_Path() const {
  static_cast<void>(folders_.Get_Version_Code());
  return folders_.Get_Special_Folder(kLocalData) + "\\Apple Computer\\Safari";
}

bool BrowserProfiles::Check_Chrome_Installed() const {
  constexpr std::string_view kChrome = "\\Google\\Chrome\\Application\\chrome.exe";
  const std::string places[] = {
      folders_.Get_Special_Folder(kLocalData),
      folders_.Get_Special_Folder(kUserProfile) + "\\Local Settings\\Application Data",
  };
  for (const std::string& place : places) {
    if (channels_.CanOpen(place + std::string(kChrome))) return true;
  }
  return ProgramIsHere(kChrome);
}

std::string BrowserProfiles::Get_Chrome_Profile_Path() const {
  return LocalDataPath("\\Google\\Chrome\\User Data\\Default");
}

std::string BrowserProfiles::Get_Chrome_Multi_Profile_Path(int number) const {
  return LocalDataPath("\\Google\\Chrome\\User Data\\Profile " + std::to_string(number));
}

bool BrowserProfiles::Check_Chrome_Multi_Profile_Path(int number) const {
  return FolderExists(platform_.files, Get_Chrome_Multi_Profile_Path(number));
}

std::string BrowserProfiles::Get_IE_Profile_Path() const {
  return LocalDataPath("\\Microsoft\\Internet Explorer\\Recovery");
}

BrowserProfiles::IniProfile BrowserProfiles::ReadProfile(std::string_view ini_below_roaming) const {
  constexpr std::string_view kIniName = "profiles.ini";
  // Deliberate: the first nine characters are taken to be "Profiles/" without a test.
  constexpr std::size_t kFolderAndSlash = 9;
  const std::string ini = folders_.Get_Special_Folder(kRoamingData) + std::string(ini_below_roaming);
  const std::string path = folders_.Read_Ini_Value("Profile0", "Path", ini);
  IniProfile profile;
  const std::string folder = WithoutLast(ini, kIniName.size()) + "Profiles\\";
  if (path.size() > kFolderAndSlash) profile.name = NameBelow(folder, path.substr(kFolderAndSlash));
  profile.path = folder + profile.name;
  return profile;
}

void BrowserProfiles::Read_Firefox_Profile() {
  const IniProfile profile = ReadProfile("\\Mozilla\\Firefox\\profiles.ini");
  firefox_name_ = profile.name;
  firefox_path_ = profile.path;
  firefox_local_path_ = folders_.Get_Special_Folder(kLocalData) + "\\Mozilla\\Firefox\\Profiles\\" + profile.name;
  settings_.SetText(Setting::NetscapeDir, firefox_path_);
}

void BrowserProfiles::Read_Netscape_Profile() {
  netscape_path_ = ReadProfile("\\Netscape\\NSB\\profiles.ini").path;
}

}  // namespace qb
