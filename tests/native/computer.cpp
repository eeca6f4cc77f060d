#include "computer.h"

#include <wininet.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iomanip>
#include <sstream>

namespace native {

namespace {

// Paths of the comparison are wide, so that each name is itself, and extended, so that none is too long.
std::string ReadAll(const std::wstring& path) {
  std::ifstream file(std::filesystem::path(path), std::ios::binary);
  return file ? (std::ostringstream() << file.rdbuf()).str() : "(cannot be read)";
}

std::wstring Wide(const std::string& ascii) {
  return std::wstring(ascii.begin(), ascii.end());
}

// Short enough to keep for every file of the system.
std::string Digest(const std::string& content) {
  return std::to_string(content.size()) + ":" + std::to_string(std::hash<std::string>()(content));
}

void AddFolder(const std::wstring& folder, State& state) {
  const std::wstring extended = L"\\\\?\\" + folder;
  WIN32_FIND_DATAW found;
  HANDLE search = FindFirstFileW((extended + L"\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::wstring name = found.cFileName;
    if (name == L"." || name == L"..") continue;
    const std::wstring path = folder + L"\\" + name;
    const bool is_folder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    // The system's own programs are many and large, and the program cannot tell one from another.
    const bool system_part = _wcsicmp(path.c_str(), L"C:\\windows\\system32") == 0 ||
                             _wcsicmp(path.c_str(), L"C:\\windows\\syswow64") == 0 ||
                             _wcsicmp(path.c_str(), L"C:\\windows\\winsxs") == 0;
    state[Utf8(path)] = is_folder ? "folder" : Digest(ReadAll(extended + L"\\" + name));
    if (is_folder && !system_part) AddFolder(path, state);
  } while (FindNextFileW(search, &found));
  FindClose(search);
}

void AddKey(HKEY parent, const std::string& path, State& state) {
  HKEY key = nullptr;
  if (RegOpenKeyExA(parent, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
  state[path + "\\"] = "key";
  for (DWORD index = 0;; ++index) {
    char name[1024];
    std::vector<unsigned char> data(65536);
    DWORD name_size = sizeof name, data_size = static_cast<DWORD>(data.size()), type = 0;
    if (RegEnumValueA(key, index, name, &name_size, nullptr, &type, data.data(), &data_size) != ERROR_SUCCESS) break;
    state[path + "\\" + name] =
        std::to_string(type) + Digest(std::string(data.begin(), data.begin() + static_cast<int>(data_size)));
  }
  for (DWORD index = 0;; ++index) {
    char name[512];
    DWORD size = sizeof name;
    if (RegEnumKeyExA(key, index, name, &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
    AddKey(parent, path + "\\" + name, state);
  }
  RegCloseKey(key);
}

// The entry has a file that the system names: its path, empty if the entry was refused.
std::string MakeCacheEntry(const std::string& url, DWORD type) {
  char path[MAX_PATH] = "";
  const char* extension = (type & COOKIE_CACHE_ENTRY) != 0 ? "txt" : "htm";
  if (!CreateUrlCacheEntryA(url.c_str(), 0, extension, path, 0)) return {};
  MakeFile(path, "cached");
  return CommitUrlCacheEntryA(url.c_str(), path, {}, {}, type, nullptr, 0, nullptr, nullptr) ? path : "";
}

std::string Bytes(const std::string& digits) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

}  // namespace

std::string Utf8(const std::wstring& text) {
  std::string narrow(4 * text.size() + 1, '\0');
  narrow.resize(
      static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                                   narrow.data(), static_cast<int>(narrow.size()), nullptr, nullptr)));
  return narrow;
}

std::string LocalData(const std::string& path) {
  const char* folder = std::getenv("LOCALAPPDATA");
  return (folder == nullptr ? std::string() : folder) + "\\" + path;
}

void MakeFile(const std::string& path, const std::string& content) {
  std::error_code problem;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), problem);
  std::ofstream(path, std::ios::binary) << content;
}

Texts FilesIn(const std::string& folder) {
  Texts names;
  std::error_code problem;
  for (const auto& file : std::filesystem::directory_iterator(folder, problem)) {
    names.push_back(file.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

bool Exists(const std::string& path) {
  return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void SetValue(const std::string& key, const std::string& name, const std::string& data) {
  HKEY opened = nullptr;
  RegCreateKeyA(HKEY_CURRENT_USER, key.c_str(), &opened);
  RegSetValueExA(opened, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(data.c_str()),
                 static_cast<DWORD>(data.size() + 1));
  RegCloseKey(opened);
}

bool CanOpen(const std::string& key, REGSAM rights) {
  HKEY opened = nullptr;
  return RegOpenKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, rights, &opened) == ERROR_SUCCESS &&
         RegCloseKey(opened) == ERROR_SUCCESS;
}

void DeleteKey(const std::string& key) {
  RegDeleteTreeA(HKEY_CURRENT_USER, key.c_str());
}

std::string ReadBytes(const std::string& path) {
  return Exists(path) ? ReadAll(Wide(path)) : std::string();
}

std::string ReadFile(const std::string& path) {
  std::string content = ReadBytes(path);
  content.erase(std::remove(content.begin(), content.end(), '\r'), content.end());
  return content;
}

std::string Value(const std::string& key, const std::string& name) {
  wchar_t data[1024] = L"";
  DWORD size = sizeof data;
  RegGetValueW(HKEY_CURRENT_USER, Wide(key).c_str(), Wide(name).c_str(), RRF_RT_REG_SZ, nullptr, data, &size);
  return Utf8(data);
}

void MakeCookieEntry(const std::string& source) {
  MakeCacheEntry("Cookie:" + source, NORMAL_CACHE_ENTRY | COOKIE_CACHE_ENTRY);
}

Texts CacheUrls() {
  Texts urls;
  std::vector<unsigned long long> block(4096);
  auto* entry = reinterpret_cast<INTERNET_CACHE_ENTRY_INFOA*>(block.data());
  auto size = [&] { return static_cast<DWORD>(block.size() * sizeof block[0]); };
  DWORD room = size();
  HANDLE search = FindFirstUrlCacheEntryA(nullptr, entry, &room);
  if (search == nullptr) return urls;
  do {
    urls.push_back(entry->lpszSourceUrlName);
    room = size();
  } while (FindNextUrlCacheEntryA(search, entry, &room));
  FindCloseUrlCache(search);
  std::sort(urls.begin(), urls.end());
  return urls;
}

void EmptyUrlCache() {
  for (const std::string& url : CacheUrls()) DeleteUrlCacheEntryA(url.c_str());
}

Texts MakeTraces(const std::string& name, const std::string& heading) {
  Texts places;
  std::istringstream script(ReadFile("C:\\" + name + ".rehearsal"));
  bool inside = false;
  for (std::string line; std::getline(script, line);) {
    if (line.starts_with("# --- ")) inside = line == "# --- " + heading + " ---";
    Texts words;
    std::istringstream in(line);
    for (std::string word; in >> std::quoted(word, '"', '\1');) words.push_back(word);
    if (!inside || words.size() < 3) continue;
    if (words[0] == "file") {  // PATH TEXT, PATH hex DIGITS or PATH size NUMBER
      MakeFile(words[1], words.size() == 3   ? words[2]
                         : words[2] == "hex" ? Bytes(words[3])
                                             : std::string(std::stoul(words[3]), 'A'));
      places.push_back(words[1]);
    } else if (words[0] == "attrib") {  // PATH +r +h
      SetFileAttributesA(words[1].c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    } else if (words[0] == "reg") {  // add HKCU\KEY NAME sz DATA
      const std::string key = words[2].substr(5);
      SetValue(key, words[3], words[5]);
      places.push_back(key + "\\");
    } else if (words[0] == "cache") {  // add URL TYPE
      places.push_back(MakeCacheEntry(words[2], std::stoul(words[3], nullptr, 16)));
    }
  }
  Check(!places.empty(), "the script " + name + " makes traces: " + heading);
  return places;
}

std::string ThoseThere(const Texts& places, bool there) {
  std::string found;
  for (const std::string& place : places) {
    const bool is_key = place.ends_with('\\');
    if ((is_key ? CanOpen(place.substr(0, place.size() - 1), KEY_READ) : Exists(place)) == there) {
      found += " '" + place + "'";
    }
  }
  return found;
}

std::string Joined(const Texts& lines) {
  std::string joined;
  for (const std::string& line : lines) joined += line + "\n";
  return joined;
}

State TakeState() {
  State state;
  AddFolder(L"C:", state);
  AddKey(HKEY_CURRENT_USER, "Software", state);
  return state;
}

void CheckNothingElse(const State& before, Texts expected, const std::string& what) {
  for (const char* place :
       {"Software\\VB and VBA Program Settings", "Software\\Microsoft\\Windows\\CurrentVersion\\Run\\",
        "Software\\Wine\\", "C:\\users\\root\\AppData\\Local\\Quillbarrow"}) {
    expected.push_back(place);
  }
  const State after = TakeState();
  std::string different;
  auto add = [&](const char* how, const std::string& place) {
    if (std::none_of(expected.begin(), expected.end(), [&](const std::string& start) {
          return _strnicmp(place.c_str(), start.c_str(), start.size()) == 0;
        })) {
      different += "\n     " + (how + place);
    }
  };
  for (const auto& [place, content] : before) {
    const auto found = after.find(place);
    if (found == after.end() || found->second != content) add(found == after.end() ? "gone: " : "changed: ", place);
  }
  for (const auto& [place, content] : after) {
    if (before.count(place) == 0) add("new: ", place);
  }
  Check(different.empty(), what + different);
}

}  // namespace native
