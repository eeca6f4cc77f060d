#include "app/rehearse/console/targets.h"

#include "app/rehearse/console/console.h"
#include "runtime/text.h"

namespace qb::rehearse {
namespace {

std::vector<Form*> LoadedForms(Console& console) {
  Console::Process* process = console.Current();
  return process == nullptr ? std::vector<Form*>() : process->view.FrontToBack();
}

}  // namespace

Form* FrontForm(Console& console) {
  std::vector<Form*> forms = LoadedForms(console);
  return forms.empty() ? nullptr : forms.front();
}

Form* FindForm(Console& console, std::string_view name) {
  for (Form* form : LoadedForms(console)) {
    if (SameText(form->name(), name)) return form;
  }
  return nullptr;
}

Target FindControl(Console& console, std::string_view name) {
  std::size_t dot = name.find('.');
  if (dot != std::string_view::npos) {
    Form* form = FindForm(console, name.substr(0, dot));
    Control* control = form == nullptr ? nullptr : form->Find(name.substr(dot + 1));
    return control == nullptr ? Target() : Target{form, control};
  }
  for (Form* form : LoadedForms(console)) {
    if (Control* control = form->Find(name)) return {form, control};
  }
  return {};
}

}  // namespace qb::rehearse
