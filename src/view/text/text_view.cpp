#include "view/text/text_view.h"

#include <algorithm>

#include "view/text/drawing.h"

namespace qb {

TextView::TextView(machine::Machine& machine, const std::string& application_title) : machine_(machine) {
  application_ = machine_.OwnWindowCreate("ThunderRT6Main", application_title, {});
}

TextView::~TextView() {
  for (const Window& window : loaded_) machine_.OwnWindowDestroy(window.handle);
  machine_.OwnWindowDestroy(application_);
}

std::vector<Form*> TextView::FrontToBack() const {
  std::vector<Form*> forms = z_order_;
  std::stable_partition(forms.begin(), forms.end(), [](const Form* form) { return form->Visible(); });
  return forms;
}

std::vector<Form*> TextView::InLoadingOrder() const {
  std::vector<Form*> forms;
  for (const Window& window : loaded_) forms.push_back(window.form);
  return forms;
}

void TextView::FormLoaded(Form& form) {
  if (WindowOf(form) != WindowHandle::None) return;
  WindowHandle handle = machine_.OwnWindowCreate("ThunderRT6FormDC", form.Caption(), ActionsOf(form));
  loaded_.push_back({&form, handle});
  z_order_.push_back(&form);
  machine_.OwnWindowState(handle, false, form.Caption());
}

WindowHandle TextView::ActiveWindow() const {
  const std::vector<Form*> forms = FrontToBack();
  return forms.empty() || !forms.front()->Visible() ? WindowHandle::None : WindowOf(*forms.front());
}

void TextView::FormUnloaded(Form& form) {
  machine_.OwnWindowDestroy(WindowOf(form));
  std::erase_if(loaded_, [&](const Window& window) { return window.form == &form; });
  std::erase(z_order_, &form);
}

void TextView::FormChanged(Form& form, Aspect aspect) {
  if (WindowOf(form) == WindowHandle::None) return;
  switch (aspect) {
    case Aspect::Visibility:
      Report(form);
      if (form.Visible()) ToFront(form);
      break;
    case Aspect::Caption:
      Report(form);
      break;
    case Aspect::Focus:
      ToFront(form);
      break;
    case Aspect::State:
    case Aspect::Center:
    case Aspect::Repaint:
      break;
  }
}

WindowHandle TextView::WindowOf(const Form& form) const {
  auto found = std::find_if(loaded_.begin(), loaded_.end(), [&](const Window& window) { return window.form == &form; });
  return found == loaded_.end() ? WindowHandle::None : found->handle;
}

int TextView::TextWidth(const Form&, std::string_view text) const {
  return static_cast<int>(Columns(text));
}

void TextView::PopupMenu(Form&, MenuItem& menu) {
  menu.open = true;
}

machine::OwnWindow TextView::ActionsOf(Form& form) {
  machine::OwnWindow actions;
  actions.shown = [this, &form](bool visible) {
    form.ShownFromOutside(visible);
    // SW_SHOWNORMAL, the only command that shows here, restores a minimised window as well.
    if (visible) form.StateFromOutside(WindowState::Normal);
    Report(form);
    if (visible) ToFront(form);
  };
  actions.restored = [&form] { form.StateFromOutside(WindowState::Normal); };
  actions.to_front = [this, &form] { ToFront(form); };
  actions.message = [&form](std::uint32_t message, std::uint64_t, std::int64_t) {
    // The system cannot tell a posted WM_CLOSE from the close box: both ask with the same mode.
    if (message == kMessageClose) form.Unload(UnloadMode::ControlMenu);
  };
  return actions;
}

void TextView::Report(Form& form) {
  machine_.OwnWindowState(WindowOf(form), form.Visible(), form.Caption());
}

void TextView::ToFront(Form& form) {
  std::erase(z_order_, &form);
  z_order_.insert(z_order_.begin(), &form);
  // The owner window follows the main form, so that it never stands above another.
  if (loaded_.front().form == &form) machine_.OwnWindowToFront(application_);
  machine_.OwnWindowToFront(WindowOf(form));
}

}  // namespace qb
