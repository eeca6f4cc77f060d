// Where a window of the program and its controls stand, and how large they are.
#include <algorithm>

#include "view/win32/native_form.h"

namespace qb::win32 {

namespace {

// Where a window of that size stands in the middle, or at the upper left edge if it is larger than the area.
POINT Middle(const RECT& area, LONG width, LONG height) {
  return {std::max((area.left + area.right - width) / 2, area.left),
          std::max((area.top + area.bottom - height) / 2, area.top)};
}

}  // namespace

RECT NativeForm::WorkArea() const {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  ::GetMonitorInfoW(::MonitorFromWindow(window_, MONITOR_DEFAULTTOPRIMARY), &info);
  return info.rcWork;
}

Extent NativeForm::Smallest(const Control& control) const {
  const Extent measured = metrics_->Smallest(control);
  const NativeControl* native = ControlOf(control);
  return native == nullptr ? measured : native->Smallest(measured);
}

int NativeForm::HeightAt(const Control& control, int width) const {
  return control.kind() == ControlKind::Link ? Smallest(control).height : metrics_->HeightAt(control, width);
}

Extent NativeForm::ContentSize(const Placement& placement) const {
  const Extent content = placement.Smallest();
  return {content.width + 2 * metrics_->Margin(), content.height + 2 * metrics_->Margin()};
}

SIZE NativeForm::WindowRound(Extent area) const {
  return WindowSize({area.width, area.height}, style_, ex_style_, ::GetMenu(window_) != nullptr, metrics_->dpi());
}

ScreenFit NativeForm::FitOnScreen(const RECT& work) const {
  const SIZE frame = WindowRound({});
  const Extent room{static_cast<int>(work.right - work.left - frame.cx),
                    static_cast<int>(work.bottom - work.top - frame.cy)};
  return FitToRoom(ContentSize(Arranged()), room, Scroller::Bars(metrics_->dpi()));
}

void NativeForm::GrowToFit() {
  OwnChange own(*this);
  const RECT work = WorkArea();
  const ScreenFit fit = FitOnScreen(work);
  if ((fit.scrolls_across || fit.scrolls_down) && (style_ & WS_THICKFRAME) == 0) {
    style_ |= WS_THICKFRAME | WS_MAXIMIZEBOX;
    ::SetWindowLongW(window_, GWL_STYLE,
                     static_cast<LONG>(static_cast<DWORD>(::GetWindowLongW(window_, GWL_STYLE)) | style_));
  }
  RECT now{};
  ::GetWindowRect(window_, &now);
  const SIZE wanted = WindowRound(fit.area);
  const int width = sized_ ? std::max<int>(wanted.cx, now.right - now.left) : wanted.cx;
  const int height = sized_ ? std::max<int>(wanted.cy, now.bottom - now.top) : wanted.cy;
  const bool first = !sized_;
  sized_ = true;
  if (!first && (::IsIconic(window_) || ::IsZoomed(window_))) return;
  if (first || width != now.right - now.left || height != now.bottom - now.top) {
    // What grows stays on the screen.
    const POINT place = first && centered_ ? Middle(work, width, height)
                                           : POINT{std::max(work.left, std::min(now.left, work.right - width)),
                                                   std::max(work.top, std::min(now.top, work.bottom - height))};
    ::SetWindowPos(window_, nullptr, place.x, place.y, width, height, SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
  }
  if (first) LayOut();
}

void NativeForm::LayOut() {
  if (!sized_) return;  // it is placed when it is shown for the first time
  const Placement placement = Arranged();
  const Extent content = ContentSize(placement);
  scroller_.Fit(window_, content, metrics_->dpi());
  RECT client{};
  ::GetClientRect(window_, &client);
  const int margin = metrics_->Margin();
  const POINT offset = scroller_.Offset();
  const Box area{margin - static_cast<int>(offset.x), margin - static_cast<int>(offset.y),
                 std::max<int>(client.right, content.width) - 2 * margin,
                 std::max<int>(client.bottom, content.height) - 2 * margin};
  const std::vector<PlacedControl> places = placement.Place(area);
  for (const PlacedControl& placed : places) slots_[IndexOf(*placed.control)].in_sight = placed.shown;
  ShareAccessKeys();
  bool changed = false;
  for (const PlacedControl& placed : places) {
    const std::size_t index = IndexOf(*placed.control);
    if (slots_[index].native == nullptr && !placed.shown) continue;
    if (MakeControl(index).Put(placed.box, placed.shown, WindowBefore(index))) changed = true;
  }
  if (!changed) return;
  ::RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
  KeepFocusInSight();
}

void NativeForm::Scroll(UINT message, WPARAM wparam) {
  if (scroller_.Take(window_, message, wparam)) LayOut();
}

// The keyboard may have moved to a control that is scrolled away.
void NativeForm::ScrollToFocus() {
  HWND focus = ::GetFocus();
  if (window_ == nullptr || !::IsChild(window_, focus)) return;
  RECT place{};
  ::GetWindowRect(focus, &place);
  ::MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&place), 2);
  const NativeControl* native = ControlOf(::GetDlgCtrlID(focus));
  if (native != nullptr && native->control().kind() == ControlKind::TabStrip) {
    place.bottom = place.top + Smallest(native->control()).height;  // its page has controls of its own
  }
  if (scroller_.Show(window_, place)) LayOut();
}

// The keyboard would be lost on a page that is turned.
void NativeForm::KeepFocusInSight() {
  HWND focus = ::GetFocus();
  if (!::IsWindowVisible(window_) || !::IsChild(window_, focus) || ::IsWindowVisible(focus)) return;
  ::SetFocus(::GetNextDlgTabItem(window_, nullptr, FALSE));
}

void NativeForm::ChangeResolution(UINT dpi, const RECT& suggested) {
  OwnChange own(*this);
  auto old = std::move(metrics_);  // its font is in use until the controls have the new one
  metrics_ = std::make_unique<Metrics>(dpi);
  for (const Slot& slot : slots_) {
    if (slot.native != nullptr) slot.native->SetMetrics(*metrics_);
  }
  ::SetWindowPos(window_, nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
  GrowToFit();
  LayOut();
  ::RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

// One that was never shown takes its size and place, and its controls their windows, when it is.
void NativeForm::Center() {
  centered_ = true;
  if (!sized_) return;
  GrowToFit();
  OwnChange own(*this);
  RECT now{};
  ::GetWindowRect(window_, &now);
  const POINT place = Middle(WorkArea(), now.right - now.left, now.bottom - now.top);
  ::SetWindowPos(window_, nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace qb::win32
