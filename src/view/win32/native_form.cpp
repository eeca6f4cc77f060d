#include "view/win32/native_form.h"

#include <algorithm>

#include "platform/win32/convert.h"
#include "view/win32/heading.h"
#include "view/win32/wide_text.h"
// After the basic types of windows.h.
#include <commctrl.h>

namespace qb::win32 {

namespace {

constexpr wchar_t kWindowClass[] = L"QuillbarrowWindow";
constexpr int kIconResource = 1;

HICON ProgramIcon(int width_metric, int height_metric) {
  return static_cast<HICON>(::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kIconResource), IMAGE_ICON,
                                         ::GetSystemMetrics(width_metric), ::GetSystemMetrics(height_metric),
                                         LR_SHARED));
}

bool MakesFormAct(UINT message) {
  return message == WM_COMMAND || message == WM_SYSCOMMAND || message == WM_CLOSE;
}

// A form that can use more room may be resized; the others have a fixed frame.
DWORD StyleOf(bool grows, bool main) {
  if (grows) return WS_OVERLAPPEDWINDOW;
  return WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | (main ? WS_MINIMIZEBOX : 0);
}

int ShowCommand(WindowState state) {
  switch (state) {
    case WindowState::Minimised:
      return SW_SHOWMINIMIZED;
    case WindowState::Maximised:
      return SW_SHOWMAXIMIZED;
    case WindowState::Normal:
      break;
  }
  return SW_SHOWNORMAL;
}

}  // namespace

void NativeForm::Make() {
  if (window_ != nullptr) return;
  WNDCLASSEXW window_class{};
  window_class.cbSize = sizeof window_class;
  window_class.lpfnWndProc = WindowProc;
  window_class.hInstance = ::GetModuleHandleW(nullptr);
  window_class.hCursor = ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // IDC_ARROW
  window_class.hIcon = ProgramIcon(SM_CXICON, SM_CYICON);
  window_class.hIconSm = ProgramIcon(SM_CXSMICON, SM_CYSMICON);
  window_class.hbrBackground = ::GetSysColorBrush(COLOR_BTNFACE);
  window_class.lpszClassName = kWindowClass;
  ::RegisterClassExW(&window_class);  // fails from the second form on, which finds it made

  OwnChange own(*this);
  metrics_ = std::make_unique<Metrics>(DpiOf(owner_));
  style_ = StyleOf(Arranged().Grows(), main_);
  ex_style_ = WS_EX_CONTROLPARENT | (main_ ? WS_EX_APPWINDOW : WS_EX_DLGMODALFRAME);
  AddSlots(form_.Arrangement(), false);
  BuildMenu();
  ::CreateWindowExW(ex_style_, kWindowClass, Wide(form_.Caption()).c_str(), style_, CW_USEDEFAULT, CW_USEDEFAULT,
                    CW_USEDEFAULT, CW_USEDEFAULT, owner_, menu_.bar(), window_class.hInstance, this);
  tips_ = std::make_unique<ToolTips>(window_);
  MakeStrips();
}

NativeForm::~NativeForm() {
  Close();
}

void NativeForm::Close() {
  if (window_ == nullptr) return;
  HWND window = window_;
  window_ = nullptr;
  // No message of the window may find this object any more.
  ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
  if (open_popup_ != nullptr || in_menu_bar_) ::EndMenu();
  if (open_popup_ != nullptr) open_popup_->open = false;
  open_popup_ = nullptr;
  ::DestroyWindow(window);
}

LRESULT CALLBACK NativeForm::WindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* self = static_cast<NativeForm*>(reinterpret_cast<CREATESTRUCTW*>(lparam)->lpCreateParams);
    self->window_ = window;
    ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
  }
  auto* self = reinterpret_cast<NativeForm*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self == nullptr) return ::DefWindowProcW(window, message, wparam, lparam);
  // A handler of the form may unload it; then the object stays until this returns.
  const std::shared_ptr<NativeForm> stays = self->weak_from_this().lock();
  return self->Handle(message, wparam, lparam);
}

