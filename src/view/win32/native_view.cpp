#include "view/win32/native_view.h"

#include <algorithm>

#include "platform/win32/convert.h"
// After the basic types of windows.h.
#include <commctrl.h>

namespace qb::win32 {

namespace {

constexpr wchar_t kApplicationClass[] = L"ThunderRT6Main";
constexpr wchar_t kApplicationTitle[] = L"Quillbarrow";

// In the client area of its window.
POINT PlaceOf(const MSG& mouse) {
  return {static_cast<short>(LOWORD(mouse.lParam)), static_cast<short>(HIWORD(mouse.lParam))};
}

// The tray tells of the mouse by the message of a mouse move. A real one, which lies where the mouse was, means nothing
// to a form's own window, and at the wrong place with a button down it would read as the tray's.
bool IsMouseMove(const MSG& message) {
  if (message.message != WM_MOUSEMOVE) return false;
  POINT place = PlaceOf(message);
  ::ClientToScreen(message.hwnd, &place);
  return place.x == message.pt.x && place.y == message.pt.y && ::GetAncestor(message.hwnd, GA_ROOT) == message.hwnd;
}

}  // namespace

NativeView::NativeView(Win32Messages& messages) : messages_(messages) {
  const INITCOMMONCONTROLSEX wanted{sizeof wanted, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES | ICC_LINK_CLASS};
  ::InitCommonControlsEx(&wanted);
  WNDCLASSW window_class{};
  window_class.lpfnWndProc = ::DefWindowProcW;
  window_class.hInstance = ::GetModuleHandleW(nullptr);
  window_class.lpszClassName = kApplicationClass;
  ::RegisterClassW(&window_class);
  application_ = ::CreateWindowExW(WS_EX_TOOLWINDOW, kApplicationClass, kApplicationTitle, WS_POPUP, 0, 0, 0, 0,
                                   nullptr, nullptr, window_class.hInstance, nullptr);
  messages_.SetFilter([this](MSG& message) { return TakeMessage(message); });
}

NativeView::~NativeView() {
  messages_.SetFilter({});
  forms_.clear();
  ::DestroyWindow(application_);
}

WindowHandle NativeView::ApplicationWindow() const {
  return Wrap<WindowHandle>(application_);
}

std::shared_ptr<NativeForm> NativeView::NativeOf(const Form& form) const {
  auto found = forms_.find(&form);
  return found == forms_.end() ? nullptr : found->second;
}

void NativeView::FormLoaded(Form& form) {
  if (main_ == nullptr) main_ = &form;
  NativeForm::Host& host = *this;
  // The application window owns the main window alone, and that one all others: an owned window stands
  // above its owner, so nothing of the program can come between those two.
  const std::shared_ptr<NativeForm> main = NativeOf(*main_);
  HWND owner = main == nullptr ? application_ : main->window();
  forms_[&form] = std::make_shared<NativeForm>(form, host, owner, IsMain(form));
  if (IsMain(form)) forms_[&form]->Make();
  OrderChanged(form);
}

void NativeView::FormUnloaded(Form& form) {
  EndModal(form);
  const std::shared_ptr<NativeForm> native = NativeOf(form);
  forms_.erase(&form);
  if (IsMain(form)) main_ = nullptr;
  if (native != nullptr) native->Close();
  WakeLoops();
}

void NativeView::WakeLoops() const {
  // A sent message is handled inside GetMessage, which goes on waiting: the loops would not notice that
  // the form they stand for is gone.
  ::PostMessageW(application_, WM_NULL, 0, 0);
}

void NativeView::FormChanged(Form& form, Aspect aspect) {
  // Kept here, since what Windows does to a window may reach a handler that unloads the form.
  const std::shared_ptr<NativeForm> native = NativeOf(form);
  if (native == nullptr) return;
  switch (aspect) {
    case Aspect::Visibility:
      if (form.Visible()) native->Make();
      if (form.Visible() && form.Modal()) BeginModal(form, native->window());
      // Before it hides, so that Windows finds another window of the program to activate.
      if (!form.Visible()) EndModal(form);
      native->ShowOrHide();
      return WakeLoops();
    case Aspect::State:
      return native->ApplyState();
    case Aspect::Caption:
      return native->ApplyCaption();
    case Aspect::Focus:
      return native->TakeFocus();
    case Aspect::Center:
      return native->Center();
    case Aspect::Repaint:
      return native->Repaint();
  }
}

void NativeView::ControlChanged(Control& control) {
  if (const std::shared_ptr<NativeForm> native = NativeOf(control.form())) native->ControlChanged(control);
}

WindowHandle NativeView::WindowOf(const Form& form) const {
  const std::shared_ptr<NativeForm> native = NativeOf(form);
  if (native == nullptr) return WindowHandle::None;
  native->Make();
  return Wrap<WindowHandle>(native->window());
}

int NativeView::TextWidth(const Form& form, std::string_view text) const {
  const auto native = NativeOf(form);
  if (native == nullptr) return 0;
  native->Make();
  return native->TextWidth(std::string(text));
}

WindowHandle NativeView::ActiveWindow() const {
  const HWND active = ::GetActiveWindow();
  const bool form = std::any_of(forms_.begin(), forms_.end(),
                                [active](const auto& entry) { return entry.second->window() == active; });
  return form ? Wrap<WindowHandle>(active) : WindowHandle::None;
}

void NativeView::PopupMenu(Form& form, MenuItem& menu) {
  if (const std::shared_ptr<NativeForm> native = NativeOf(form)) native->PopupMenu(menu);
}

void NativeView::OrderChanged(Form& form) {
  if (!IsMain(form)) return;
  const std::shared_ptr<NativeForm> native = NativeOf(form);
  if (native == nullptr) return;
  // Tool tip and input method windows of the program would otherwise come between the two.
  ::SetWindowPos(application_, native->window(), 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOOWNERZORDER | SWP_NOSENDCHANGING);
}

bool NativeView::TakeMessage(MSG& message) {
  if (IsMouseMove(message)) return true;
  const bool key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
  const bool mouse = message.message == WM_MOUSEMOVE;
  HWND root = key || mouse ? ::GetAncestor(message.hwnd, GA_ROOT) : nullptr;
  if (root == nullptr) return false;
  auto found =
      std::find_if(forms_.begin(), forms_.end(), [=](const auto& entry) { return entry.second->window() == root; });
  if (found == forms_.end()) return false;
  const std::shared_ptr<NativeForm> native = found->second;  // its handlers may unload the form
  if (key) return native->TakeMessage(message);
  native->ShowTipOf(message.hwnd, PlaceOf(message));
  return false;
}

void NativeView::BeginModal(Form& form, HWND window) {
  if (std::any_of(modal_.begin(), modal_.end(), [&](const ModalForm& modal) { return modal.form == &form; })) return;
  ModalForm modal{&form, {}};
  HWND active = ::GetActiveWindow();
  for (const auto& [other, native] : forms_) {
    if (other == &form || !::IsWindowEnabled(native->window())) continue;
    // Owned by the window that it was called from, it stays above that one.
    if (native->window() == active) {
      ::SetWindowLongPtrW(window, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(active));
    }
    ::EnableWindow(native->window(), FALSE);
    modal.disabled.push_back(native->window());
  }
  modal_.push_back(std::move(modal));
}

void NativeView::EndModal(const Form& form) {
  auto found = std::find_if(modal_.begin(), modal_.end(), [&](const ModalForm& modal) { return modal.form == &form; });
  if (found == modal_.end()) return;
  for (HWND window : found->disabled) ::EnableWindow(window, TRUE);
  modal_.erase(found);
}

}  // namespace qb::win32
