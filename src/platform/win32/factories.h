// Makers of the operations that Windows answers, one for each family. Each is used from one thread.
#pragma once

#include <memory>

#include "platform/platform.h"
#include "platform/win32/win32_messages.h"

namespace qb::win32 {

std::unique_ptr<HotKeysAndTray> MakeHotKeysAndTray();
std::unique_ptr<Registry> MakeRegistry();
// Work that may take its time lets `messages` answer meanwhile, which must outlive these two.
std::unique_ptr<Files> MakeFiles(Win32Messages& messages);
std::unique_ptr<RandomSource> MakeRandomSource(Win32Messages& messages);
// COM must be initialised for the thread while this is used.
std::unique_ptr<Shell> MakeShell();
std::unique_ptr<System> MakeSystem();
std::unique_ptr<Processes> MakeProcesses();
std::unique_ptr<UrlCache> MakeUrlCache();
std::unique_ptr<Com> MakeCom();
std::unique_ptr<KeySecurity> MakeKeySecurity();

}  // namespace qb::win32
