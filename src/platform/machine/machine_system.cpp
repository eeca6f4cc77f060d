#include "platform/machine/machine_system.h"

#include <sys/stat.h>
#include <unistd.h>

#include "runtime/filetime.h"
#include "runtime/text.h"

namespace qb::machine {

Result<VersionInfo> MachineSystem::GetVersionExA() {
  Result<VersionInfo> outcome = state_.gate.Enter("GetVersionExA");
  if (outcome.ok()) outcome = VersionInfo{state_.config.major, state_.config.minor, 0, state_.config.platform_id};
  state_.gate.Record(CallText("GetVersionExA").Structure(), BoolText(outcome.ok()));
  return outcome;
}

Result<std::uint32_t> MachineSystem::GetUserNameA(TextBuffer& buffer) {
  CallText call("GetUserNameA");
  Result<std::uint32_t> outcome = state_.gate.Enter("GetUserNameA");
  if (outcome.ok()) {
    const std::uint32_t length = buffer.Fill(state_.config.user);
    if (length < buffer.size())
      outcome = length + 1;
    else
      outcome = Error::InsufficientBuffer;
  }
  call.Bytes(buffer.size()).Number(outcome.ok() ? outcome.value : buffer.size());
  state_.gate.Record(call, BoolText(outcome.ok()));
  return outcome;
}

Result<std::uint32_t> MachineSystem::GetWindowsDirectoryA(TextBuffer& buffer) {
  CallText call("GetWindowsDirectoryA");
  call.Bytes(buffer.size()).Number(buffer.size());
  Result<std::uint32_t> outcome = state_.gate.Enter("GetWindowsDirectoryA");
  if (outcome.ok()) outcome = buffer.Fill(state_.config.windows_folder);
  state_.gate.Record(call, std::to_string(outcome.value));
  return outcome;
}

std::uint32_t MachineSystem::GetPrivateProfileStringA(std::string_view section, std::string_view key,
                                                      std::string_view fallback, TextBuffer& buffer,
                                                      std::string_view file) {
  CallText call("GetPrivateProfileStringA");
  call.Text(section).Text(key).Text(fallback).Bytes(buffer.size()).Number(buffer.size()).Text(file);
  std::string value(fallback);
  if (Ok(state_.gate.Enter("GetPrivateProfileStringA"))) {
    auto found = state_.Find(file, true);
    if (found.ok() && !found.value->locked) {
      auto host = state_.disk.Open(*found.value, false);
      std::string text(host.ok() ? state_.disk.SizeOf(*found.value) : 0, '\0');
      if (host.ok() && pread(host.value.fd(), text.data(), text.size(), 0) != static_cast<ssize_t>(text.size())) {
        text.clear();
      }
      bool inside = false;
      std::string_view rest = text;
      while (!rest.empty()) {
        const std::size_t cut = std::min(rest.find_first_of("\r\n"), rest.size());
        const std::string line = Trim(rest.substr(0, cut));
        rest.remove_prefix(std::min(cut + 1, rest.size()));
        if (!line.empty() && line.front() == '[') {
          const std::size_t close = std::min(line.find(']'), line.size());
          inside = SameText(std::string_view(line).substr(1, close - 1), section);
          continue;
        }
        const std::size_t equals = line.find('=');
        if (!inside || equals == std::string::npos || !SameText(Trim(line.substr(0, equals)), key)) continue;
        value = Trim(std::string_view(line).substr(equals + 1));
        // One pair of quotes round the value is taken off.
        if (value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'')) {
          value = value.substr(1, value.size() - 2);
        }
        break;
      }
    }
  } else {
    value.clear();
  }
  const std::uint32_t length = buffer.FillCut(value);
  state_.gate.Record(call, std::to_string(length));
  return length;
}

std::optional<std::string> MachineSystem::GetEnvironmentVariableA(std::string_view name) {
  CallText call("GetEnvironmentVariableA");
  call.Text(name).Bytes(260).Number(260);
  std::optional<std::string> value;
  if (Ok(state_.gate.Enter("GetEnvironmentVariableA"))) {
    auto found = state_.config.environment.find(FoldName(name));
    if (found != state_.config.environment.end()) value = found->second;
  }
  state_.gate.Record(call, std::to_string(value ? value->size() : 0));
  return value;
}

