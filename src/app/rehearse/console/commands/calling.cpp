// Calls of the routines of the program by name.
#include <algorithm>
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/replies.h"
#include "app/rehearse/console/targets.h"
#include "runtime/text.h"

namespace qb::rehearse {
namespace {

// Event handlers are named after their control and its event: cmdHelp_Click, Timer1_Timer. Nothing if no
// loaded window has such a handler.
std::optional<CallOutcome> CallHandler(Console& console, std::string_view routine, bool arguments) {
  struct Event {
    std::string_view suffix;
    Control::Handler (*of)(const Control& control);
  };
  static constexpr std::array kEvents = std::to_array<Event>({
      {"_Click", [](const Control& control) { return control.Click; }},
      {"_MouseDown", [](const Control& control) { return control.MouseDown; }},
      {"_Timer",
       [](const Control& control) {
         return control.kind() == ControlKind::Timer ? static_cast<const Timer&>(control).Tick : Control::Handler();
       }},
  });
  for (const Event& event : kEvents) {
    if (!SameText(routine.substr(routine.size() - std::min(event.suffix.size(), routine.size())), event.suffix))
      continue;
    Control* control = FindControl(console, routine.substr(0, routine.size() - event.suffix.size())).control;
    if (control == nullptr) continue;
    const Control::Handler handler = event.of(*control);
    if (handler == nullptr) continue;
    if (arguments) return CallOutcome{CallOutcome::Kind::WrongArguments, {}};
    handler();
    return CallOutcome{};
  }
  return std::nullopt;
}

Reply Do(Console& console, const Arguments& words) {
  Console::Process* process = console.Current();
  if (process == nullptr) return NotRunning();
  CallOutcome outcome = process->program->Call(words[0], words.From(1).Texts());
  if (outcome.kind == CallOutcome::Kind::NoSuchRoutine) {
    outcome = CallHandler(console, words[0], words.size() > 1).value_or(outcome);
  }
  switch (outcome.kind) {
    case CallOutcome::Kind::NoSuchRoutine:
      return Reply::Problem("no such routine: " + words[0]);
    case CallOutcome::Kind::WrongArguments:
      return Reply::Problem("wrong arguments for " + words[0] + ": " + words.From(1).Raw());
    case CallOutcome::Kind::Done:
      break;
  }
  return outcome.lines;
}

constexpr std::array kCommands = std::to_array<Command>({
    {"do", 1, kAnyNumber, Do},
});

}  // namespace

namespace commands {

std::span<const Command> Calling() {
  return kCommands;
}

}  // namespace commands

}  // namespace qb::rehearse
