// Other programs and the named mutex, answered by Windows.
#pragma once

#include "platform/processes.h"

namespace qb::win32 {

class Win32Processes : public Processes {
 public:
  Result<std::uint32_t> CreateProcessA(std::string_view command_line, std::uint32_t show) override;
  Result<ProcessHandle> OpenProcess(std::uint32_t access, bool inherit, std::uint32_t process_id) override;
  Result<std::uint32_t> GetExitCodeProcess(ProcessHandle process) override;
  Error CloseHandle(ProcessHandle process) override;
  Result<NamedMutex> CreateMutexA(std::string_view name) override;
  Error CloseHandle(MutexHandle mutex) override;
};

}  // namespace qb::win32
