// A window as a plain object: it owns its controls and says how they are arranged.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"
#include "runtime/lifetime.h"
#include "widgets/controls.h"
#include "widgets/layout.h"

namespace qb {

class FormWatcher;

enum class WindowState { Normal = 0, Minimised = 1, Maximised = 2 };

// Who asks a form to close, by the numbers that close handlers are given.
enum class UnloadMode { ControlMenu = 0, Code = 1, WindowsSession = 2 };

// What a form lives in: the system, the view that shows it, and the program that it ends with.
struct FormHost {
  Platform& platform;
  FormWatcher& watcher;
  Lifetime& life;
};

class Form : private Mortal {
 public:
  Form(const FormHost& host, std::string name, std::string caption);
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& name() const { return name_; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  Platform& platform() const { return host_.platform; }
  FormWatcher& watcher() const { return host_.watcher; }
  const Lifetime& life() const { return host_.life; }
  // The native window; None while the form is not loaded.
  WindowHandle Window() const;

  bool Loaded() const { return loaded_; }
  bool Visible() const { return visible_; }
  bool Modal() const { return modal_; }
  WindowState State() const { return state_; }

  // Makes the window, hidden, and runs Form_Load; nothing if it is loaded, or once the program has ended.
  void Load();
  // Loads if need be, shows, and brings to the front.
  void Show();
  // The same, and returns only when the form is hidden or unloaded again, or the program must leave
  // its loops.
  void ShowModal();
  void Hide();
  void SetState(WindowState state);
  void SetFocus();
  // Moves the window to the middle of the screen.
  void Center();
  // Draws what is out of date at once.
  void Refresh();
  // Runs Form_QueryUnload, then Form_Unload; each may cancel. True if the form is gone afterwards.
  bool Unload(UnloadMode mode = UnloadMode::Code);

  // For views: what happened to the native window from outside (another program showed it).
  void ShownFromOutside(bool visible);
  void StateFromOutside(WindowState state);

  const std::vector<Control*>& Controls() const { return controls_; }
  // By name without regard to case; null if there is none.
  Control* Find(std::string_view name) const;
  const Layout& Arrangement() const { return layout_; }
  const std::vector<MenuItem*>& Menus() const { return menus_; }

  // "Visible", "WindowState", "Caption", "Enabled" …, as Control::Property.
  std::optional<std::string> Property(std::string_view name) const;

 protected:
  virtual void Form_Load() {}
  virtual void Form_QueryUnload(bool& /*cancel*/, UnloadMode /*mode*/) {}
  virtual void Form_Unload(bool& /*cancel*/) {}
  void Arrange(Layout layout) { layout_ = std::move(layout); }
  void AddMenu(MenuItem& menu) { menus_.push_back(&menu); }
  // A control that the form itself owns, for those that come out of tables.
  template <typename T, typename... Args>
  T& Add(Args&&... args) {
    auto control = std::make_unique<T>(*this, std::forward<Args>(args)...);
    T& reference = *control;
    owned_.push_back(std::move(control));
    return reference;
  }

 private:
  friend class Control;
  void Enlist(Control* control) { controls_.push_back(control); }
  void Delist(Control* control);
  // The window goes at once, without a question.
  void LifeEnded() override { Destroy(); }
  void Destroy();

  const FormHost host_;
  const std::string name_;
  std::string caption_;
  bool loaded_ = false;
  bool visible_ = false;
  bool modal_ = false;
  WindowState state_ = WindowState::Normal;
  std::vector<Control*> controls_;
  std::vector<MenuItem*> menus_;
  Layout layout_;
  std::vector<std::unique_ptr<Control>> owned_;
};

// What a view hears of forms. It answers by drawing; it never changes a property in reply.
class FormWatcher {
 public:
  enum class Aspect { Visibility, State, Caption, Focus, Center, Repaint };
  virtual ~FormWatcher() = default;
  // The form's window is to be made (hidden) and to be destroyed.
  virtual void FormLoaded(Form& form) = 0;
  virtual void FormUnloaded(Form& form) = 0;
  virtual void FormChanged(Form& form, Aspect aspect) = 0;
  // Any property of the control changed, or an entry of its list.
  virtual void ControlChanged(Control& control) = 0;
  virtual WindowHandle WindowOf(const Form& form) const = 0;
  // How wide a text is in the form's font: pixels, or columns of a view that writes.
  virtual int TextWidth(const Form& form, std::string_view text) const = 0;
  // The window of the form that the user is in; None if it is none of them.
  virtual WindowHandle ActiveWindow() const = 0;
  // Opens a popup menu at the mouse; returns when it is closed, in views that can wait.
  virtual void PopupMenu(Form& form, MenuItem& menu) = 0;
};

}  // namespace qb
