// The keyboard of a window: its tabs, its access keys and its menus.
#include "view/placement/access_keys.h"
#include "view/win32/native_form.h"
#include "view/win32/wide_text.h"

namespace qb::win32 {

// The strips that take a click, an inner one before that on whose page it stands.
std::vector<TabStrip*> NativeForm::FrontTabs() const {
  std::vector<TabStrip*> strips;
  for (const Slot& slot : slots_) {
    if (slot.control->kind() == ControlKind::TabStrip && WhyRefused(*slot.control) == Refusal::None) {
      strips.push_back(&static_cast<TabStrip&>(*slot.control));
    }
  }
  return strips;
}

// Ctrl+Tab and Ctrl+Shift+Tab go round the pages of the innermost strip; Alt with the access key of a tab goes to it.
bool NativeForm::TurnPage(const MSG& message) {
  const std::vector<TabStrip*> strips = FrontTabs();
  if (strips.empty()) return false;
  if (message.message == WM_KEYDOWN && message.wParam == VK_TAB && ::GetKeyState(VK_CONTROL) < 0) {
    TabStrip& strip = *strips.front();
    const int count = static_cast<int>(strip.Pages().size());
    strip.UserPick((strip.Tab() + (::GetKeyState(VK_SHIFT) < 0 ? count - 1 : 1)) % count);
    return true;
  }
  if (message.message != WM_SYSCHAR) return false;
  auto upper = [](wchar_t c) {
    return reinterpret_cast<ULONG_PTR>(::CharUpperW(reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(c))));
  };
  for (TabStrip* strip : strips) {
    int page = 0;
    for (const std::string& text : TabCaptions(*strip)) {
      const std::wstring caption = Wide(text);
      const std::size_t mark = caption.find(L'&');
      if (mark != std::wstring::npos && mark + 1 < caption.size() &&
          upper(caption[mark + 1]) == upper(static_cast<wchar_t>(message.wParam))) {
        strip->UserPick(page);
        return true;
      }
      ++page;
    }
  }
  return false;
}

bool NativeForm::TakeMessage(MSG& message) {
  if (!::IsWindowEnabled(window_)) return false;
  if (menu_.TranslateKey(window_, message)) return true;
  if (TurnPage(message)) return true;
  if (!::IsDialogMessageW(window_, &message)) return false;
  ScrollToFocus();
  return true;
}

// The captions that are in sight whatever page is in front: those of the menu bar, then those of the tabs.
std::vector<std::string> NativeForm::BarCaptions() const {
  std::vector<std::string> captions;
  for (const MenuItem* menu : form_.Menus()) {
    if (menu->Visible() && !menu->popup) captions.push_back(menu->Caption());
  }
  for (const Slot& slot : slots_) {
    if (slot.control->kind() != ControlKind::TabStrip) continue;
    for (const TabStrip::Page& page : static_cast<const TabStrip&>(*slot.control).Pages()) {
      captions.push_back(page.caption);
    }
  }
  return captions;
}

// Those of one strip, with their access keys.
std::vector<std::string> NativeForm::TabCaptions(const Control& strip) const {
  const std::vector<std::string> captions = WithAccessKeys(BarCaptions());
  auto first = captions.begin() + std::count_if(form_.Menus().begin(), form_.Menus().end(),
                                                [](const MenuItem* menu) { return menu->Visible() && !menu->popup; });
  for (const Slot& slot : slots_) {
    if (slot.control->kind() != ControlKind::TabStrip) continue;
    const auto pages = std::ssize(static_cast<const TabStrip&>(*slot.control).Pages());
    if (slot.control == &strip) return {first, first + pages};
    first += pages;
  }
  return {};
}

void NativeForm::BuildMenu() {
  menu_stale_ = in_menu_bar_;
  if (!menu_stale_) menu_.Build(window_, form_.Menus(), WithAccessKeys(BarCaptions()));
}

// A text before a field takes the key for it, and so does a frame round one that has no such text.
bool NativeForm::TakesAccessKey(std::size_t index) const {
  const Control& control = *slots_[index].control;
  switch (control.kind()) {
    case ControlKind::Button:
    case ControlKind::CheckBox:
    case ControlKind::Option:
      return true;
    case ControlKind::Label:
    case ControlKind::Frame: {
      if (index + 1 == slots_.size()) return false;
      const ControlKind next = slots_[index + 1].control->kind();
      return next == ControlKind::TextBox || next == ControlKind::ComboBox || next == ControlKind::ListBox;
    }
    default:
      return false;
  }
}

// Every control in sight gets a key of its own, as long as there are letters: what stands on every page first, so
// that its keys stay when the user turns pages, and buttons before the rest.
void NativeForm::ShareAccessKeys() {
  std::vector<Slot*> takers;
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    if (slots_[i].in_sight && TakesAccessKey(i)) takers.push_back(&slots_[i]);
  }
  auto turn = [](const Slot* slot) { return std::pair(slot->on_page, slot->control->kind() != ControlKind::Button); };
  std::stable_sort(takers.begin(), takers.end(), [turn](const Slot* a, const Slot* b) { return turn(a) < turn(b); });
  std::vector<std::string> captions = BarCaptions();
  const std::size_t bar = captions.size();
  for (const Slot* taker : takers) captions.push_back(taker->control->Caption());
  captions = WithAccessKeys(std::move(captions));
  for (std::size_t i = 0; i < takers.size(); ++i) {
    Slot& taker = *takers[i];
    taker.key_caption = captions[bar + i];
    if (taker.native != nullptr) taker.native->ShowAccessKey(taker.key_caption);
  }
}

void NativeForm::PopupMenu(MenuItem& menu) {
  if (open_popup_ != nullptr) return;
  open_popup_ = &menu;
  menu.open = true;
  MenuItem* chosen = menu_.Track(window_, menu);
  // A timer may have ended the program under the menu: then the form is not reached any more.
  if (window_ == nullptr) return;
  const bool takes_click = chosen != nullptr && WhyRefused(*chosen) == Refusal::None;
  menu.open = false;
  open_popup_ = nullptr;
  if (!takes_click) return;
  chosen->UserMouseDown();
  chosen->UserClick();
}

}  // namespace qb::win32
