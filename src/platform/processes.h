// Other programs: starting them and following them to their end; and the named mutex by which a
// second copy of this one knows of the first.
#pragma once

#include "platform/types.h"

namespace qb {

inline constexpr std::uint32_t kProcessQueryInformation = 1024;  // right of OpenProcess
inline constexpr std::uint32_t kStillActive = 259;               // exit code of a process that runs

class Processes {
 public:
  virtual ~Processes() = default;

  // Starts a command line with the window style `show` and gives the process id.
  virtual Result<std::uint32_t> CreateProcessA(std::string_view command_line, std::uint32_t show) = 0;
  virtual Result<ProcessHandle> OpenProcess(std::uint32_t access, bool inherit, std::uint32_t process_id) = 0;
  virtual Result<std::uint32_t> GetExitCodeProcess(ProcessHandle process) = 0;
  virtual Error CloseHandle(ProcessHandle process) = 0;

  struct NamedMutex {
    MutexHandle handle = MutexHandle::None;
    bool existed = false;  // GetLastError was ERROR_ALREADY_EXISTS
  };
  virtual Result<NamedMutex> CreateMutexA(std::string_view name) = 0;
  virtual Error CloseHandle(MutexHandle mutex) = 0;
};

}  // namespace qb
