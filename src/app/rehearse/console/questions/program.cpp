// What can be asked of the program and its windows.
#include <algorithm>
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/replies.h"
#include "app/rehearse/console/targets.h"
#include "app/rehearse/console/values.h"
#include "runtime/text.h"
#include "view/text/drawing.h"

namespace qb::rehearse {
namespace {

// The windows of the program, loaded or not.
constexpr std::array<std::string_view, 6> kWindows = {"frmMain",     "frmOptions", "frmCookieManager",
                                                      "frmAutoKill", "frmThumbs",  "frmAbout"};

// Of a window that is not loaded one thing can be told: it is not to be seen.
bool AsksWhetherUnloadedIsVisible(std::string_view owner, std::string_view property) {
  return SameText(property, "Visible") &&
         std::any_of(kWindows.begin(), kWindows.end(), [&](std::string_view name) { return SameText(name, owner); });
}

Reply Get(Console& console, const Arguments& words) {
  Console::Process* process = console.Current();
  if (process == nullptr) return NotRunning();
  const std::string& name = words[0];
  std::size_t dot = name.rfind('.');
  if (dot == std::string::npos) {
    auto value = process->program->Variable(name);
    return value ? Reply(*value) : NoSuch("variable", name);
  }
  std::string owner = name.substr(0, dot);
  std::string property = name.substr(dot + 1);
  std::optional<std::string> value;
  if (Form* form = FindForm(console, owner)) {
    value = form->Property(property);
  } else if (Control* control = FindControl(console, owner).control) {
    value = control->Property(property);
  } else if (AsksWhetherUnloadedIsVisible(owner, property)) {
    value = BooleanText(false);
  } else {
    return NoSuch("window or control", owner);
  }
  return value ? Reply(*value) : NoSuch("property", name);
}

Reply List(Console& console, const Arguments& words) {
  Control* control = FindControl(console, words[0]).control;
  if (control == nullptr) return NoSuch("control", words[0]);
  switch (control->kind()) {
    case ControlKind::ListBox:
      return static_cast<const ListBox*>(control)->Entries();
    case ControlKind::ComboBox:
      return static_cast<const ComboBox*>(control)->Entries();
    default:
      return NoSuch("list", words[0]);
  }
}

Reply Log(Console& console, const Arguments&) {
  Control* control = FindControl(console, "frmMain.lstStatus").control;
  if (control == nullptr || control->kind() != ControlKind::ListBox) return NotRunning();
  Reply reply;
  for (const std::string& entry : static_cast<const ListBox*>(control)->Entries()) {
    std::size_t text = entry.find(" - ");
    reply.lines.push_back(text == std::string::npos ? entry : entry.substr(text));
  }
  return reply;
}

// A program that does not run has no timers and no windows: the answer is empty.
Reply Timers(Console& console, const Arguments&) {
  Console::Process* process = console.Current();
  Reply reply;
  if (process == nullptr) return reply;
  for (const Form* form : process->view.InLoadingOrder()) {
    for (const Control* control : form->Controls()) {
      if (control->kind() != ControlKind::Timer) continue;
      const auto& timer = static_cast<const Timer&>(*control);
      reply.lines.push_back(timer.name() + " " + std::to_string(timer.Interval()) +
                            (timer.TimerEnabled() ? " on" : " off"));
    }
  }
  return reply;
}

Reply Forms(Console& console, const Arguments&) {
  Console::Process* process = console.Current();
  Reply reply;
  if (process == nullptr) return reply;
  for (const Form* form : process->view.FrontToBack()) {
    reply.lines.push_back(form->name() + (form->Visible() ? " visible" : " hidden"));
  }
  return reply;
}

Reply Show(Console& console, const Arguments& words) {
  Form* form = words.empty() ? FrontForm(console) : FindForm(console, words[0]);
  if (form == nullptr) return words.empty() ? NotRunning() : NoSuch("window", words[0]);
  return SplitLines(Draw(*form));
}

Reply Running(Console& console, const Arguments&) {
  return std::string(console.Current() != nullptr ? "yes" : "no");
}

constexpr std::array kQuestions = std::to_array<Command>({
    {"get", 1, 1, Get},
    {"list", 1, 1, List},
    {"log", 0, 0, Log},
    {"timers", 0, 0, Timers},
    {"forms", 0, 0, Forms},
    {"show", 0, 1, Show},
    {"running", 0, 0, Running},
});

}  // namespace

namespace questions {

std::span<const Command> Program() {
  return kQuestions;
}

}  // namespace questions

}  // namespace qb::rehearse
