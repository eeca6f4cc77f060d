// The rehearsal: reads a script command by command, also from inside the loops of the program that the
// commands drive.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/rehearse/console/command.h"
#include "app/rehearse/console/program.h"
#include "platform/machine/machine.h"
#include "view/text/text_view.h"

namespace qb::rehearse {

// How a script ended; the number is the exit status of the process.
enum class Status { Held = 0, NotHeld = 1, NotUnderstood = 2 };

class Console {
 public:
  Console(machine::Machine& machine, std::istream& in, std::ostream& out, std::ostream& err, ProgramMaker maker,
          std::string prompt);
  ~Console();
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  // Runs the script to its end, saves the machine and cuts the power of what still runs.
  Status Run();

  // --- for the commands ---
  machine::Machine& machine() { return machine_; }
  struct Process {
    explicit Process(machine::Machine& machine) : view(machine, "Quillbarrow") {}
    TextView view;
    std::unique_ptr<RunningProgram> program;  // its forms go before their view
  };
  // The running program that was started last; null if none runs.
  Process* Current();
  // Starts a program and returns when it idles or has ended.
  void Start(std::string command_line);
  // Windows starts anew: the running program is told, and everything comes to its end.
  void Reboot();
  // Gives the words of a line at the nth next message pump.
  void Schedule(std::uint64_t pumps, const Arguments& words);
  // Runs the words as one command and gives its answer instead of printing it.
  Reply Ask(const Arguments& words);
  // Prints, with the number of the line at hand, what an expectation missed.
  void ReportMissed(const std::string& text);

 private:
  struct Waiting {
    std::uint64_t due = 0;  // by the count of pumps
    std::string line;
    std::size_t line_number = 0;
  };
  bool NextCommand();  // false at the end of the script
  void RunLine(const std::string& line, std::size_t line_number);
  void OnPump();
  bool OnWait();
  void SweepEnded();
  void FinishReboot();
  void CutPower();
  void EndProcesses();
  void Fail(std::size_t line_number, const std::string& text);

  machine::Machine& machine_;
  std::istream& in_;
  std::ostream& out_;
  std::ostream& err_;
  ProgramMaker maker_;
  std::string prompt_;
  std::vector<std::unique_ptr<Process>> processes_;
  std::vector<Waiting> waiting_;
  std::uint64_t pumps_ = 0;
  std::size_t lines_read_ = 0;
  std::size_t line_number_ = 0;  // of the command that runs now
  std::size_t depth_ = 0;        // of the commands that run inside each other
  bool stopped_ = false;
  bool rebooting_ = false;
  Status status_ = Status::Held;
};

// Whether any line of a script may ask for the calls of the platform, also inside another command. Reads to the end.
bool AsksForCalls(std::istream& script);

// Runs a script on a machine with the whole program at hand. The prompt goes to `out` before each line
// is read, if there is one.
Status RunScript(machine::Machine& machine, std::istream& in, std::ostream& out, std::ostream& err,
                 std::string prompt = {});

}  // namespace qb::rehearse
