// The controls of a window: made when they are first seen, kept like what they show, and what they report.
#include <algorithm>

#include "view/win32/native_form.h"
#include "view/win32/wide_text.h"
// After the basic types of windows.h.
#include <commctrl.h>

namespace qb::win32 {

void NativeForm::AddSlot(Control& control, bool on_page) {
  // The arrow keys move among the options of one group: a group begins at its first option and ends at
  // the next control that is not of it.
  const Control* before = slots_.empty() ? nullptr : slots_.back().control;
  auto group_of = [](const Control* c) {
    return c != nullptr && c->kind() == ControlKind::Option ? static_cast<const OptionButton*>(c)->Group()
                                                            : std::string();
  };
  const bool group_start = group_of(before) != group_of(&control) || control.kind() != ControlKind::Option;
  slots_.push_back({&control, on_page, group_start, control.Caption(), control.Visible(), false, {}, nullptr});
}

void NativeForm::AddSlots(const Layout& part, bool on_page) {
  const bool tabs = part.kind == Layout::Kind::Tabs;
  if (part.control != nullptr && !tabs) AddSlot(*part.control, on_page);
  for (const Layout& child : part.parts) AddSlots(child, on_page || tabs);
  if (part.control != nullptr && tabs) AddSlot(*part.control, on_page);
}

// Only a strip itself knows how much room its tabs take, so it is there before the first page is measured.
void NativeForm::MakeStrips() {
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    if (slots_[i].control->kind() == ControlKind::TabStrip) MakeControl(i);
  }
}

NativeControl& NativeForm::MakeControl(std::size_t index) {
  Slot& slot = slots_[index];
  if (slot.native == nullptr) {
    const std::string& caption = slot.key_caption.empty() ? slot.control->Caption() : slot.key_caption;
    const int id = kFirstId + static_cast<int>(index);
    slot.native = std::make_unique<NativeControl>(*slot.control, caption, window_, id, slot.group_start);
    if (slot.control->kind() == ControlKind::TabStrip) slot.native->MakeTabs(TabCaptions(*slot.control));
    slot.native->SetMetrics(*metrics_);
    // A link may want more than its text was measured with.
    const bool grew =
        slot.control->kind() == ControlKind::Link && !slot.native->FitsInto(metrics_->Smallest(*slot.control));
    if (grew) LayOutLater();
  }
  return *slot.native;
}

// Where the window of a slot belongs in the order of windows, which is that of the Tab key: behind the one returned. A
// strip's body must lie behind what stands on its pages. Last of all, the strip comes before the pages for the Tab key,
// and the foot of the window after them.
HWND NativeForm::WindowBefore(std::size_t index) const {
  if (slots_[index].control->kind() == ControlKind::TabStrip) return HWND_BOTTOM;
  while (index-- > 0) {
    const Slot& slot = slots_[index];
    if (slot.native != nullptr && slot.control->kind() != ControlKind::TabStrip) return slot.native->window();
  }
  return HWND_TOP;
}

const NativeForm::Slot* NativeForm::SlotOf(int id) const {
  const int index = id - kFirstId;
  return index >= 0 && index < static_cast<int>(slots_.size()) ? &slots_[static_cast<std::size_t>(index)] : nullptr;
}

NativeControl* NativeForm::ControlOf(int id) const {
  const Slot* slot = SlotOf(id);
  return slot == nullptr ? nullptr : slot->native.get();
}

std::size_t NativeForm::IndexOf(const Control& control) const {
  const auto found =
      std::find_if(slots_.begin(), slots_.end(), [&](const Slot& slot) { return slot.control == &control; });
  return static_cast<std::size_t>(found - slots_.begin());
}

NativeControl* NativeForm::ControlOf(const Control& control) const {
  const std::size_t index = IndexOf(control);
  return index == slots_.size() ? nullptr : slots_[index].native.get();
}

void NativeForm::ControlChanged(Control& control) {
  if (window_ == nullptr) return;
  if (control.kind() == ControlKind::MenuItem) {
    if (!menu_.Refresh(static_cast<MenuItem&>(control))) BuildMenu();
    return;
  }
  const std::size_t index = IndexOf(control);
  if (index == slots_.size()) return;
  Slot& slot = slots_[index];
  if (slot.native != nullptr) {
    slot.native->Refresh();
    tips_->Refresh(slot.native->window(), control);
  }
  if (control.kind() == ControlKind::TabStrip) return LayOut();
  // It may need another place now, and a frame that is not visible any more takes others with it: all are placed anew.
  const bool place_again = slot.caption != control.Caption() || slot.visible != control.Visible();
  slot.caption = control.Caption();
  slot.visible = control.Visible();
  if (place_again) LayOutLater();
}

// Once for all that changes together.
void NativeForm::LayOutLater() {
  if (!layout_posted_) layout_posted_ = ::PostMessageW(window_, kLayOutAgain, 0, 0) != FALSE;
}

void NativeForm::OnCommand(int id, UINT code, bool from_control) {
  if (from_control) {
    if (NativeControl* control = ControlOf(id)) control->Act(code);
    return;
  }
  if (id == IDCANCEL) {
    for (const Slot& slot : slots_) {
      if (slot.control->kind() != ControlKind::Button) continue;
      if (static_cast<Button&>(*slot.control).CancelButton()) return Press(slot);
    }
    // A window without such a button is closed as by its close box; the main one is not.
    if (!main_) StepOver(form_.Unload(UnloadMode::ControlMenu));
    return;
  }
  // Enter asks for the default button by its number.
  if (const Slot* slot = SlotOf(id)) return Press(*slot);
  ClickMenu(menu_.ItemOf(id));
}

// By a key. What has no window yet stands on a page that is not in sight.
void NativeForm::Press(const Slot& slot) {
  if (slot.native != nullptr) slot.native->Act(BN_CLICKED);
}

void NativeForm::ClickMenu(MenuItem* item) {
  if (item == nullptr || WhyRefused(*item) != Refusal::None) return;
  item->UserMouseDown();
  item->UserClick();
}

LRESULT NativeForm::OnNotify(LPARAM lparam) {
  auto& header = *reinterpret_cast<NMHDR*>(lparam);
  if (host_.OnlyAnswering()) {
    ::PostMessageW(window_, kActNow, header.idFrom, static_cast<LPARAM>(header.code));
  } else if (NativeControl* control = ControlOf(static_cast<int>(header.idFrom))) {
    control->Act(header.code);
  }
  return 0;
}

// A tool tip window costs more to make than a control, and most are never seen.
void NativeForm::ShowTipOf(HWND control, POINT place) {
  const NativeControl* native = ControlOf(::GetDlgCtrlID(control));
  if (native == nullptr || native->window() != control) return;
  if (native->control().kind() != ControlKind::TabStrip) return tips_->Set(control, native->control());
  TCHITTESTINFO hit{place, 0};
  const int tab = TabCtrl_HitTest(control, &hit);
  const auto& pages = static_cast<const TabStrip&>(native->control()).Pages();
  tips_->Set(control, tab >= 0 && tab < std::ssize(pages) ? pages[static_cast<std::size_t>(tab)].tool_tip : "");
}

int NativeForm::DefaultButton() const {
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    const Control& control = *slots_[i].control;
    if (control.kind() == ControlKind::Button && static_cast<const Button&>(control).Default()) {
      return kFirstId + static_cast<int>(i);
    }
  }
  return 0;
}

}  // namespace qb::win32