Result<std::string> MachineSystem::GetModuleFileNameA() {
  CallText call("GetModuleFileNameA");
  call.Null().Bytes(260).Number(260);
  Result<std::string> outcome = state_.gate.Enter("GetModuleFileNameA");
  if (outcome.ok()) outcome = state_.config.program_folder + "\\Quillbarrow.exe";
  state_.gate.Record(call, std::to_string(outcome.value.size()));
  return outcome;
}

bool MachineSystem::InitCommonControlsEx(std::uint32_t size, std::uint32_t /*classes*/) {
  const bool done = Ok(state_.gate.Enter("InitCommonControlsEx")) && size == 8;
  state_.gate.Record(CallText("InitCommonControlsEx").Structure(), BoolText(done));
  return done;
}

Result<std::string> MachineSystem::WideCharToMultiByte(std::string_view text) {
  if (Error error = state_.gate.Enter("WideCharToMultiByte"); !Ok(error)) return error;
  return state_.config.code_page.ToBytes(text);
}

Result<std::string> MachineSystem::MultiByteToWideChar(std::string_view bytes) {
  if (Error error = state_.gate.Enter("MultiByteToWideChar"); !Ok(error)) return error;
  return state_.config.code_page.ToText(bytes);
}

SystemTime MachineSystem::GetLocalTime() {
  const bool entered = Ok(state_.gate.Enter("GetLocalTime"));
  state_.gate.Record(CallText("GetLocalTime").Structure(), "");
  return entered ? FileTimeToSystemTime(state_.Now()).value_or(SystemTime()) : SystemTime();
}

SystemTime MachineSystem::GetSystemTime() {
  const bool entered = Ok(state_.gate.Enter("GetSystemTime"));
  state_.gate.Record(CallText("GetSystemTime").Structure(), "");
  return entered ? FileTimeToSystemTime(state_.Now()).value_or(SystemTime()) : SystemTime();
}

std::uint64_t MachineSystem::GetTickCount() {
  // Without power the clock leaps ahead, so that whoever waits on it comes to an end.
  constexpr std::uint64_t kLeap = 3600000;
  StepOver(state_.gate.Enter("GetTickCount"));
  if (!state_.gate.Powered()) without_power_ms_ += kLeap;
  return state_.clock_ms + without_power_ms_;
}

Result<FileTime> MachineSystem::FileTimeToLocalFileTime(FileTime utc) {
  Result<FileTime> outcome = state_.gate.Enter("FileTimeToLocalFileTime");
  if (outcome.ok()) outcome = utc;
  state_.gate.Record(CallText("FileTimeToLocalFileTime").Structure().Structure(), BoolText(outcome.ok()));
  return outcome;
}

Result<FileTime> MachineSystem::LocalFileTimeToFileTime(FileTime local) {
  Result<FileTime> outcome = state_.gate.Enter("LocalFileTimeToFileTime");
  if (outcome.ok()) outcome = local;
  state_.gate.Record(CallText("LocalFileTimeToFileTime").Structure().Structure(), BoolText(outcome.ok()));
  return outcome;
}

Result<std::uint32_t> MachineProcesses::Start(std::string_view command_line) {
  // The program is the first word, or what stands in the first pair of quotes.
  std::string program;
  if (!command_line.empty() && command_line.front() == '"') {
    program = command_line.substr(1, command_line.find('"', 1) - 1);
  } else {
    program = command_line.substr(0, command_line.find(' '));
  }
  auto found = state_.Find(program, true);
  if (!found.ok()) return found.error;
  if (found.value->kind != Entry::Kind::File) return Error::AccessDenied;
  if (found.value->locked) return Error::SharingViolation;
  Process process;
  auto outside = state_.config.outside_programs.find(found.value->name);
  if (outside != state_.config.outside_programs.end()) process.end = outside->second;
  const std::uint32_t id = next_id_ += 4;
  processes_[id] = process;
  state_.opened.emplace_back(command_line);
  return id;
}