LRESULT NativeForm::Default(UINT message, WPARAM wparam, LPARAM lparam) const {
  return ::DefWindowProcW(window_, message, wparam, lparam);
}

// A case that lets a handler of the form run returns at once: the window may be gone, and the form with it.
LRESULT NativeForm::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  if (MakesFormAct(message) && host_.OnlyAnswering()) {
    ::PostMessageW(window_, message, wparam, lparam);
    return 0;
  }
  switch (message) {
    case WM_COMMAND:
      OnCommand(LOWORD(wparam), HIWORD(wparam), lparam != 0);
      return 0;
    case WM_NOTIFY:
      return OnNotify(lparam);
    case WM_CLOSE:
      StepOver(form_.Unload(UnloadMode::ControlMenu));
      return 0;
    case WM_QUERYENDSESSION:
      return TRUE;  // a privacy program must not stand in the way of a shutdown
    case WM_ENDSESSION:
      if (wparam != FALSE && host_.IsMain(form_)) StepOver(form_.Unload(UnloadMode::WindowsSession));
      return 0;
    case WM_SIZE:
      if (wparam != SIZE_MINIMIZED && sized_) LayOut();
      return 0;
    case kLayOutAgain:
      layout_posted_ = false;
      if (!sized_) return 0;
      GrowToFit();
      LayOut();
      return 0;
    case kActNow:
      if (NativeControl* control = ControlOf(static_cast<int>(wparam))) control->Act(static_cast<UINT>(lparam));
      return 0;
    case kTellNow:
      TellForm();
      return 0;
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_MOUSEWHEEL:
      Scroll(message, wparam);
      return 0;
    case WM_GETMINMAXINFO:
      if (sized_) {
        const ScreenFit fit = FitOnScreen(WorkArea());
        // One that scrolls may be made as small as the user likes.
        if (fit.scrolls_across || fit.scrolls_down) return 0;
        const SIZE smallest = WindowRound(fit.area);
        reinterpret_cast<MINMAXINFO*>(lparam)->ptMinTrackSize = {smallest.cx, smallest.cy};
      }
      return 0;
    case WM_DPICHANGED:
      ChangeResolution(HIWORD(wparam), *reinterpret_cast<RECT*>(lparam));
      return 0;
    case WM_WINDOWPOSCHANGED: {
      const LRESULT result = Default(message, wparam, lparam);
      if (window_ == nullptr) return result;
      if ((reinterpret_cast<WINDOWPOS*>(lparam)->flags & SWP_NOZORDER) == 0) host_.OrderChanged(form_);
      if (!host_.OnlyAnswering()) {
        TellForm();
      } else {
        ::PostMessageW(window_, kTellNow, 0, 0);
      }
      return result;
    }
    case WM_SHOWWINDOW:
      if (wparam != FALSE) GrowToFit();
      return Default(message, wparam, lparam);
    case WM_ACTIVATE:
      if (LOWORD(wparam) == WA_INACTIVE) {
        focus_ = ::GetFocus();
        return 0;
      }
      return Default(message, wparam, lparam);
    case WM_SETFOCUS:
      OnFocus();
      return 0;
    case WM_ERASEBKGND:
      EraseBackground(reinterpret_cast<HDC>(wparam));
      return 1;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
      if (PaintPage(reinterpret_cast<HDC>(wparam), reinterpret_cast<HWND>(lparam))) {
        return reinterpret_cast<LRESULT>(page_background_.Brush(window_));
      }
      return Default(message, wparam, lparam);
    case WM_THEMECHANGED:
    case WM_SYSCOLORCHANGE:
      page_background_.Forget();
      ::RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
      return Default(message, wparam, lparam);
    case WM_DRAWITEM: {
      const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lparam);
      if (item.CtlType == ODT_STATIC) DrawHeading(item, metrics_->HeadingFont());
      return TRUE;
    }
    case WM_SETCURSOR:
      if (ShowHand(reinterpret_cast<HWND>(wparam))) return TRUE;
      return Default(message, wparam, lparam);
    case WM_ENTERMENULOOP:
      if (wparam == FALSE) in_menu_bar_ = true;
      return 0;
    case WM_EXITMENULOOP:
      if (wparam == FALSE) in_menu_bar_ = false;
      if (menu_stale_ && !in_menu_bar_) BuildMenu();
      return 0;
    case WM_NCDESTROY:
      // Its owner went, and it with it.
      window_ = nullptr;
      return 0;
    case DM_GETDEFID: {
      const int id = DefaultButton();
      return id == 0 ? 0 : MAKELRESULT(id, DC_HASDEFID);
    }
    default:
      return Default(message, wparam, lparam);
  }
}

