#include "widgets/form.h"

#include <algorithm>

namespace qb {

Form::Form(const FormHost& host, std::string name, std::string caption)
    : host_(host), name_(std::move(name)), caption_(std::move(caption)) {
  host_.life.Join(*this);
}

Form::~Form() {
  host_.life.Leave(*this);
  // A form that goes without a close request (the program ends at once) still gives back its window.
  Destroy();
}

void Form::Destroy() {
  if (!loaded_) return;
  for (Control* control : controls_) {
    if (control->kind() == ControlKind::Timer) static_cast<Timer*>(control)->FormUnloaded();
  }
  visible_ = false;
  host_.watcher.FormUnloaded(*this);
  loaded_ = false;
}

void Form::Delist(Control* control) {
  std::erase(controls_, control);
}

WindowHandle Form::Window() const {
  return loaded_ ? watcher().WindowOf(*this) : WindowHandle::None;
}

void Form::SetCaption(std::string caption) {
  caption_ = std::move(caption);
  if (loaded_) watcher().FormChanged(*this, FormWatcher::Aspect::Caption);
}

void Form::Load() {
  if (loaded_ || life().Over()) return;
  loaded_ = true;
  visible_ = false;
  state_ = WindowState::Normal;
  watcher().FormLoaded(*this);
  for (Control* control : controls_) {
    if (control->kind() == ControlKind::Timer) static_cast<Timer*>(control)->FormLoaded();
  }
  Form_Load();
}

void Form::Show() {
  Load();
  if (!loaded_) return;  // its load may have ended it
  visible_ = true;
  watcher().FormChanged(*this, FormWatcher::Aspect::Visibility);
}

void Form::ShowModal() {
  modal_ = true;
  Show();
  while (loaded_ && visible_ && platform().pump.WaitMessage()) {
  }
  modal_ = false;
}

void Form::Hide() {
  if (!loaded_ || !visible_) return;
  visible_ = false;
  watcher().FormChanged(*this, FormWatcher::Aspect::Visibility);
}

void Form::SetState(WindowState state) {
  if (state == state_) return;
  state_ = state;
  if (loaded_) watcher().FormChanged(*this, FormWatcher::Aspect::State);
}

void Form::SetFocus() {
  if (loaded_) watcher().FormChanged(*this, FormWatcher::Aspect::Focus);
}

void Form::Center() {
  if (loaded_) watcher().FormChanged(*this, FormWatcher::Aspect::Center);
}

void Form::Refresh() {
  if (loaded_) watcher().FormChanged(*this, FormWatcher::Aspect::Repaint);
}

bool Form::Unload(UnloadMode mode) {
  if (!loaded_) return true;
  bool cancel = false;
  Form_QueryUnload(cancel, mode);
  if (!loaded_) return true;  // it has unloaded itself
  if (!cancel) Form_Unload(cancel);
  if (cancel) return false;
  Destroy();
  return true;
}

void Form::ShownFromOutside(bool visible) {
  visible_ = visible;
}

void Form::StateFromOutside(WindowState state) {
  state_ = state;
}

Control* Form::Find(std::string_view name) const {
  auto found = std::find_if(controls_.begin(), controls_.end(),
                            [&](const Control* control) { return SameName(control->name(), name); });
  return found == controls_.end() ? nullptr : *found;
}

std::optional<std::string> Form::Property(std::string_view name) const {
  if (SameName(name, "Name")) return name_;
  if (SameName(name, "Caption")) return caption_;
  if (SameName(name, "Visible")) return BooleanText(visible_);
  if (SameName(name, "WindowState")) return std::to_string(static_cast<int>(state_));
  return std::nullopt;
}

}  // namespace qb
