#include "tests/native/snapshot.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/win32/windows_api.h"

namespace qb::native {

namespace {

constexpr std::uint64_t kContentUpTo = 1 << 20;  // bytes
using Things = std::map<std::wstring, std::string>;

std::string Content(const std::wstring& path) {
  std::ifstream file(std::filesystem::path(path), std::ios::binary);
  if (!file) return "(cannot be opened)";
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

template <typename T>
void Append(std::string& bytes, const T& value) {
  bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void AddFolder(const std::wstring& folder, Things& things) {
  WIN32_FIND_DATAW data;
  HANDLE find = ::FindFirstFileW((folder + L"\\*").c_str(), &data);
  if (find == INVALID_HANDLE_VALUE) return;
  do {
    const std::wstring name = data.cFileName;
    if (name == L"." || name == L"..") continue;
    const std::wstring path = folder + L"\\" + name;
    std::string& seen = things[path];
    Append(seen, data.dwFileAttributes);
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
      AddFolder(path, things);
      continue;
    }
    Append(seen, data.nFileSizeHigh);
    Append(seen, data.nFileSizeLow);
    Append(seen, data.ftLastWriteTime);
    if (data.nFileSizeHigh == 0 && data.nFileSizeLow <= kContentUpTo) seen += Content(path);
  } while (::FindNextFileW(find, &data));
  ::FindClose(find);
}

void AddKey(HKEY parent, const std::wstring& key, const std::wstring& name, Things& things) {
  HKEY opened = nullptr;
  if (::RegOpenKeyExW(parent, key.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return;
  things[name] = "key";
  std::array<wchar_t, 16384> text{};
  std::vector<BYTE> data(1 << 16);
  for (DWORD i = 0;; ++i) {
    DWORD length = static_cast<DWORD>(text.size()), type = 0, size = static_cast<DWORD>(data.size());
    if (::RegEnumValueW(opened, i, text.data(), &length, nullptr, &type, data.data(), &size) != ERROR_SUCCESS) break;
    std::string& seen = things[name + L" : " + text.data()];
    Append(seen, type);
    seen.append(reinterpret_cast<const char*>(data.data()), size);
  }
  for (DWORD i = 0;; ++i) {
    DWORD length = static_cast<DWORD>(text.size());
    if (::RegEnumKeyExW(opened, i, text.data(), &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
    const std::wstring sub_key = text.data();
    AddKey(opened, sub_key, name + L"\\" + sub_key, things);
  }
  ::RegCloseKey(opened);
}

}  // namespace

Snapshot Snapshot::Take() {
  Snapshot snapshot;
  AddFolder(L"C:", snapshot.things_);
  AddKey(HKEY_CURRENT_USER, L"", L"HKCU", snapshot.things_);
  AddKey(HKEY_LOCAL_MACHINE, L"Software", L"HKLM\\Software", snapshot.things_);
  return snapshot;
}

std::vector<std::wstring> Snapshot::ChangesTo(const Snapshot& later) const {
  std::vector<std::wstring> changes;
  for (const auto& [name, seen] : things_) {
    auto found = later.things_.find(name);
    if (found == later.things_.end())
      changes.push_back(L"-" + name);
    else if (found->second != seen)
      changes.push_back(L"*" + name);
  }
  for (const auto& [name, seen] : later.things_) {
    if (things_.count(name) == 0) changes.push_back(L"+" + name);
  }
  return changes;
}

}  // namespace qb::native
