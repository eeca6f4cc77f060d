// Shows forms as native windows.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "platform/win32/win32_messages.h"
#include "view/win32/native_form.h"
#include "widgets/form.h"

namespace qb::win32 {

class NativeView : public FormWatcher, private NativeForm::Host {
 public:
  // Makes the application window and takes the keys that pass the pump. `messages` must outlive the view.
  explicit NativeView(Win32Messages& messages);
  ~NativeView() override;
  NativeView(const NativeView&) = delete;
  NativeView& operator=(const NativeView&) = delete;

  // The hidden window of the class "ThunderRT6Main" that owns the main window. Its title is the application's;
  // the window above it is always the main window, by which a second copy of the program finds that one.
  WindowHandle ApplicationWindow() const;

  void FormLoaded(Form& form) override;
  void FormUnloaded(Form& form) override;
  void FormChanged(Form& form, Aspect aspect) override;
  void ControlChanged(Control& control) override;
  WindowHandle WindowOf(const Form& form) const override;
  int TextWidth(const Form& form, std::string_view text) const override;
  WindowHandle ActiveWindow() const override;
  void PopupMenu(Form& form, MenuItem& menu) override;

 private:
  // A form that is shown modally, and the windows that cannot be used meanwhile.
  struct ModalForm {
    const Form* form = nullptr;
    std::vector<HWND> disabled;
  };

  void OrderChanged(Form& form) override;
  bool IsMain(const Form& form) const override { return &form == main_; }
  bool OnlyAnswering() const override { return messages_.Answering(); }
  bool TakeMessage(MSG& message);
  std::shared_ptr<NativeForm> NativeOf(const Form& form) const;
  void BeginModal(Form& form, HWND window);
  void EndModal(const Form& form);
  void WakeLoops() const;

  Win32Messages& messages_;
  HWND application_ = nullptr;
  const Form* main_ = nullptr;  // the first form that was loaded
  std::map<const Form*, std::shared_ptr<NativeForm>> forms_;
  std::vector<ModalForm> modal_;
};

}  // namespace qb::win32
