// Version, account, folders, ini files and the clock of a machine, and its outside programs.
#pragma once

#include <map>

#include "platform/machine/machine_state.h"

namespace qb::machine {

class MachineSystem : public System {
 public:
  explicit MachineSystem(MachineState& state) : state_(state) {}

  Result<VersionInfo> GetVersionExA() override;
  Result<std::uint32_t> GetUserNameA(TextBuffer& buffer) override;
  Result<std::uint32_t> GetWindowsDirectoryA(TextBuffer& buffer) override;
  std::uint32_t GetPrivateProfileStringA(std::string_view section, std::string_view key, std::string_view fallback,
                                         TextBuffer& buffer, std::string_view file) override;
  std::optional<std::string> GetEnvironmentVariableA(std::string_view name) override;
  Result<std::string> GetModuleFileNameA() override;
  bool InitCommonControlsEx(std::uint32_t size, std::uint32_t classes) override;
  // They pass the gate and are not recorded: every line of a text file would be.
  Result<std::string> WideCharToMultiByte(std::string_view text) override;
  Result<std::string> MultiByteToWideChar(std::string_view bytes) override;
  SystemTime GetLocalTime() override;
  SystemTime GetSystemTime() override;
  std::uint64_t GetTickCount() override;
  Result<FileTime> FileTimeToLocalFileTime(FileTime utc) override;
  Result<FileTime> LocalFileTimeToFileTime(FileTime local) override;

 private:
  MachineState& state_;
  std::uint64_t without_power_ms_ = 0;  // what GetTickCount leapt ahead; no part of the machine's clock
};

class MachineProcesses : public Processes {
 public:
  explicit MachineProcesses(MachineState& state) : state_(state) {}

  Result<std::uint32_t> CreateProcessA(std::string_view command_line, std::uint32_t show) override;
  Result<ProcessHandle> OpenProcess(std::uint32_t access, bool inherit, std::uint32_t process_id) override;
  Result<std::uint32_t> GetExitCodeProcess(ProcessHandle process) override;
  Error CloseHandle(ProcessHandle process) override;
  Result<NamedMutex> CreateMutexA(std::string_view name) override;
  Error CloseHandle(MutexHandle mutex) override;

  // One round of the pump has passed.
  void Pumped();
  // Ends every program and gives up every mutex, as the end of the power does.
  void EndAll();

 private:
  Result<std::uint32_t> Start(std::string_view command_line);

  MachineState& state_;
  struct Process {
    OutsideProgramEnd end;
    std::uint64_t pumps_passed = 0;
  };
  std::map<std::uint32_t, Process> processes_;
  std::map<std::uint64_t, std::uint32_t> handles_;
  std::map<std::uint64_t, std::string> mutexes_;
  std::uint32_t next_id_ = 4;
};

}  // namespace qb::machine