// ---- Visibility, state, focus ----

void NativeForm::ShowOrHide() {
  if (window_ == nullptr) return;
  OwnChange own(*this);
  if (!form_.Visible()) {
    ::ShowWindow(window_, SW_HIDE);
    // Hiding the active window may have brought another one of the program above it.
    host_.OrderChanged(form_);
    return;
  }
  ::ShowWindow(window_, ShowCommand(form_.State()));
  ::SetForegroundWindow(window_);
}

void NativeForm::ApplyState() {
  // A hidden window takes its state when it is shown.
  if (!form_.Visible()) return;
  OwnChange own(*this);
  ::ShowWindow(window_, ShowCommand(form_.State()));
}

void NativeForm::ApplyCaption() {
  if (window_ == nullptr) return;
  ::SetWindowTextW(window_, Wide(form_.Caption()).c_str());
}

void NativeForm::TakeFocus() {
  if (window_ == nullptr) return;
  OwnChange own(*this);
  ::SetForegroundWindow(window_);
  ::SetFocus(window_);
}

void NativeForm::Repaint() {
  if (window_ == nullptr) return;  // without one Windows would draw all of the screen anew
  ::RedrawWindow(window_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void NativeForm::TellForm() {
  if (own_changes_ > 0 || !form_.Loaded()) return;
  const bool visible = ::IsWindowVisible(window_) != FALSE;
  if (visible != form_.Visible()) form_.ShownFromOutside(visible);
  if (!visible) return;
  const WindowState state = ::IsIconic(window_)   ? WindowState::Minimised
                            : ::IsZoomed(window_) ? WindowState::Maximised
                                                  : WindowState::Normal;
  if (state != form_.State()) form_.StateFromOutside(state);
}

void NativeForm::OnFocus() {
  const bool usable =
      focus_ != nullptr && ::IsChild(window_, focus_) && ::IsWindowVisible(focus_) && ::IsWindowEnabled(focus_);
  HWND next = usable ? focus_ : ::GetNextDlgTabItem(window_, nullptr, FALSE);
  if (next != nullptr) ::SetFocus(next);
}

// ---- Painting ----

// The hand over a link, whether or not the control below the mouse knows it. False where Windows has none.
bool NativeForm::ShowHand(HWND control) const {
  const NativeControl* native = ControlOf(::GetDlgCtrlID(control));
  if (native == nullptr || native->control().kind() != ControlKind::Link) return false;
  HCURSOR hand = ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32649));  // IDC_HAND
  if (hand != nullptr) ::SetCursor(hand);
  return hand != nullptr;
}

bool NativeForm::PaintPage(HDC dc, HWND control) const {
  const Slot* slot = SlotOf(::GetDlgCtrlID(control));
  if (slot == nullptr || !slot->on_page) return false;
  ::SetBkMode(dc, TRANSPARENT);
  return true;
}

void NativeForm::EraseBackground(HDC dc) {
  RECT client{};
  ::GetClientRect(window_, &client);
  ::FillRect(dc, &client, ::GetSysColorBrush(COLOR_BTNFACE));
  // Themed controls have their background drawn by their parent, and the page is not the parent.
  for (const Slot& slot : slots_) {
    if (slot.control->kind() != ControlKind::TabStrip || !::IsWindowVisible(slot.native->window())) continue;
    HWND strip = slot.native->window();
    RECT page{};
    ::GetWindowRect(strip, &page);
    ::MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&page), 2);
    TabCtrl_AdjustRect(strip, FALSE, &page);
    ::FillRect(dc, &page, page_background_.Brush(window_));
  }
}

}  // namespace qb::win32
