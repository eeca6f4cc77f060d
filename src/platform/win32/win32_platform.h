// The platform, answered by Windows itself. One object serves one thread for the life of the process.
#pragma once

#include "platform/platform.h"
#include "platform/win32/factories.h"
#include "platform/win32/win32_files.h"
#include "platform/win32/win32_internet.h"
#include "platform/win32/win32_key_security.h"
#include "platform/win32/win32_messages.h"
#include "platform/win32/win32_processes.h"
#include "platform/win32/win32_registry.h"
#include "platform/win32/win32_shell.h"
#include "platform/win32/win32_system.h"

namespace qb::win32 {

class Win32Platform {
 public:
  // Restricts the search for DLLs to the system folder and initialises COM for this thread.
  Win32Platform();
  ~Win32Platform();
  Win32Platform(const Win32Platform&) = delete;
  Win32Platform& operator=(const Win32Platform&) = delete;

  Platform& platform() { return platform_; }
  Win32Messages& messages() { return messages_; }

 private:
  // COM is set up before the members that use it and given back after them.
  struct ComApartment {
    ComApartment();
    ~ComApartment();
    bool initialised = false;
  };

  ComApartment com_;
  Win32Registry registry_;
  Win32Files files_;
  Win32Shell shell_;
  Win32System system_;
  Win32Processes processes_;
  Win32Messages messages_;
  std::unique_ptr<HotKeysAndTray> hot_keys_and_tray_ = MakeHotKeysAndTray();
  std::unique_ptr<RandomSource> random_source_ = MakeRandomSource();
  Win32UrlCache url_cache_;
  Win32Com com_objects_;
  Win32KeySecurity key_security_;
  Platform platform_{registry_,           files_,    shell_,          system_,    processes_,   messages_,
                     *hot_keys_and_tray_, messages_, *random_source_, url_cache_, com_objects_, key_security_};
};

}  // namespace qb::win32
