// What the user does to the windows of the program.
#include <algorithm>
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/replies.h"
#include "app/rehearse/console/targets.h"
#include "app/rehearse/console/values.h"

namespace qb::rehearse {
namespace {

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
  if (control == nullptr) return NoSuch("control", words[0]);
  auto ticked = Ticked(*control);
  if (!ticked) return NotFor(wanted ? "tick" : "untick", *control);
  return *ticked == wanted ? Reply() : ClickOn(*control);
}

Reply Click(Console& console, const Arguments& words) {
  Control* control = FindControl(console, words[0]).control;
  if (control == nullptr) return NoSuch("control", words[0]);
  return control->kind() == ControlKind::Timer ? NotFor("click", *control) : ClickOn(*control);
}

Reply MouseDown(Console& console, const Arguments& words) {
  Control* control = FindControl(console, words[0]).control;
  if (control == nullptr) return NoSuch("control", words[0]);
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
  if (control == nullptr) return NoSuch("control", words[0]);
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
  if (control == nullptr) return NoSuch("control", words[0]);
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
  if (control == nullptr) return NoSuch("control", words[0]);
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

Reply Answer(Console& console, const Arguments& words) {
  console.machine().AddAnswers(words.Texts());
  return {};
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
    {"answer", 1, kAnyNumber, Answer},
});

}  // namespace

namespace commands {

std::span<const Command> Controls() {
  return kCommands;
}

}  // namespace commands

}  // namespace qb::rehearse
