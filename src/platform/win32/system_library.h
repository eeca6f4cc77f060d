// Functions that are looked up while the program runs.
#pragma once

#include <string>

#include "platform/win32/windows_api.h"

namespace qb::win32 {

// A function of a system DLL; null if there is none. The DLL is loaded from the system folder, by its full path, and
// stays loaded: a name alone could find one that lies beside the program, as some are no known DLLs on every Windows.
template <typename Function>
Function FromSystemLibrary(const wchar_t* library, const char* function) {
  HMODULE module = ::GetModuleHandleW(library);
  if (module == nullptr) {
    wchar_t folder[MAX_PATH];
    const UINT length = ::GetSystemDirectoryW(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return nullptr;
    module = ::LoadLibraryExW((std::wstring(folder, length) + L"\\" + library).c_str(), nullptr,
                              LOAD_WITH_ALTERED_SEARCH_PATH);
  }
  if (module == nullptr) return nullptr;
  return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(module, function)));
}

}  // namespace qb::win32
