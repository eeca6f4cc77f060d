#include "widgets/control.h"

#include <algorithm>
#include <cctype>

#include "widgets/form.h"

namespace qb {

namespace {

// True if `control` stands in the arrangement where the user can see it, the form's own visibility
// aside. `shown` says whether the place walked so far is on the screen.
std::optional<bool> ShownInLayout(const Layout& layout, const Control& control, bool shown) {
  if (layout.control != nullptr && layout.kind != Layout::Kind::Tabs) shown = shown && layout.control->Visible();
  if (layout.control == &control) return shown;
  for (std::size_t i = 0; i < layout.parts.size(); ++i) {
    bool part_shown = shown;
    if (layout.kind == Layout::Kind::Tabs) {
      // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): tabs always have their strip
      const auto& strip = static_cast<const TabStrip&>(*layout.control);
      part_shown = shown && strip.Visible() && strip.Tab() == static_cast<int>(i);
    }
    if (auto found = ShownInLayout(layout.parts[i], control, part_shown)) return found;
  }
  return std::nullopt;
}

bool MenuShown(const MenuItem& item) {
  for (const MenuItem* entry = &item; entry != nullptr; entry = entry->parent) {
    if (entry->popup ? !entry->open : !entry->Visible()) return false;
  }
  return true;
}

}  // namespace

Control::Control(Form& form, ControlKind kind, std::string name, std::string caption)
    : form_(form), kind_(kind), name_(std::move(name)), caption_(std::move(caption)) {
  form_.Enlist(this);
}

Control::~Control() {
  form_.Delist(this);
}

void Control::SetCaption(std::string caption) {
  if (caption == caption_) return;
  caption_ = std::move(caption);
  Changed();
}

void Control::SetEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  Changed();
}

void Control::SetVisible(bool visible) {
  if (visible == visible_) return;
  visible_ = visible;
  Changed();
}

void Control::SetToolTip(std::string tip, std::string title) {
  tool_tip_ = std::move(tip);
  tool_tip_title_ = std::move(title);
  Changed();
}

void Control::UserMouseDown() {
  Raise(MouseDown);
}

void Control::UserClick() {
  Raise(Click);
}

std::optional<std::string> Control::Property(std::string_view name) const {
  if (SameName(name, "Name")) return name_;
  if (SameName(name, "Caption")) return caption_;
  if (SameName(name, "Enabled")) return BooleanText(enabled_);
  if (SameName(name, "Visible")) return BooleanText(visible_);
  if (SameName(name, "ToolTip")) return tool_tip_;
  if (SameName(name, "ToolTipTitle")) return tool_tip_title_;
  return std::nullopt;
}

void Control::Raise(const Handler& handler) const {
  if (handler && !form_.life().Over()) handler();
}

void Control::Changed() {
  if (form_.Loaded()) form_.watcher().ControlChanged(*this);
}

Refusal WhyRefused(const Control& control) {
  bool shown = control.form().Visible();
  if (control.kind() == ControlKind::MenuItem) {
    shown = (shown || static_cast<const MenuItem&>(control).InOpenPopup()) &&
            MenuShown(static_cast<const MenuItem&>(control));
  } else {
    shown = shown && ShownInLayout(control.form().Arrangement(), control, true).value_or(false);
  }
  if (!shown) return Refusal::Hidden;
  return control.Enabled() ? Refusal::None : Refusal::Disabled;
}

std::string BooleanText(bool value) {
  return value ? "true" : "false";
}

bool SameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

}  // namespace qb
