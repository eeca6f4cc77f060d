// The windows of a program that runs on a machine: it keeps their order and registers them with the
// machine, so that other programs, and a second copy of this one, can find them.
#pragma once

#include <string>
#include <vector>

#include "platform/machine/machine.h"
#include "widgets/form.h"

namespace qb {

class TextView : public FormWatcher {
 public:
  // Registers the hidden owner window of the application under its title. The machine must outlive the
  // view, and the view the forms.
  TextView(machine::Machine& machine, const std::string& application_title);
  ~TextView() override;
  TextView(const TextView&) = delete;
  TextView& operator=(const TextView&) = delete;

  // The owner window, of class "ThunderRT6Main"; the first form stands directly above it in z-order.
  WindowHandle ApplicationWindow() const { return application_; }

  // The loaded forms: visible ones first, each of the two groups in z-order.
  std::vector<Form*> FrontToBack() const;
  std::vector<Form*> InLoadingOrder() const;

  void FormLoaded(Form& form) override;
  void FormUnloaded(Form& form) override;
  void FormChanged(Form& form, Aspect aspect) override;
  // A drawing is made anew each time that it is asked for, so nothing is ever out of date.
  void ControlChanged(Control&) override {}
  WindowHandle WindowOf(const Form& form) const override;
  int TextWidth(const Form& form, std::string_view text) const override;
  WindowHandle ActiveWindow() const override;
  // Opens the menu and returns at once: the click of one of its items closes it.
  void PopupMenu(Form& form, MenuItem& menu) override;

 private:
  struct Window {
    Form* form = nullptr;
    WindowHandle handle = WindowHandle::None;
  };
  machine::OwnWindow ActionsOf(Form& form);
  void Report(Form& form);
  void ToFront(Form& form);

  machine::Machine& machine_;
  WindowHandle application_ = WindowHandle::None;
  std::vector<Window> loaded_;  // in the order of loading; the first is the main form
  std::vector<Form*> z_order_;  // front one first
};

}  // namespace qb
