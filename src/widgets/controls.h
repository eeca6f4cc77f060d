// The kinds of control. Each behaves, under code and under the user, as the Windows control does.
#pragma once

#include <cstdint>
#include <set>
#include <utility>
#include <vector>

#include "widgets/control.h"

namespace qb {

class Frame : public Control {
 public:
  Frame(Form& form, std::string name, std::string caption)
      : Control(form, ControlKind::Frame, std::move(name), std::move(caption)) {}
};

class Label : public Control {
 public:
  Label(Form& form, std::string name, std::string caption)
      : Control(form, ControlKind::Label, std::move(name), std::move(caption)) {}
  // True for one that is drawn as a title across its window or page.
  bool IsHeading() const { return heading_; }
  bool Bold() const { return bold_; }
  void SetBold(bool bold);
  std::optional<std::string> Property(std::string_view name) const override;

 protected:
  bool heading_ = false;

 private:
  bool bold_ = false;
};

class HeadingLabel : public Label {
 public:
  HeadingLabel(Form& form, std::string name, std::string caption) : Label(form, std::move(name), std::move(caption)) {
    heading_ = true;
  }
};

// Text that takes a click.
class LinkLabel : public Control {
 public:
  LinkLabel(Form& form, std::string name, std::string caption)
      : Control(form, ControlKind::Link, std::move(name), std::move(caption)) {}
};

// The pictures that a button may carry beside its text.
enum class ButtonIcon { None, Kill, Save, Cancel, Help, Reset, Folder, Search, Forward, Back, Clear, Cookie, Play };

// The mark beside the title of a button's tool tip.
enum class TipIcon { None, Information, Warning, Error };

class Button : public Control {
 public:
  Button(Form& form, std::string name, std::string caption)
      : Control(form, ControlKind::Button, std::move(name), std::move(caption)) {}
  // The button that the Enter key presses, and the one that Escape presses.
  bool Default() const { return default_; }
  void SetDefault(bool value) { default_ = value; }
  bool CancelButton() const { return cancel_; }
  void SetCancelButton(bool value) { cancel_ = value; }
  // Both are for views that can draw. To be set before the form is loaded.
  ButtonIcon Icon() const { return icon_; }
  void SetIcon(ButtonIcon icon) { icon_ = icon; }
  TipIcon ToolTipIcon() const { return tip_icon_; }
  void SetToolTipIcon(TipIcon icon) { tip_icon_ = icon; }
  std::optional<std::string> Property(std::string_view name) const override;

 private:
  bool default_ = false;
  bool cancel_ = false;
  ButtonIcon icon_ = ButtonIcon::None;
  TipIcon tip_icon_ = TipIcon::Information;
};

class CheckBox : public Control {
 public:
  CheckBox(Form& form, std::string name, std::string caption)
      : Control(form, ControlKind::CheckBox, std::move(name), std::move(caption)) {}
  int Value() const { return value_; }  // 0 or 1
  // Anything but 0 ticks. A change, and only a change, runs Click, from code as from the user.
  void SetValue(int value);
  void UserMouseDown() override {
    click_lost_ = false;
    Control::UserMouseDown();
  }
  void UserClick() override {
    if (!click_lost_) SetValue(1 - value_);
    click_lost_ = false;
  }
  // For a MouseDown handler that opens a modal window: the release of the button goes elsewhere, and
  // the click of this press does not come.
  void LoseClick() { click_lost_ = true; }
  std::optional<std::string> Property(std::string_view name) const override;

 private:
  int value_ = 0;
  bool click_lost_ = false;
};

// One of a group of which at most one is set. Setting one clears the others of its group in silence.
class OptionButton : public Control {
 public:
  OptionButton(Form& form, std::string name, std::string caption, std::string group)
      : Control(form, ControlKind::Option, std::move(name), std::move(caption)), group_(std::move(group)) {}
  bool Value() const { return value_; }
  // Becoming set runs Click; being cleared does not.
  void SetValue(bool value);
  const std::string& Group() const { return group_; }
  void UserClick() override { SetValue(true); }
  std::optional<std::string> Property(std::string_view name) const override;

 private:
  std::string group_;
  bool value_ = false;
};

class ListBox : public Control {
 public:
  ListBox(Form& form, std::string name, bool multi_select = false)
      : Control(form, ControlKind::ListBox, std::move(name)), multi_select_(multi_select) {}
  bool MultiSelect() const { return multi_select_; }
  int ListCount() const { return static_cast<int>(entries_.size()); }
  const std::vector<std::string>& Entries() const { return entries_; }
  // The text of an entry; empty past either end.
  std::string List(int index) const;
  void AddItem(std::string text);
  // False, and nothing happens, if there is no such entry. The marks move with their entries.
  bool RemoveItem(int index);
  void Clear();
  int ListIndex() const { return list_index_; }  // -1: none
  // Selects one entry and scrolls it into view, without Click. An index past either end is refused.
  bool SetListIndex(int index);
  bool Selected(int index) const { return marked_.count(index) != 0; }
  // How far the list scrolls sideways, in the unit of FormWatcher::TextWidth; 0 until it is set. It is the list's Tag.
  int HorizontalExtent() const { return horizontal_extent_; }
  void SetHorizontalExtent(int extent);
  // The user marks exactly these (of a single-select list, the last of them), and Click runs.
  void UserMark(const std::vector<int>& indices);
  std::optional<std::string> Property(std::string_view name) const override;

