// What the user does to the program.
#include <algorithm>
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/targets.h"
#include "app/rehearse/console/values.h"
#include "runtime/text.h"

namespace qb::rehearse {
namespace {

Reply NoSuch(const std::string& name) {
  return Reply::Problem("no such control: " + name);
}

Reply NotFor(std::string_view command, const Control& control) {
  return Reply::Problem(control.name() + " is nothing to " + std::string(command));
}

// "refused: NAME is disabled" or "… hidden"; nothing if the user can reach it.
std::optional<std::string> RefusalOf(const Control& control) {
  switch (WhyRefused(control)) {
    case Refusal::Disabled:
      return "refused: " + control.name() + " is disabled";
    case Refusal::Hidden:
      return "refused: " + control.name() + " is hidden";
    case Refusal::None:
      break;
  }
  return std::nullopt;
}

void ClosePopupOf(MenuItem& item) {
  MenuItem* root = &item;
  while (root->parent != nullptr) root = root->parent;
  if (root->popup) root->open = false;
}

Reply ClickOn(Control& control) {
  if (auto refusal = RefusalOf(control)) return *refusal;
  if (control.kind() == ControlKind::MenuItem) ClosePopupOf(static_cast<MenuItem&>(control));
  control.UserMouseDown();
  control.UserClick();
  return {};
}

// The states of a box or option; nothing for any other control.
std::optional<bool> Ticked(const Control& control) {
  switch (control.kind()) {
    case ControlKind::CheckBox:
      return static_cast<const CheckBox&>(control).Value() != 0;
    case ControlKind::Option:
      return static_cast<const OptionButton&>(control).Value();
    default:
      return std::nullopt;
  }
}

template <bool wanted>
Reply Tick(Console& console, const Arguments& words) {
  Control* control = FindControl(console, words[0]).control;
  if (control == nullptr) return NoSuch(words[0]);
  auto ticked = Ticked(*control);
  if (!ticked) return NotFor(wanted ? "tick" : "untick", *control);
  return *ticked == wanted ? Reply() : ClickOn(*control);
}

Reply Click(Console& console, const Arguments& words) {
  Control* control = FindControl(console, words[0]).control;
  if (control == nullptr) return NoSuch(words[0]);
  return control->kind() == ControlKind::Timer ? NotFor("click", *control) : ClickOn(*control);
}

Reply MouseDown(Console& console, const Arguments& words) {
  Control* control = FindControl(console, words[0]).control;
  if (control == nullptr) return NoSuch(words[0]);
  if (control->kind() == ControlKind::Timer) return NotFor("click", *control);
  if (auto refusal = RefusalOf(*control)) return *refusal;
  control->UserMouseDown();
  return {};
}

// The number of entries that can be chosen from; nothing for a control without any.
std::optional<std::size_t> ChoicesOf(const Control& control) {
  switch (control.kind()) {
    case ControlKind::TabStrip:
      return static_cast<const TabStrip&>(control).Pages().size();
    case ControlKind::ComboBox:
      return static_cast<const ComboBox&>(control).Entries().size();
    case ControlKind::ListBox:
      return static_cast<const ListBox&>(control).Entries().size();
    default:
      return std::nullopt;
  }
}

std::optional<int> ParseIndex(const std::string& word, std::size_t count) {
  auto index = ParseNumber(word, INT32_MAX);
  if (!index || *index >= count) return std::nullopt;
  return static_cast<int>(*index);
}

Reply Choose(Console& console, const Arguments& words) {
  Control* control = FindControl(console, words[0]).control;
  if (control == nullptr) return NoSuch(words[0]);
  auto count = ChoicesOf(*control);
  if (!count) return NotFor("choose from", *control);
  if (auto refusal = RefusalOf(*control)) return *refusal;
  auto index = ParseIndex(words[1], *count);
  if (!index) return Reply::Problem("no such entry of " + words[0] + ": " + words[1]);
  if (control->kind() == ControlKind::TabStrip) {
    static_cast<TabStrip*>(control)->UserPick(*index);
  } else if (control->kind() == ControlKind::ComboBox) {
    static_cast<ComboBox*>(control)->UserPick(*index);
  } else {
    static_cast<ListBox*>(control)->UserMark({*index});
  }
  return {};
}

Reply Mark(Console& console, const Arguments& words) {
  Control* control = FindControl(console, words[0]).control;
  if (control == nullptr) return NoSuch(words[0]);
  if (control->kind() != ControlKind::ListBox) return NotFor("mark", *control);
  if (auto refusal = RefusalOf(*control)) return *refusal;
  auto* list = static_cast<ListBox*>(control);
  std::vector<int> indices;
  for (const std::string& word : words.From(1).Texts()) {
    auto index = ParseIndex(word, list->Entries().size());
    if (!index) return Reply::Problem("no such entry of " + words[0] + ": " + word);
    indices.push_back(*index);
  }
  list->UserMark(indices);
  return {};
}

Reply Type(Console& console, const Arguments& words) {
  Control* control = FindControl(console, words[0]).control;
  if (control == nullptr) return NoSuch(words[0]);
  if (control->kind() != ControlKind::TextBox) return NotFor("type into", *control);
  if (auto refusal = RefusalOf(*control)) return *refusal;
  static_cast<TextBox*>(control)->UserType(words[1]);
  return {};
}

Reply Close(Console& console, const Arguments& words) {
  Form* form = words.empty() ? FrontForm(console) : FindForm(console, words[0]);
  if (form == nullptr) return Reply::Problem(words.empty() ? "no window" : "no such window: " + words[0]);
  // Only a window that is seen has a close box; a request by name reaches a hidden one as well.
  if (words.empty() && !form->Visible()) return "refused: " + form->name() + " is hidden";
  form->Unload(UnloadMode::ControlMenu);
  return {};
}

// Event handlers are named after their control and its event: cmdHelp_Click, Timer1_Timer. Nothing if no
// loaded window has such a handler.
std::optional<CallOutcome> CallHandler(Console& console, std::string_view routine, bool arguments) {
  struct Event {
    std::string_view suffix;
    Control::Handler Control::*handler;
  };
  static constexpr std::array kEvents = std::to_array<Event>(
      {{"_Click", &Control::Click}, {"_Timer", &Control::Click}, {"_MouseDown", &Control::MouseDown}});
  for (const Event& event : kEvents) {
    if (!SameText(routine.substr(routine.size() - std::min(event.suffix.size(), routine.size())), event.suffix))
      continue;
    Control* control = FindControl(console, routine.substr(0, routine.size() - event.suffix.size())).control;
    // A timer's one event goes by its own name.
    if (control == nullptr || (control->kind() == ControlKind::Timer) != (event.suffix == "_Timer")) continue;
    Control::Handler handler = control->*event.handler;
    if (handler == nullptr) continue;
    if (arguments) return CallOutcome{CallOutcome::Kind::WrongArguments, {}};
    handler();
    return CallOutcome{};
  }
  return std::nullopt;
}

Reply Do(Console& console, const Arguments& words) {
  Console::Process* process = console.Current();
  if (process == nullptr) return Reply::Problem("the program does not run");
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
    {"tick", 1, 1, Tick<true>},
    {"untick", 1, 1, Tick<false>},
    {"click", 1, 1, Click},
    {"mousedown", 1, 1, MouseDown},
    {"choose", 2, 2, Choose},
    {"mark", 1, kAnyNumber, Mark},
    {"type", 2, 2, Type},
    {"close", 0, 1, Close},
    {"do", 1, kAnyNumber, Do},
});

}  // namespace

std::span<const Command> UserCommands() {
  return kCommands;
}

}  // namespace qb::rehearse
