// The computer that the real program runs on: making traces, and comparing all else before and after.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <map>

#include "stories.h"

namespace native {

inline constexpr const char* kStore = "Software\\VB and VBA Program Settings\\Temp\\SystemData";
inline constexpr const char* kRunKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";

std::string LocalData(const std::string& path);                      // below the user's local application data
void MakeFile(const std::string& path, const std::string& content);  // with its parents
bool Exists(const std::string& path);
void SetValue(const std::string& key, const std::string& name, const std::string& data);  // below HKEY_CURRENT_USER
bool CanOpen(const std::string& key, REGSAM rights);
void DeleteKey(const std::string& key);                              // with all below it
std::string Value(const std::string& key, const std::string& name);  // as UTF-8; empty if there is none
Texts FilesIn(const std::string& folder);                            // names of files and folders, sorted
std::string ReadFile(const std::string& path);                       // its lines end in \n; empty if it cannot be read
std::string ReadBytes(const std::string& path);                      // as they are; empty if it cannot be read
// A cookie's entry of the URL cache, from its user and site, as "user@shop.example/".
void MakeCookieEntry(const std::string& source);
// The URLs of all entries, sorted.
Texts CacheUrls();
// Deletes all entries; Windows makes the files of its URL cache when somebody first asks it, so they are there
// afterwards.
void EmptyUrlCache();

// Reads what stands below a heading of C:\NAME.rehearsal and makes the files, the values and the entries of the URL
// cache that it names; gives their places: paths of files, and paths of keys with a closing backslash.
Texts MakeTraces(const std::string& name, const std::string& heading);
// Those of such places that are there, or are not.
std::string ThoseThere(const Texts& places, bool there);

std::string Utf8(const std::wstring& text);
std::string Joined(const Texts& lines);  // each with a \n behind it

// Every file of drive C: with its size and content, and every value of HKEY_CURRENT_USER\Software.
using State = std::map<std::string, std::string>;
State TakeState();
// Checks that nothing else differs than what lies below one of `expected`, in the program's own places, or in what
// Windows keeps when a program starts.
void CheckNothingElse(const State& before, Texts expected,
                      const std::string& what = "nothing else changed, byte for byte");

}  // namespace native