 private:
  const bool multi_select_;
  std::vector<std::string> entries_;
  std::set<int> marked_;
  int list_index_ = -1;
  int horizontal_extent_ = 0;
};

// A drop-down list without a text field.
class ComboBox : public Control {
 public:
  ComboBox(Form& form, std::string name) : Control(form, ControlKind::ComboBox, std::move(name)) {}
  int ListCount() const { return static_cast<int>(entries_.size()); }
  const std::vector<std::string>& Entries() const { return entries_; }
  void AddItem(std::string text);
  void Clear();
  int ListIndex() const { return list_index_; }  // -1: none
  // From code: no Click. An index past either end is refused and leaves the old one.
  bool SetListIndex(int index);
  // The user picks an entry, also the one that is picked already: Click runs.
  void UserPick(int index);
  std::optional<std::string> Property(std::string_view name) const override;

 private:
  std::vector<std::string> entries_;
  int list_index_ = -1;
};

class TextBox : public Control {
 public:
  TextBox(Form& form, std::string name) : Control(form, ControlKind::TextBox, std::move(name)) {}
  const std::string& Text() const { return text_; }
  void SetText(std::string text);
  void UserType(std::string text) { SetText(std::move(text)); }
  std::optional<std::string> Property(std::string_view name) const override;

 private:
  std::string text_;
};

class TabStrip : public Control {
 public:
  struct Page {
    std::string caption;
    std::string tool_tip;
  };
  TabStrip(Form& form, std::string name, std::vector<Page> pages)
      : Control(form, ControlKind::TabStrip, std::move(name)), pages_(std::move(pages)) {}
  const std::vector<Page>& Pages() const { return pages_; }
  int Tab() const { return tab_; }  // from 0
  // An index past either end is refused.
  bool SetTab(int tab);
  void UserPick(int tab);
  std::optional<std::string> Property(std::string_view name) const override;

 private:
  std::vector<Page> pages_;
  int tab_ = 0;
};

class ProgressBar : public Control {
 public:
  ProgressBar(Form& form, std::string name) : Control(form, ControlKind::ProgressBar, std::move(name)) {}
  int Value() const { return value_; }
  int Max() const { return max_; }
  // A value below 0 or above Max is refused: false, and the old one stays.
  [[nodiscard]] bool SetValue(int value);
  // A maximum below 1 is refused. A value above the new maximum is drawn back to it.
  [[nodiscard]] bool SetMax(int max);
  std::optional<std::string> Property(std::string_view name) const override;

 private:
  int value_ = 0;
  int max_ = 100;
};

// Runs Tick each Interval while enabled and its form is loaded. A tick that falls due
// while the handler still runs is dropped.
class Timer : public Control {
 public:
  Timer(Form& form, std::string name, std::uint32_t interval_ms, bool enabled);
  ~Timer() override;
  std::uint32_t Interval() const { return interval_; }  // ms
  void SetInterval(std::uint32_t interval_ms);
  bool TimerEnabled() const { return running_wanted_; }
  void SetTimerEnabled(bool enabled);
  // Called by the form when it is loaded and unloaded.
  void FormLoaded() { Arm(); }
  void FormUnloaded() { Disarm(); }
  std::optional<std::string> Property(std::string_view name) const override;

  Handler Tick;

 private:
  void Arm();
  void Disarm();
  void Due();
  std::uint32_t interval_;
  bool running_wanted_;
  std::uint32_t id_ = 0;
  bool armed_ = false;
  bool in_handler_ = false;
};

// An entry of a menu; one with children is a menu of its own. The caption "-" is a separator.
class MenuItem : public Control {
 public:
  MenuItem(Form& form, std::string name, std::string caption)
      : Control(form, ControlKind::MenuItem, std::move(name), std::move(caption)) {}
  std::vector<MenuItem*> children;
  MenuItem* parent = nullptr;
  bool popup = false;    // a menu that is only shown on a right click, and is closed otherwise
  bool open = false;     // of a popup: it is on the screen now
  std::string shortcut;  // as "Ctrl+S"; empty for none
  bool Checked() const { return checked_; }
  void SetChecked(bool checked);
  // True for an entry of a popup menu that is on the screen.
  bool InOpenPopup() const {
    for (const MenuItem* entry = this; entry != nullptr; entry = entry->parent) {
      if (entry->popup && entry->open) return true;
    }
    return false;
  }
  bool Separator() const { return Caption() == "-"; }
  std::optional<std::string> Property(std::string_view name) const override;

 private:
  bool checked_ = false;
};

}  // namespace qb
