// Outside programs and named mutexes on a machine.
#include "platform/machine/operation.h"
#include "platform/machine/operations/operations.h"

namespace qb::machine {
namespace {

class MachineProcesses final : public Processes {
 public:
  explicit MachineProcesses(MachineState& state) : state_(state) {}

  Result<std::uint32_t> CreateProcessA(std::string_view command_line, std::uint32_t /*show*/) override {
    return gate_
        .Call<"CreateProcessA">(kNull, command_line, kNull, kNull, false, 0, kNull, kNull, kStructure, kStructure)
        .ReturnsBool([&] { return Start(command_line); });
  }

  Result<ProcessHandle> OpenProcess(std::uint32_t access, bool inherit, std::uint32_t process_id) override {
    return gate_.Call<"OpenProcess">(access, inherit, process_id).ReturnsValue([&]() -> Result<ProcessHandle> {
      if (!outside_.Has(process_id)) return Error::InvalidParameter;
      return static_cast<ProcessHandle>(outside_.Open(process_id, state_.NewHandle()));
    });
  }

  Result<std::uint32_t> GetExitCodeProcess(ProcessHandle process) override {
    std::uint32_t code = 0;
    return gate_.Call<"GetExitCodeProcess">(process, code).ReturnsBool([&]() -> Result<std::uint32_t> {
      const RunningOutside* running = outside_.Find(Plain(process));
      if (running == nullptr) return Error::InvalidHandle;
      return code = running->pumps_passed >= running->end.pumps ? running->end.exit_code : kStillActive;
    });
  }

  Error CloseHandle(ProcessHandle process) override {
    return gate_.Call<"CloseHandle">(process).ReturnsBool([&] {
      state_.open_handles.erase(Plain(process));
      return outside_.Close(Plain(process)) ? Error::Success : Error::InvalidHandle;
    });
  }

  Result<NamedMutex> CreateMutexA(std::string_view name) override {
    return gate_.Call<"CreateMutexA">(kNull, false, name)
        .ReturnsAs(
            [&]() -> Result<NamedMutex> {
              NamedMutex made;
              for (const auto& [handle, held] : state_.mutexes) made.existed = made.existed || held == name;
              made.handle = static_cast<MutexHandle>(state_.NewHandle());
              state_.mutexes[Plain(made.handle)] = name;
              return made;
            },
            [](const Result<NamedMutex>& outcome) { return outcome.value.handle; });
  }

  Error CloseHandle(MutexHandle mutex) override {
    // Windows gives up a program's mutexes when it ends, whatever else happens.
    const bool held = state_.mutexes.erase(Plain(mutex)) != 0;
    state_.open_handles.erase(Plain(mutex));
    return gate_.Call<"CloseHandle">(mutex).ReturnsBool(
        [held] { return held ? Error::Success : Error::InvalidHandle; });
  }

 private:
  Result<std::uint32_t> Start(std::string_view command_line) {
    // The program is the first word, or what stands in the first pair of quotes.
    const bool quoted = command_line.starts_with('"');
    const std::string_view program =
        quoted ? command_line.substr(1, command_line.find('"', 1) - 1) : command_line.substr(0, command_line.find(' '));
    auto found = state_.Find(program, true);
    if (!found.ok()) return found.error;
    if (found.value->kind != Entry::Kind::File) return Error::AccessDenied;
    if (found.value->locked) return Error::SharingViolation;
    auto told = state_.config.outside_programs.find(found.value->name);
    state_.opened.emplace_back(command_line);
    return outside_.Start(told == state_.config.outside_programs.end() ? OutsideProgramEnd() : told->second);
  }

  MachineState& state_;
  Gate& gate_ = state_.gate;
  OutsidePrograms& outside_ = state_.outside;
};

}  // namespace

std::unique_ptr<Processes> MakeProcesses(MachineState& state) {
  return std::make_unique<MachineProcesses>(state);
}

}  // namespace qb::machine