Result<std::uint32_t> MachineProcesses::CreateProcessA(std::string_view command_line, std::uint32_t /*show*/) {
  CallText call("CreateProcessA");
  call.Null().Text(command_line).Null().Null().Boolean(false).Number(0).Null().Null().Structure().Structure();
  Result<std::uint32_t> outcome = state_.gate.Enter("CreateProcessA");
  if (outcome.ok()) outcome = Start(command_line);
  state_.gate.Record(call, BoolText(outcome.ok()));
  return outcome;
}

Result<ProcessHandle> MachineProcesses::OpenProcess(std::uint32_t access, bool inherit, std::uint32_t process_id) {
  CallText call("OpenProcess");
  call.Number(access).Boolean(inherit).Number(process_id);
  Result<ProcessHandle> outcome = state_.gate.Enter("OpenProcess");
  if (outcome.ok()) {
    if (processes_.count(process_id) == 0) {
      outcome = Error::InvalidParameter;
    } else {
      const std::uint64_t handle = state_.NewHandle();
      handles_[handle] = process_id;
      outcome = static_cast<ProcessHandle>(handle);
    }
  }
  state_.gate.Record(call, HandleText(outcome.ok() ? Plain(outcome.value) : 0));
  return outcome;
}

Result<std::uint32_t> MachineProcesses::GetExitCodeProcess(ProcessHandle process) {
  Result<std::uint32_t> outcome = state_.gate.Enter("GetExitCodeProcess");
  if (outcome.ok()) {
    auto found = handles_.find(Plain(process));
    if (found == handles_.end()) {
      outcome = Error::InvalidHandle;
    } else {
      const Process& running = processes_[found->second];
      outcome = running.pumps_passed >= running.end.pumps ? running.end.exit_code : kStillActive;
    }
  }
  CallText call("GetExitCodeProcess");
  call.Handle(Plain(process)).Number(outcome.value);
  state_.gate.Record(call, BoolText(outcome.ok()));
  return outcome;
}

Error MachineProcesses::CloseHandle(ProcessHandle process) {
  Error error = state_.gate.Enter("CloseHandle");
  if (Ok(error)) {
    error = handles_.erase(Plain(process)) != 0 ? Error::Success : Error::InvalidHandle;
    state_.open_handles.erase(Plain(process));
  }
  CallText call("CloseHandle");
  call.Handle(Plain(process));
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Result<Processes::NamedMutex> MachineProcesses::CreateMutexA(std::string_view name) {
  CallText call("CreateMutexA");
  call.Null().Boolean(false).Text(name);
  Result<NamedMutex> outcome = state_.gate.Enter("CreateMutexA");
  if (outcome.ok()) {
    NamedMutex made;
    for (const auto& [handle, held] : mutexes_) made.existed = made.existed || held == name;
    const std::uint64_t handle = state_.NewHandle();
    mutexes_[handle] = name;
    made.handle = static_cast<MutexHandle>(handle);
    outcome = made;
  }
  state_.gate.Record(call, HandleText(outcome.ok() ? Plain(outcome.value.handle) : 0));
  return outcome;
}

Error MachineProcesses::CloseHandle(MutexHandle mutex) {
  // Windows gives up a program's mutexes when it ends, whatever else happens.
  const bool held = mutexes_.erase(Plain(mutex)) != 0;
  state_.open_handles.erase(Plain(mutex));
  Error error = state_.gate.Enter("CloseHandle");
  if (Ok(error) && !held) error = Error::InvalidHandle;
  CallText call("CloseHandle");
  call.Handle(Plain(mutex));
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

void MachineProcesses::Pumped() {
  for (auto& [id, process] : processes_) ++process.pumps_passed;
}

void MachineProcesses::EndAll() {
  processes_.clear();
  handles_.clear();
  mutexes_.clear();
}

}  // namespace qb::machine
