// What the console asks of a running program. One object is one process.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"
#include "widgets/form.h"

namespace qb::rehearse {

struct CallOutcome {
  enum class Kind { Done, NoSuchRoutine, WrongArguments };
  Kind kind = Kind::Done;
  std::vector<std::string> lines;  // what the routine returned
};

class RunningProgram {
 public:
  virtual ~RunningProgram() = default;
  // The start sequence; returns when the program idles or has ended.
  virtual void Start() = 0;
  virtual bool Ended() const = 0;
  virtual Form& MainForm() = 0;
  // A program-wide variable or a setting held in memory, by its name; nothing if there is none.
  virtual std::optional<std::string> Variable(std::string_view name) = 0;
  // Calls a public routine by its name, "Class.Member" for a member of a class.
  virtual CallOutcome Call(std::string_view routine, const std::vector<std::string>& arguments) = 0;
};

// Makes a program that has not started yet. Its forms are to be told to the watcher.
using ProgramMaker = std::function<std::unique_ptr<RunningProgram>(
    Platform& platform, FormWatcher& watcher, std::string command_line, WindowHandle application_window)>;

}  // namespace qb::rehearse
