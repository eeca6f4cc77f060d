// The whole program as the console drives it.
#include "app/rehearse/console/console.h"
#include "app/rehearse/console/routines.h"
#include "app/rehearse/console/variables.h"
#include "core/program.h"

namespace qb::rehearse {
namespace {

class WholeProgram : public RunningProgram {
 public:
  WholeProgram(Platform& platform, FormWatcher& watcher, std::string command_line, WindowHandle application_window)
      : program_(platform, watcher, std::move(command_line), application_window) {}

  void Start() override { program_.Start(); }
  bool Ended() const override { return program_.Ended(); }
  Form& MainForm() override { return program_.main_window(); }
  std::optional<std::string> Variable(std::string_view name) override { return VariableText(program_, name); }
  CallOutcome Call(std::string_view routine, const std::vector<std::string>& arguments) override {
    return CallRoutine(program_, routine, arguments);
  }

 private:
  Program program_;
};

}  // namespace

Status RunScript(machine::Machine& machine, std::istream& in, std::ostream& out, std::ostream& err,
                 std::string prompt) {
  ProgramMaker maker = [](Platform& platform, FormWatcher& watcher, std::string command_line,
                          WindowHandle application_window) {
    return std::make_unique<WholeProgram>(platform, watcher, std::move(command_line), application_window);
  };
  return Console(machine, in, out, err, std::move(maker), std::move(prompt)).Run();
}

}  // namespace qb::rehearse
