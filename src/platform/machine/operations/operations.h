// The operations of the platform on a machine: one file a family, and what they stand in together.
#pragma once

#include <functional>
#include <memory>

#include "platform/machine/world/machine_state.h"
#include "platform/platform.h"

namespace qb::machine {

std::unique_ptr<Com> MakeCom(MachineState& state);
std::unique_ptr<Desktop> MakeDesktop(MachineState& state, std::function<void()>& on_box);
std::unique_ptr<Files> MakeFiles(MachineState& state);
std::unique_ptr<HotKeysAndTray> MakeHotKeysAndTray(MachineState& state);
std::unique_ptr<KeySecurity> MakeKeySecurity(MachineState& state);
std::unique_ptr<Processes> MakeProcesses(MachineState& state);
// The hooks are read at each call: whoever plays the machine sets them later.
std::unique_ptr<Pump> MakePump(MachineState& state, std::function<void()>& on_pump, std::function<bool()>& on_wait);
std::unique_ptr<RandomSource> MakeRandomSource(MachineState& state);
std::unique_ptr<Registry> MakeRegistry(MachineState& state);
std::unique_ptr<Shell> MakeShell(MachineState& state);
std::unique_ptr<System> MakeSystem(MachineState& state);
std::unique_ptr<UrlCache> MakeUrlCache(MachineState& state);

class Operations {
 public:
  Operations(MachineState& state, std::function<void()>& on_pump, std::function<bool()>& on_wait,
             std::function<void()>& on_box)
      : registry_(MakeRegistry(state)),
        files_(MakeFiles(state)),
        shell_(MakeShell(state)),
        system_(MakeSystem(state)),
        processes_(MakeProcesses(state)),
        desktop_(MakeDesktop(state, on_box)),
        hot_keys_and_tray_(MakeHotKeysAndTray(state)),
        pump_(MakePump(state, on_pump, on_wait)),
        random_source_(MakeRandomSource(state)),
        url_cache_(MakeUrlCache(state)),
        com_(MakeCom(state)),
        key_security_(MakeKeySecurity(state)) {}

  Platform& platform() { return platform_; }

 private:
  const std::unique_ptr<Registry> registry_;
  const std::unique_ptr<Files> files_;
  const std::unique_ptr<Shell> shell_;
  const std::unique_ptr<System> system_;
  const std::unique_ptr<Processes> processes_;
  const std::unique_ptr<Desktop> desktop_;
  const std::unique_ptr<HotKeysAndTray> hot_keys_and_tray_;
  const std::unique_ptr<Pump> pump_;
  const std::unique_ptr<RandomSource> random_source_;
  const std::unique_ptr<UrlCache> url_cache_;
  const std::unique_ptr<Com> com_;
  const std::unique_ptr<KeySecurity> key_security_;
  Platform platform_{*registry_,          *files_, *shell_,         *system_,    *processes_, *desktop_,
                     *hot_keys_and_tray_, *pump_,  *random_source_, *url_cache_, *com_,       *key_security_};
};

}  // namespace qb::machine
