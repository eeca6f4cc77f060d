// Starting programs and documents, and the error record.
#include <algorithm>

#include "delete/file_analyzer/file_analyzer.h"

namespace qb {

namespace {

constexpr std::string_view kStartedDirectly[] = {"COM", "EXE", "BAT", "PIF"};
constexpr std::uint32_t kShellSuccess = 32;  // what ShellExecuteA and FindExecutableA return above this is success
constexpr std::size_t kPathBuffer = 260;     // MAX_PATH

// CreateProcessA tries an unquoted command line piece by piece at its blanks: of "C:\Program Files\a.exe"
// it would start a "C:\Program.exe" that somebody put there.
std::string Quoted(const std::string& path) {
  return path.find(' ') == std::string::npos ? path : '"' + path + '"';
}

}  // namespace

int clsFileAnalyzer::Trap(RuntimeError error, std::string_view member) {
  const int number = Number(error);
  if (number != 0) {
    last_error_ = {number, "clsFileAnalyzer." + std::string(member), std::string(Describe(number))};
  }
  return number;
}

std::string clsFileAnalyzer::GetFileExecutable(const std::string& path) const {
  TextBuffer program(kPathBuffer);
  if (platform_.shell.FindExecutableA(path, std::nullopt, program) <= kShellSuccess) return {};
  return program.text();
}

int clsFileAnalyzer::Execute(const std::string& path, std::uint32_t window_style, const std::string& parameters,
                             bool wait, WindowHandle& owner) {
  if (owner == WindowHandle::None && active_window) owner = active_window();
  if (wait) return ExecuteAndWait(path, window_style, parameters);
  const auto given = parameters.empty() ? std::nullopt : std::optional<std::string_view>(parameters);
  const std::uint32_t result = platform_.shell.ShellExecuteA(owner, "open", path, given, std::nullopt, window_style);
  return result > kShellSuccess ? 0 : static_cast<int>(result);
}

int clsFileAnalyzer::ExecuteAndWait(const std::string& path, std::uint32_t window_style,
                                    const std::string& parameters) {
  std::string command = Quoted(path);
  const std::string extension = GetFileExtension(path);
  if (std::find(std::begin(kStartedDirectly), std::end(kStartedDirectly), extension) == std::end(kStartedDirectly)) {
    const std::string program = GetFileExecutable(path);
    if (program.empty()) return Trap(RuntimeError::PathFileAccess, "Execute");
    command = Quoted(program) + " " + command;
  }
  if (!parameters.empty()) command += " " + parameters;

  auto id = platform_.processes.CreateProcessA(command, window_style);
  if (!id.ok()) return Trap(id.error, "Execute");
  // A process that is gone already, or that may not be asked, counts as ended.
  auto process = platform_.processes.OpenProcess(kProcessQueryInformation, false, id.value);
  if (!process.ok()) return 0;
  for (;;) {
    auto code = platform_.processes.GetExitCodeProcess(process.value);
    if (!RestAndLive(platform_, life_) || !code.ok() || code.value != kStillActive) break;
  }
  StepOver(platform_.processes.CloseHandle(process.value));
  return 0;
}

}  // namespace qb
