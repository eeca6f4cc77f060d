// A control: its properties and its handlers, without a picture. Views draw it and pass on what the
// user does through the User… members; code uses the others.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace qb {

class Form;

enum class ControlKind {
  Frame,
  Label,
  Link,
  Button,
  CheckBox,
  Option,
  ListBox,
  ComboBox,
  TextBox,
  TabStrip,
  ProgressBar,
  PictureBox,
  Timer,
  MenuItem
};

class Control {
 public:
  using Handler = std::function<void()>;

  // `name` and `caption` are copied; the form keeps a pointer and must outlive the control.
  Control(Form& form, ControlKind kind, std::string name, std::string caption = {});
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  ControlKind kind() const { return kind_; }
  const std::string& name() const { return name_; }
  Form& form() const { return form_; }

  // A caption may hold an ampersand before its access key.
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  const std::string& ToolTip() const { return tool_tip_; }
  // A title stands above the text, where there is one.
  const std::string& ToolTipTitle() const { return tool_tip_title_; }
  void SetToolTip(std::string tip, std::string title = std::string());

  // What the mouse does to a control that takes a click. A view calls them only for a control that
  // WhyRefused lets through.
  virtual void UserMouseDown();
  virtual void UserClick();

  // A property by its name, without regard to case, as text: numbers in decimal, booleans as "true"
  // or "false". Nothing if this kind of control has no such property.
  virtual std::optional<std::string> Property(std::string_view name) const;

  Handler Click;
  Handler MouseDown;

 protected:
  // Tells the view that what it shows of this control is out of date.
  void Changed();
  // Runs a handler, if there is one and the program has not ended.
  void Raise(const Handler& handler) const;

 private:
  Form& form_;
  const ControlKind kind_;
  const std::string name_;
  std::string caption_;
  std::string tool_tip_, tool_tip_title_;
  bool enabled_ = true;
  bool visible_ = true;
};

// Why the user cannot reach a control now.
enum class Refusal { None, Disabled, Hidden };
// Hidden: not visible itself, on a tab page that is not in front, in a hidden frame, in a menu entry
// that is not shown, or on a form that is not visible.
Refusal WhyRefused(const Control& control);

// Compares names of controls and properties without regard to the case of ASCII letters.
bool SameName(std::string_view a, std::string_view b);

// "true" and "false", as properties are read.
std::string BooleanText(bool value);

}  // namespace qb
