// The computer that the real program runs on: making traces, and comparing all else before and after.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <map>
#include <string>
#include <vector>

namespace native {

void MakeFile(const std::string& path, const std::string& content);  // with its parents
bool Exists(const std::string& path);
void SetValue(const std::string& key, const std::string& name, const std::string& data);  // below HKEY_CURRENT_USER
bool KeyExists(const std::string& key);
std::string Value(const std::string& key, const std::string& name);  // empty if there is none
// An entry of the URL cache through the system's own calls; false if it was refused.
bool MakeCacheEntry(const std::string& url, DWORD type);
// Windows makes the files of its URL cache when somebody first asks it.
void WakeUrlCache();
bool CacheEntryExists(const std::string& url);

// Every file of drive C: with its size and content, and every value of HKEY_CURRENT_USER\Software.
using State = std::map<std::string, std::string>;
State TakeState();
// One line for each difference that is not below one of `expected` (compared without regard to case).
std::vector<std::string> Differences(const State& before, const State& after, const std::vector<std::string>& expected);

}  // namespace native
