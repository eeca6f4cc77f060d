#include "view/win32/native_control.h"

#include <algorithm>

#include "view/win32/button_icons.h"
#include "view/win32/wide_text.h"
// After the basic types of windows.h.
#include <commctrl.h>

namespace qb::win32 {

namespace {

constexpr SIZE kTabPadding{6, 3};    // round the caption of a tab, in pixels at 96 dots per inch
constexpr int kUnlimited = 32000;    // pixels
constexpr int kRoomBesideTabs = 16;  // pixels at 96 dots per inch; the strip wants some for its own edges

std::wstring TextFor(const Control& control, const std::string& caption) {
  // The blank behind the link: without one the last character of the link may not be drawn.
  return Wide(control.kind() == ControlKind::Link ? "<a>" + caption + "</a> " : caption);
}

}  // namespace

// How each kind of control is shown. A check box and an option do not toggle themselves: their state
// follows the control, whose handlers may take a click back.
struct NativeControl::Kind {
  const wchar_t* window_class;
  DWORD style, ex_style;
  void (NativeControl::*refresh)();
  void (NativeControl::*act)(UINT code);
};

const NativeControl::Kind& NativeControl::KindOf(const Control& control) {
  using C = NativeControl;
  static const Kind frame{L"Button", BS_GROUPBOX, WS_EX_TRANSPARENT, &C::RefreshNothing, &C::ActNothing};
  static const Kind label{L"Static", SS_LEFT | SS_NOTIFY, 0, &C::RefreshLabel, &C::ActNothing};
  static const Kind picture{L"Static", SS_BITMAP | SS_NOTIFY, 0, &C::RefreshPicture, &C::ActNothing};
  static const Kind heading{L"Static", SS_OWNERDRAW, 0, &C::RefreshNothing, &C::ActNothing};
  static const Kind link{L"SysLink", WS_TABSTOP, 0, &C::RefreshNothing, &C::ActLink};
  static const Kind button{L"Button", BS_PUSHBUTTON | WS_TABSTOP, 0, &C::RefreshPushButton, &C::ActClick};
  static const Kind check{L"Button", BS_CHECKBOX | BS_MULTILINE | WS_TABSTOP, 0, &C::RefreshMark, &C::ActClick};
  static const Kind option{L"Button", BS_RADIOBUTTON | BS_MULTILINE, 0, &C::RefreshMark, &C::ActClick};
  static const Kind list{L"ListBox",
                         LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | LBS_HASSTRINGS | WS_VSCROLL | WS_HSCROLL | WS_TABSTOP,
                         WS_EX_CLIENTEDGE, &C::RefreshList, &C::ActList};
  static const Kind combo{L"ComboBox", CBS_DROPDOWNLIST | CBS_HASSTRINGS | WS_VSCROLL | WS_TABSTOP, 0, &C::RefreshCombo,
                          &C::ActCombo};
  static const Kind text{L"Edit", ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, &C::RefreshText, &C::ActText};
  static const Kind tabs{L"SysTabControl32", WS_TABSTOP | WS_CLIPSIBLINGS, 0, &C::RefreshTabs, &C::ActTabs};
  static const Kind progress{L"msctls_progress32", 0, 0, &C::RefreshProgress, &C::ActNothing};
  switch (control.kind()) {
    case ControlKind::Frame:
      return frame;
    case ControlKind::Label:
      return static_cast<const Label&>(control).IsHeading() ? heading : label;
    case ControlKind::Link:
      return link;
    case ControlKind::Button:
      return button;
    case ControlKind::CheckBox:
      return check;
    case ControlKind::Option:
      return option;
    case ControlKind::ListBox:
      return list;
    case ControlKind::ComboBox:
      return combo;
    case ControlKind::TextBox:
      return text;
    case ControlKind::TabStrip:
      return tabs;
    case ControlKind::ProgressBar:
      return progress;
    case ControlKind::PictureBox:
      return picture;
    case ControlKind::Timer:
    case ControlKind::MenuItem:
      break;
  }
  return label;
}

NativeControl::NativeControl(Control& control, const std::string& caption, HWND parent, int id, bool group_start)
    : control_(control), caption_(control.Caption()), shown_caption_(caption) {
  const Kind& kind = KindOf(control);
  DWORD style = kind.style | WS_CHILD | (group_start ? WS_GROUP : 0);
  if (control.kind() == ControlKind::ListBox && static_cast<ListBox&>(control).MultiSelect()) style |= LBS_EXTENDEDSEL;
  if (control.kind() == ControlKind::Option && group_start) style |= WS_TABSTOP;
  // A strip that its tabs do not fit into would make itself arrows to scroll them.
  const int width = control.kind() == ControlKind::TabStrip ? kUnlimited : 0;
  // The parent gives the new window the number by which it reports to it.
  window_ = ::CreateWindowExW(kind.ex_style | WS_EX_NOPARENTNOTIFY, kind.window_class,
                              TextFor(control, caption).c_str(), style, 0, 0, width, 0, parent,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ::GetModuleHandleW(nullptr), nullptr);
  // A radio button otherwise reports a click when it only gets the focus.
  if (control.kind() == ControlKind::Option) Send(BM_SETDONTCLICK, TRUE);
  Refresh();
}

NativeControl::~NativeControl() {
  if (icon_ != nullptr) ::DestroyIcon(icon_);
}

LRESULT NativeControl::Send(UINT message, WPARAM wparam, LPARAM lparam) const {
  return ::SendMessageW(window_, message, wparam, lparam);
}

LRESULT NativeControl::SendText(UINT message, WPARAM wparam, const std::string& text) const {
  return Send(message, wparam, reinterpret_cast<LPARAM>(Wide(text).c_str()));
}

void NativeControl::SetMetrics(const Metrics& metrics) {
  if (control_.kind() == ControlKind::Button) {
    HICON old = icon_;
    icon_ = DrawButtonIcon(static_cast<const Button&>(control_).Icon(), metrics.IconSize());
    Send(BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon_));
    if (old != nullptr) ::DestroyIcon(old);
  }
  if (control_.kind() == ControlKind::TabStrip) {
    const int dpi = static_cast<int>(metrics.dpi());
    Send(TCM_SETPADDING, 0, MAKELPARAM(::MulDiv(kTabPadding.cx, dpi, 96), ::MulDiv(kTabPadding.cy, dpi, 96)));
  }
  const bool heading = control_.kind() == ControlKind::Label && static_cast<const Label&>(control_).IsHeading();
  Send(WM_SETFONT, reinterpret_cast<WPARAM>(heading ? metrics.HeadingFont() : metrics.font()), FALSE);
  // The weight is to be given to the new font.
  bold_ = false;
  if (control_.kind() == ControlKind::Label && !heading) RefreshLabel();
  if (control_.kind() == ControlKind::TabStrip) {
    MeasureTabs(::MulDiv(kRoomBesideTabs, static_cast<int>(metrics.dpi()), 96));
  }
  if (control_.kind() == ControlKind::Link) MeasureLink();
}

