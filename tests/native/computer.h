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
void DeleteKey(const std::string& key);                              // with all below it
std::string Value(const std::string& key, const std::string& name);  // empty if there is none
std::vector<std::string> FilesIn(const std::string& folder);         // names of files and folders, sorted
std::string ReadFile(const std::string& path);                       // its lines end in \n; empty if it cannot be read
std::string ReadBytes(const std::string& path);                      // as they are; empty if it cannot be read
// An entry of the URL cache through the system's own calls, with a file that the system names. The path of
// that file; empty if the entry was refused.
std::string MakeCacheEntry(const std::string& url, DWORD type, const std::string& extension);
// The entry of a cookie, from its user and site, as "user@shop.example/".
std::string MakeCookieEntry(const std::string& source);
// The URLs of all entries, sorted.
std::vector<std::string> CacheUrls();
// Deletes all entries; Windows makes the files of its URL cache when somebody first asks it, so they are there
// afterwards.
void EmptyUrlCache();

std::string Joined(const std::vector<std::string>& lines);  // each with a \n behind it

// Every file of drive C: with its size and content, and every value of HKEY_CURRENT_USER\Software.
using State = std::map<std::string, std::string>;
State TakeState();
// One line for each difference that is not below one of `expected` (compared without regard to case).
std::vector<std::string> Differences(const State& before, const State& after, const std::vector<std::string>& expected);

}  // namespace native
