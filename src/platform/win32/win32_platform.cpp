#include "platform/win32/win32_platform.h"

// After the basic types of windows.h.
#include <objbase.h>

namespace qb::win32 {

Win32Platform::ComApartment::ComApartment() {
  // Before COM: it loads DLLs by bare names.
  ::SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
  initialised = SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
}

Win32Platform::ComApartment::~ComApartment() {
  if (initialised) ::CoUninitialize();
}

Win32Platform::Win32Platform() = default;
Win32Platform::~Win32Platform() = default;

}  // namespace qb::win32
