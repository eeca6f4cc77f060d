#include "widgets/controls.h"

#include <algorithm>

#include "widgets/form.h"

namespace qb {

namespace {

// Properties of one kind of control: the one that is asked for, else what every control has.
struct NamedText {
  std::string_view name;
  std::string text;
};

std::optional<std::string> OneOf(const Control& control, std::string_view name, std::vector<NamedText> own) {
  for (NamedText& property : own) {
    if (SameName(property.name, name)) return std::move(property.text);
  }
  return control.Control::Property(name);
}

bool Within(int index, std::size_t count) {
  return index >= 0 && static_cast<std::size_t>(index) < count;
}

std::string EntryText(const std::vector<std::string>& entries, int index) {
  return Within(index, entries.size()) ? entries[static_cast<std::size_t>(index)] : std::string();
}

}  // namespace

void Label::SetBold(bool bold) {
  if (bold == bold_) return;
  bold_ = bold;
  Changed();
}

std::optional<std::string> Label::Property(std::string_view name) const {
  return OneOf(*this, name, {{"FontBold", BooleanText(bold_)}});
}

std::optional<std::string> Button::Property(std::string_view name) const {
  return OneOf(*this, name, {{"Default", BooleanText(default_)}, {"Cancel", BooleanText(cancel_)}});
}

void CheckBox::SetValue(int value) {
  value = value != 0 ? 1 : 0;
  if (value == value_) return;
  value_ = value;
  Changed();
  Raise(Click);
}

std::optional<std::string> CheckBox::Property(std::string_view name) const {
  return OneOf(*this, name, {{"Value", std::to_string(value_)}});
}

void OptionButton::SetValue(bool value) {
  if (value == value_) return;
  value_ = value;
  if (value_) {
    for (Control* other : form().Controls()) {
      if (other == this || other->kind() != ControlKind::Option) continue;
      auto& option = static_cast<OptionButton&>(*other);
      if (option.group_ == group_ && option.value_) option.SetValue(false);
    }
  }
  Changed();
  if (value_) Raise(Click);
}

std::optional<std::string> OptionButton::Property(std::string_view name) const {
  return OneOf(*this, name, {{"Value", BooleanText(value_)}});
}

std::string ListBox::List(int index) const {
  return EntryText(entries_, index);
}

void ListBox::AddItem(std::string text) {
  entries_.push_back(std::move(text));
  Changed();
}

bool ListBox::RemoveItem(int index) {
  if (!Within(index, entries_.size())) return false;
  entries_.erase(entries_.begin() + index);
  std::set<int> moved;
  for (int marked : marked_) {
    if (marked != index) moved.insert(marked > index ? marked - 1 : marked);
  }
  marked_ = std::move(moved);
  if (list_index_ == index) list_index_ = -1;
  if (list_index_ > index) --list_index_;
  Changed();
  return true;
}

void ListBox::Clear() {
  entries_.clear();
  marked_.clear();
  list_index_ = -1;
  Changed();
}

bool ListBox::SetListIndex(int index) {
  if (index != -1 && !Within(index, entries_.size())) return false;
  list_index_ = index;
  if (!multi_select_) marked_ = index == -1 ? std::set<int>{} : std::set<int>{index};
  Changed();
  return true;
}

void ListBox::SetHorizontalExtent(int extent) {
  if (extent == horizontal_extent_) return;
  horizontal_extent_ = extent;
  Changed();
}

void ListBox::UserMark(const std::vector<int>& indices) {
  marked_.clear();
  for (int index : indices) {
    if (!Within(index, entries_.size())) continue;
    if (!multi_select_) marked_.clear();
    marked_.insert(index);
    list_index_ = index;
  }
  Changed();
  Raise(Click);
}

std::optional<std::string> ListBox::Property(std::string_view name) const {
  return OneOf(*this, name,
               {{"ListCount", std::to_string(ListCount())},
                {"ListIndex", std::to_string(list_index_)},
                {"Text", EntryText(entries_, list_index_)},
                {"SelCount", std::to_string(marked_.size())},
                {"Tag", horizontal_extent_ == 0 ? "" : std::to_string(horizontal_extent_)}});
}

void ComboBox::AddItem(std::string text) {
  entries_.push_back(std::move(text));
  Changed();
}

void ComboBox::Clear() {
  entries_.clear();
  list_index_ = -1;
  Changed();
}

bool ComboBox::SetListIndex(int index) {
  if (index != -1 && !Within(index, entries_.size())) return false;
  list_index_ = index;
  Changed();
  return true;
}

void ComboBox::UserPick(int index) {
  if (SetListIndex(index)) Raise(Click);
}

std::optional<std::string> ComboBox::Property(std::string_view name) const {
  return OneOf(*this, name,
               {{"ListCount", std::to_string(ListCount())},
                {"ListIndex", std::to_string(list_index_)},
                {"Text", EntryText(entries_, list_index_)}});
}

void TextBox::SetText(std::string text) {
  if (text == text_) return;
  text_ = std::move(text);
  Changed();
}

std::optional<std::string> TextBox::Property(std::string_view name) const {
  return OneOf(*this, name, {{"Text", text_}});
}

bool TabStrip::SetTab(int tab) {
  if (!Within(tab, pages_.size())) return false;
  if (tab != tab_) {
    tab_ = tab;
    Changed();
  }
  return true;
}

void TabStrip::UserPick(int tab) {
  if (SetTab(tab)) Raise(Click);
}

std::optional<std::string> TabStrip::Property(std::string_view name) const {
  return OneOf(*this, name,
               {{"Tab", std::to_string(tab_)},
                {"Caption", pages_[static_cast<std::size_t>(tab_)].caption},
                {"ToolTip", pages_[static_cast<std::size_t>(tab_)].tool_tip}});
}

bool ProgressBar::SetValue(int value) {
  if (value < 0 || value > max_) return false;
  if (value != value_) {
    value_ = value;
    Changed();
  }
  return true;
}

bool ProgressBar::SetMax(int max) {
  if (max < 1) return false;
  if (max != max_) {
    max_ = max;
    value_ = std::min(value_, max_);
    Changed();
  }
  return true;
}

std::optional<std::string> ProgressBar::Property(std::string_view name) const {
  return OneOf(*this, name, {{"Value", std::to_string(value_)}, {"Max", std::to_string(max_)}, {"Min", "0"}});
}

Timer::Timer(Form& form, std::string name, std::uint32_t interval_ms, bool enabled)
    : Control(form, ControlKind::Timer, std::move(name)), interval_(interval_ms), running_wanted_(enabled) {
  id_ = static_cast<std::uint32_t>(form.Controls().size());
}

Timer::~Timer() {
  Disarm();
}

void Timer::SetInterval(std::uint32_t interval_ms) {
  interval_ = interval_ms;
  Disarm();
  Arm();
}

void Timer::SetTimerEnabled(bool enabled) {
  if (enabled == running_wanted_) return;
  running_wanted_ = enabled;
  enabled ? Arm() : Disarm();
}

void Timer::Arm() {
  if (!running_wanted_ || interval_ == 0 || !form().Loaded()) return;
  armed_ = form().platform().pump.SetTimer(form().Window(), id_, interval_, [this] { Due(); });
}

void Timer::Disarm() {
  if (!armed_) return;
  armed_ = false;
  StepOver(form().platform().pump.KillTimer(form().Window(), id_));
}

void Timer::Due() {
  if (in_handler_ || !Tick) return;
  in_handler_ = true;
  Raise(Tick);
  in_handler_ = false;
}

std::optional<std::string> Timer::Property(std::string_view name) const {
  return OneOf(*this, name, {{"Interval", std::to_string(interval_)}, {"Enabled", BooleanText(running_wanted_)}});
}

void MenuItem::SetChecked(bool checked) {
  if (checked == checked_) return;
  checked_ = checked;
  Changed();
}

std::optional<std::string> MenuItem::Property(std::string_view name) const {
  return OneOf(*this, name, {{"Checked", BooleanText(checked_)}});
}

}  // namespace qb
