#include "platform/win32/win32_processes.h"

#include "platform/win32/convert.h"

namespace qb::win32 {

Result<std::uint32_t> Win32Processes::CreateProcessA(std::string_view command_line, std::uint32_t show) {
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = static_cast<WORD>(show);
  PROCESS_INFORMATION process{};
  std::string line(command_line);  // CreateProcess may write into it
  if (!::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
    return LastError();
  }
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return process.dwProcessId;
}

Result<ProcessHandle> Win32Processes::OpenProcess(std::uint32_t access, bool inherit, std::uint32_t process_id) {
  HANDLE process = ::OpenProcess(access, inherit, process_id);
  if (process == nullptr) return LastError();
  return Wrap<ProcessHandle>(process);
}

Result<std::uint32_t> Win32Processes::GetExitCodeProcess(ProcessHandle process) {
  DWORD code = 0;
  if (!::GetExitCodeProcess(Unwrap<HANDLE>(process), &code)) return LastError();
  return code;
}

Error Win32Processes::CloseHandle(ProcessHandle process) {
  return FromBool(::CloseHandle(Unwrap<HANDLE>(process)));
}

Result<Processes::NamedMutex> Win32Processes::CreateMutexA(std::string_view name) {
  // Success leaves the last error alone on some systems, so what an earlier call left must not be read.
  ::SetLastError(ERROR_SUCCESS);
  HANDLE mutex = ::CreateMutexA(nullptr, FALSE, std::string(name).c_str());
  const Error error = LastError();
  if (mutex == nullptr) return error;
  return NamedMutex{Wrap<MutexHandle>(mutex), error == Error::AlreadyExists};
}

Error Win32Processes::CloseHandle(MutexHandle mutex) {
  return FromBool(::CloseHandle(Unwrap<HANDLE>(mutex)));
}

}  // namespace qb::win32
