// The platform, answered by Windows itself. One object serves one thread for the life of the process.
#pragma once

#include <memory>

#include "platform/platform.h"
#include "platform/win32/win32_messages.h"

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
  Win32Messages messages_;
  std::unique_ptr<Registry> registry_;
  std::unique_ptr<Files> files_;
  std::unique_ptr<Shell> shell_;
  std::unique_ptr<System> system_;
  std::unique_ptr<Processes> processes_;
  std::unique_ptr<HotKeysAndTray> hot_keys_and_tray_;
  std::unique_ptr<RandomSource> random_source_;
  std::unique_ptr<UrlCache> url_cache_;
  std::unique_ptr<Com> com_objects_;
  std::unique_ptr<KeySecurity> key_security_;
  Platform platform_{*registry_,          *files_,   *shell_,         *system_,    *processes_,   messages_,
                     *hot_keys_and_tray_, messages_, *random_source_, *url_cache_, *com_objects_, *key_security_};
};

}  // namespace qb::win32