// The width at which the strip shows all of its tabs without arrows to scroll them.
void NativeControl::MeasureTabs(int room_beside) {
  // It tells the place of its last tab only while there is room for all.
  ::SetWindowPos(window_, nullptr, 0, 0, kUnlimited, kUnlimited, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  RECT last{};
  Send(TCM_GETITEMRECT, static_cast<WPARAM>(Send(TCM_GETITEMCOUNT) - 1), reinterpret_cast<LPARAM>(&last));
  own_size_ = {static_cast<int>(last.right) + room_beside, static_cast<int>(last.bottom)};
  box_ = {};  // it is to be placed again
}

void NativeControl::MeasureLink() {
  SIZE ideal{};
  // By this message version 6 of the controls gives the whole size.
  Send(LM_GETIDEALHEIGHT, kUnlimited, reinterpret_cast<LPARAM>(&ideal));
  own_size_ = {static_cast<int>(ideal.cx), static_cast<int>(ideal.cy)};
}

void NativeControl::MakeTabs(const std::vector<std::string>& captions) {
  for (std::size_t i = 0; i < captions.size(); ++i) {
    std::wstring caption = Wide(captions[i]);
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = caption.data();
    Send(TCM_INSERTITEMW, i, reinterpret_cast<LPARAM>(&item));
  }
  RefreshTabs();
}

Extent NativeControl::Smallest(const Extent& measured) const {
  return {std::max(measured.width, own_size_.width), std::max(measured.height, own_size_.height)};
}

void NativeControl::ShowAccessKey(const std::string& caption) {
  if (caption == shown_caption_) return;
  shown_caption_ = caption;
  ::SetWindowTextW(window_, Wide(caption).c_str());
}

bool NativeControl::Put(const Box& box, bool shown, HWND before) {
  const bool moved = shown && box != box_;
  if (!moved && shown == shown_) return false;
  UINT flags = SWP_NOACTIVATE | SWP_NOREDRAW | (shown ? SWP_SHOWWINDOW : SWP_HIDEWINDOW);
  if (placed_) flags |= SWP_NOZORDER;
  placed_ = true;
  if (!moved) flags |= SWP_NOMOVE | SWP_NOSIZE;
  if (moved) box_ = box;
  shown_ = shown;
  // The height of a closed combo box comes from its font; what is given here is that of the open one.
  const int height = control_.kind() == ControlKind::ComboBox ? box.height * 12 : box.height;
  ::SetWindowPos(window_, before, box.x, box.y, box.width, height, flags);
  return true;
}

void NativeControl::Refresh() {
  refreshing_ = true;
  if (caption_ != control_.Caption()) {
    caption_ = shown_caption_ = control_.Caption();
    ::SetWindowTextW(window_, TextFor(control_, caption_).c_str());
    if (control_.kind() == ControlKind::Link) MeasureLink();
  }
  (this->*KindOf(control_).refresh)();
  if (enabled_ != control_.Enabled()) {
    enabled_ = control_.Enabled();
    // The keyboard would be lost with the focus.
    HWND form = ::GetParent(window_);
    if (!enabled_ && ::GetFocus() == window_) ::SetFocus(::GetNextDlgTabItem(form, window_, FALSE));
    ::EnableWindow(window_, enabled_);
  }
  refreshing_ = false;
}

void NativeControl::RefreshLabel() {
  const bool bold = static_cast<Label&>(control_).Bold();
  if (bold == bold_) return;
  bold_ = bold;
  GdiObject font = WithWeight(reinterpret_cast<HFONT>(Send(WM_GETFONT)), bold);
  Send(WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
  own_font_ = std::move(font);
}

void NativeControl::RefreshPicture() {
  GdiObject picture = BitmapOf(static_cast<PictureBox&>(control_));
  Send(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(picture.get()));
  picture_ = std::move(picture);
}

void NativeControl::RefreshPushButton() {
  const UINT type = static_cast<Button&>(control_).Default() ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
  const auto style = static_cast<UINT>(::GetWindowLongW(window_, GWL_STYLE));
  if ((style & BS_TYPEMASK) != type) Send(BM_SETSTYLE, type, TRUE);
}

void NativeControl::RefreshMark() {
  const bool set = control_.kind() == ControlKind::CheckBox ? static_cast<CheckBox&>(control_).Value() == 1
                                                            : static_cast<OptionButton&>(control_).Value();
  const WPARAM state = set ? BST_CHECKED : BST_UNCHECKED;
  if (Send(BM_GETCHECK) != static_cast<LRESULT>(state)) Send(BM_SETCHECK, state);
}

// Brings the native list to `entries` by the fewest steps: a run adds lines by the hundred, and a list
// that is filled anew each time would flicker and scroll back.
void NativeControl::SyncEntries(const std::vector<std::string>& entries, UINT add, UINT remove, UINT clear) {
  if (entries.empty() && !entries_.empty()) {
    Send(clear);
    entries_.clear();
  }
  for (std::size_t i = 0; entries_.size() > entries.size();) {
    if (i < entries.size() && entries_[i] == entries[i]) {
      ++i;
      continue;
    }
    Send(remove, i);
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(i));
  }
  while (entries_.size() < entries.size()) {
    entries_.push_back(entries[entries_.size()]);
    SendText(add, 0, entries_.back());
  }
}

void NativeControl::WidenList(const std::string& entry) {
  HDC dc = ::GetDC(window_);
  HGDIOBJ old = ::SelectObject(dc, reinterpret_cast<HGDIOBJ>(Send(WM_GETFONT)));
  const std::wstring text = Wide(entry);
  SIZE size{};
  ::GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
  ::SelectObject(dc, old);
  ::ReleaseDC(window_, dc);
  if (size.cx <= widest_entry_) return;
  widest_entry_ = size.cx;
  const int extent = widest_entry_ + ::GetSystemMetrics(SM_CXEDGE) * 4;
  Send(LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(extent));
}

void NativeControl::RefreshList() {
  auto& list = static_cast<ListBox&>(control_);
  const std::size_t before = entries_.size();
  SyncEntries(list.Entries(), LB_ADDSTRING, LB_DELETESTRING, LB_RESETCONTENT);
  for (std::size_t i = before; i < entries_.size(); ++i) WidenList(entries_[i]);
  if (list.HorizontalExtent() > widest_entry_) {
    widest_entry_ = list.HorizontalExtent();
    Send(LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(widest_entry_));
  }
  if (!list.MultiSelect()) {
    if (Send(LB_GETCURSEL) != list.ListIndex()) Send(LB_SETCURSEL, static_cast<WPARAM>(list.ListIndex()));
    return;
  }
  // Adding an entry changes no mark, and to compare all of them each time would take a square of their number.
  const int first = entries_.size() > before ? static_cast<int>(before) : 0;
  for (int i = first; i < list.ListCount(); ++i) {
    const auto index = static_cast<WPARAM>(i);
    if ((Send(LB_GETSEL, index) > 0) != list.Selected(i)) Send(LB_SETSEL, list.Selected(i), static_cast<LPARAM>(index));
  }
}

void NativeControl::RefreshCombo() {
  auto& combo = static_cast<ComboBox&>(control_);
  SyncEntries(combo.Entries(), CB_ADDSTRING, CB_DELETESTRING, CB_RESETCONTENT);
  if (Send(CB_GETCURSEL) != combo.ListIndex()) Send(CB_SETCURSEL, static_cast<WPARAM>(combo.ListIndex()));
}

namespace {

std::string WindowText(HWND window) {
  std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return Narrow(text);
}

}  // namespace

void NativeControl::RefreshText() {
  // Setting the text that is there would move the caret to its start while the user types.
  const std::string& text = static_cast<TextBox&>(control_).Text();
  if (WindowText(window_) != text) ::SetWindowTextW(window_, Wide(text).c_str());
}

void NativeControl::RefreshTabs() {
  auto& strip = static_cast<TabStrip&>(control_);
  if (TabCtrl_GetCurSel(window_) != strip.Tab()) TabCtrl_SetCurSel(window_, strip.Tab());
}

void NativeControl::RefreshProgress() {
  auto& bar = static_cast<ProgressBar&>(control_);
  Send(PBM_SETRANGE32, 0, bar.Max());
  Send(PBM_SETPOS, static_cast<WPARAM>(bar.Value()));
}

void NativeControl::Act(UINT code) {
  if (refreshing_ || WhyRefused(control_) != Refusal::None) return;
  (this->*KindOf(control_).act)(code);
}

void NativeControl::ActClick(UINT code) {
  if (code != BN_CLICKED) return;
  Control& control = control_;  // outlives this object, which goes with its window
  control.UserMouseDown();
  if (WhyRefused(control) == Refusal::None) control.UserClick();
}

void NativeControl::ActList(UINT code) {
  if (code != LBN_SELCHANGE) return;
  std::vector<int> marked(static_cast<std::size_t>(std::max<LRESULT>(Send(LB_GETCOUNT), 0)));
  auto& list = static_cast<ListBox&>(control_);
  if (list.MultiSelect()) {
    const LRESULT count = Send(LB_GETSELITEMS, marked.size(), reinterpret_cast<LPARAM>(marked.data()));
    marked.resize(static_cast<std::size_t>(std::max<LRESULT>(count, 0)));
  } else {
    marked = {static_cast<int>(Send(LB_GETCURSEL))};
  }
  list.UserMark(marked);
}

void NativeControl::ActCombo(UINT code) {
  auto& combo = static_cast<ComboBox&>(control_);
  const int picked = static_cast<int>(Send(CB_GETCURSEL));
  // Picking the entry that is picked already gives no CBN_SELCHANGE.
  if (code == CBN_SELCHANGE || (code == CBN_SELENDOK && picked == combo.ListIndex())) combo.UserPick(picked);
}

void NativeControl::ActText(UINT code) {
  if (code == EN_CHANGE) static_cast<TextBox&>(control_).UserType(WindowText(window_));
}

void NativeControl::ActLink(UINT code) {
  if (code == static_cast<UINT>(NM_CLICK) || code == static_cast<UINT>(NM_RETURN)) ActClick(BN_CLICKED);
}

void NativeControl::ActTabs(UINT code) {
  if (code == static_cast<UINT>(TCN_SELCHANGE)) static_cast<TabStrip&>(control_).UserPick(TabCtrl_GetCurSel(window_));
}

}  // namespace qb::win32
