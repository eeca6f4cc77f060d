#include "platform/win32/win32_platform.h"

#include "platform/win32/factories.h"
#include "platform/win32/system_library.h"
// After the basic types of windows.h.
#include <objbase.h>

namespace qb::win32 {

namespace {

// From now on a DLL that is asked for by its bare name comes from the system folder. Windows 7 knows the function only
// with an update, so it is looked up; without it at least the current folder is left out.
void LoadFromSystemFolderOnly() {
  const auto restrict_search =
      FromSystemLibrary<decltype(&::SetDefaultDllDirectories)>(L"kernel32.dll", "SetDefaultDllDirectories");
  if (restrict_search == nullptr || !restrict_search(LOAD_LIBRARY_SEARCH_SYSTEM32)) ::SetDllDirectoryW(L"");
}

}  // namespace

Win32Platform::ComApartment::ComApartment() {
  LoadFromSystemFolderOnly();  // before COM, which loads DLLs by bare names
  initialised = SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
}

Win32Platform::ComApartment::~ComApartment() {
  if (initialised) ::CoUninitialize();
}

Win32Platform::Win32Platform()
    : registry_(MakeRegistry()),
      files_(MakeFiles(messages_)),
      shell_(MakeShell()),
      system_(MakeSystem()),
      processes_(MakeProcesses()),
      hot_keys_and_tray_(MakeHotKeysAndTray()),
      random_source_(MakeRandomSource(messages_)),
      url_cache_(MakeUrlCache()),
      com_objects_(MakeCom()),
      key_security_(MakeKeySecurity()) {}

Win32Platform::~Win32Platform() = default;

}  // namespace qb::win32
