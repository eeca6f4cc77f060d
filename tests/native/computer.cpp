#include "computer.h"

#include <wininet.h>

#include <algorithm>
#include <cstdio>

namespace native {

namespace {

// Paths of the comparison are wide, so that each name is itself, and extended, so that none is too long.
std::string ReadAll(const std::wstring& path) {
  std::string content;
  FILE* file = _wfopen(path.c_str(), L"rb");
  if (file == nullptr) return "(cannot be read)";
  char block[65536];
  for (std::size_t got; (got = std::fread(block, 1, sizeof block, file)) > 0;) content.append(block, got);
  std::fclose(file);
  return content;
}

std::wstring Wide(const std::string& ascii) {
  return std::wstring(ascii.begin(), ascii.end());
}

std::string Utf8(const std::wstring& text) {
  std::string narrow(4 * text.size() + 1, '\0');
  narrow.resize(
      static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                                   narrow.data(), static_cast<int>(narrow.size()), nullptr, nullptr)));
  return narrow;
}

// Short enough to keep for every file of the system: length and a sum over the bytes.
std::string Digest(const std::string& content) {
  unsigned long long sum = 14695981039346656037ull;  // FNV-1a
  for (unsigned char byte : content) sum = (sum ^ byte) * 1099511628211ull;
  return std::to_string(content.size()) + ":" + std::to_string(sum);
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

bool StartsWith(const std::string& text, const std::string& start) {
  return text.size() >= start.size() && _strnicmp(text.c_str(), start.c_str(), start.size()) == 0;
}

}  // namespace

void MakeFile(const std::string& path, const std::string& content) {
  for (std::size_t cut = path.find('\\', 3); cut != std::string::npos; cut = path.find('\\', cut + 1)) {
    CreateDirectoryA(path.substr(0, cut).c_str(), nullptr);
  }
  FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return;
  std::fwrite(content.data(), 1, content.size(), file);
  std::fclose(file);
}

std::vector<std::string> FilesIn(const std::string& folder) {
  State all;
  AddFolder(Wide(folder), all);
  std::vector<std::string> names;
  for (const auto& [path, content] : all) {
    const std::string name = path.substr(folder.size() + 1);
    if (name.find('\\') == std::string::npos) names.push_back(name);
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

bool KeyExists(const std::string& key) {
  HKEY opened = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return false;
  RegCloseKey(opened);
  return true;
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
  char data[1024] = "";
  DWORD size = sizeof data - 1;
  RegGetValueA(HKEY_CURRENT_USER, key.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, data, &size);
  return data;
}

std::string MakeCacheEntry(const std::string& url, DWORD type, const std::string& extension) {
  char path[MAX_PATH] = "";
  if (!CreateUrlCacheEntryA(url.c_str(), 0, extension.c_str(), path, 0)) return {};
  MakeFile(path, "cached");
  FILETIME none{};
  return CommitUrlCacheEntryA(url.c_str(), path, none, none, type, nullptr, 0, nullptr, nullptr) ? path : "";
}

std::string MakeCookieEntry(const std::string& source) {
  return MakeCacheEntry("Cookie:" + source, NORMAL_CACHE_ENTRY | COOKIE_CACHE_ENTRY, "txt");
}

std::vector<std::string> CacheUrls() {
  std::vector<std::string> urls;
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

std::string Joined(const std::vector<std::string>& lines) {
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

std::vector<std::string> Differences(const State& before, const State& after,
                                     const std::vector<std::string>& expected) {
  auto is_expected = [&](const std::string& place) {
    return std::any_of(expected.begin(), expected.end(),
                       [&](const std::string& start) { return StartsWith(place, start); });
  };
  std::vector<std::string> lines;
  for (const auto& [place, content] : before) {
    auto found = after.find(place);
    if (is_expected(place)) continue;
    if (found == after.end())
      lines.push_back("gone: " + place);
    else if (found->second != content)
      lines.push_back("changed: " + place);
  }
  for (const auto& [place, content] : after) {
    if (before.count(place) == 0 && !is_expected(place)) lines.push_back("new: " + place);
  }
  return lines;
}

}  // namespace native
