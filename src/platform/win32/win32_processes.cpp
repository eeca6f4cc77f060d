// Other programs and the named mutex, answered by Windows.
#include <map>

#include "platform/win32/convert.h"
#include "platform/win32/factories.h"

namespace qb::win32 {

namespace {

class Win32Processes : public Processes {
 public:
  Win32Processes() = default;
  ~Win32Processes() override;
  Win32Processes(const Win32Processes&) = delete;
  Win32Processes& operator=(const Win32Processes&) = delete;

  Result<std::uint32_t> CreateProcessA(std::string_view command_line, std::uint32_t show) override;
  Result<ProcessHandle> OpenProcess(std::uint32_t access, bool inherit, std::uint32_t process_id) override;
  Result<std::uint32_t> GetExitCodeProcess(ProcessHandle process) override;
  Error CloseHandle(ProcessHandle process) override;
  Result<NamedMutex> CreateMutexA(std::string_view name) override;
  Error CloseHandle(MutexHandle mutex) override;

 private:
  // Windows gives the number of a process that has ended to another as soon as nobody holds a handle of it. So the
  // handle of one that was started here is kept until it is opened by its number.
  std::map<std::uint32_t, HANDLE> started_;
};

}  // namespace

Win32Processes::~Win32Processes() {
  for (const auto& [id, process] : started_) ::CloseHandle(process);
}

Result<std::uint32_t> Win32Processes::CreateProcessA(std::string_view command_line, std::uint32_t show) {
  auto line = NativeText(command_line);  // CreateProcess may write into it
  if (!line.ok()) return line.error;
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = static_cast<WORD>(show);
  PROCESS_INFORMATION process{};
  if (!::CreateProcessW(nullptr, line.value.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
    return LastError();
  }
  ::CloseHandle(process.hThread);
  started_[process.dwProcessId] = process.hProcess;
  return process.dwProcessId;
}

Result<ProcessHandle> Win32Processes::OpenProcess(std::uint32_t access, bool inherit, std::uint32_t process_id) {
  HANDLE process = ::OpenProcess(access, inherit, process_id);
  const Error error = LastError();
  // What is opened now holds the number; what could not be opened is not asked for again.
  if (auto kept = started_.find(process_id); kept != started_.end()) {
    ::CloseHandle(kept->second);
    started_.erase(kept);
  }
  if (process == nullptr) return error;
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
  HANDLE mutex = ::CreateMutexW(nullptr, FALSE, Wide(name).c_str());
  const Error error = LastError();
  if (mutex == nullptr) return error;
  return NamedMutex{Wrap<MutexHandle>(mutex), error == Error::AlreadyExists};
}

Error Win32Processes::CloseHandle(MutexHandle mutex) {
  return FromBool(::CloseHandle(Unwrap<HANDLE>(mutex)));
}

std::unique_ptr<Processes> MakeProcesses() {
  return std::make_unique<Win32Processes>();
}

}  // namespace qb::win32
