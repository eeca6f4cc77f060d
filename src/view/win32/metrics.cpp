#include "view/win32/metrics.h"

#include <algorithm>

#include "view/win32/wide_text.h"
#include "widgets/picture_box.h"

namespace qb::win32 {

namespace {

constexpr UINT kStandardDpi = 96;
// Texts that are wider than this are broken into lines.
constexpr int kWidestText = 290;

// Functions that came with Windows 10 are asked for by name, so that the program starts on older systems.
template <typename Function>
Function FromUser32(const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"user32.dll"), name)));
}

UINT SystemDpi() {
  HDC screen = ::GetDC(nullptr);
  const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
  ::ReleaseDC(nullptr, screen);
  return static_cast<UINT>(dpi);
}

LOGFONTW MessageFont(UINT dpi) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  const auto for_dpi = FromUser32<BOOL(WINAPI*)(UINT, UINT, PVOID, UINT, UINT)>("SystemParametersInfoForDpi");
  if (for_dpi != nullptr && for_dpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi)) {
    return metrics.lfMessageFont;
  }
  if (::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return metrics.lfMessageFont;
  LOGFONTW font{};
  font.lfHeight = -::MulDiv(9, static_cast<int>(dpi), 72);
  font.lfCharSet = DEFAULT_CHARSET;
  const std::wstring_view face = L"Tahoma";
  std::copy(face.begin(), face.end(), font.lfFaceName);
  return font;
}

bool IsText(ControlKind kind) {
  switch (kind) {
    case ControlKind::Label:
    case ControlKind::Link:
    case ControlKind::CheckBox:
    case ControlKind::Option:
      return true;
    default:
      return false;
  }
}

}  // namespace

UINT DpiOf(HWND window) {
  const auto of_window = FromUser32<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
  const UINT dpi = of_window != nullptr ? of_window(window) : 0;
  return dpi != 0 ? dpi : SystemDpi();
}

int SystemMetric(int index, UINT dpi) {
  const auto for_dpi = FromUser32<int(WINAPI*)(int, UINT)>("GetSystemMetricsForDpi");
  return for_dpi != nullptr ? for_dpi(index, dpi) : ::GetSystemMetrics(index);
}

SIZE WindowSize(SIZE client, DWORD style, DWORD ex_style, bool menu, UINT dpi) {
  RECT frame{0, 0, client.cx, client.cy};
  const auto for_dpi = FromUser32<BOOL(WINAPI*)(LPRECT, DWORD, BOOL, DWORD, UINT)>("AdjustWindowRectExForDpi");
  if (for_dpi == nullptr || !for_dpi(&frame, style, menu, ex_style, dpi)) {
    ::AdjustWindowRectEx(&frame, style, menu, ex_style);
  }
  return {frame.right - frame.left, frame.bottom - frame.top};
}

Metrics::Metrics(UINT dpi) : dpi_(dpi) {
  LOGFONTW message_font = MessageFont(dpi);
  font_ = ::CreateFontIndirectW(&message_font);
  message_font.lfHeight = ::MulDiv(message_font.lfHeight, 5, 4);
  message_font.lfWeight = FW_BOLD;
  heading_font_ = ::CreateFontIndirectW(&message_font);
  // A device that has only black and white draws letters without smooth edges, and these may be narrower.
  HDC screen = ::GetDC(nullptr);
  screen_ = ::CreateCompatibleDC(screen);
  color_ = ::CreateCompatibleBitmap(screen, 1, 1);
  ::ReleaseDC(nullptr, screen);
  old_bitmap_ = ::SelectObject(screen_, color_);
  old_font_ = ::SelectObject(screen_, font_);
  constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  SIZE size{};
  ::GetTextExtentPoint32W(screen_, kLetters, 52, &size);
  TEXTMETRICW text{};
  ::GetTextMetricsW(screen_, &text);
  base_ = {(size.cx / 26 + 1) / 2, text.tmHeight};

  spacing_.related = Vertical(4);
  spacing_.separate = Vertical(7);
  spacing_.group_border = {Horizontal(7), Vertical(7)};
  spacing_.group_heading = Vertical(13);
  spacing_.tab_border = {Horizontal(7), Vertical(7)};
}

Metrics::~Metrics() {
  ::SelectObject(screen_, old_font_);
  ::SelectObject(screen_, old_bitmap_);
  ::DeleteDC(screen_);
  ::DeleteObject(color_);
  ::DeleteObject(heading_font_);
  ::DeleteObject(font_);
}

Extent Metrics::TextExtent(const std::string& text, int width) const {
  const std::wstring wide = Wide(text.empty() ? " " : text);
  RECT box{0, 0, width, 0};
  ::DrawTextW(screen_, wide.c_str(), -1, &box, DT_CALCRECT | (width > 0 ? DT_WORDBREAK : 0));
  return {box.right, box.bottom};
}

Extent Metrics::SmallestText(const Control& control) const {
  // The mark of a box or option and the focus frame round its text.
  const bool marked = control.kind() == ControlKind::CheckBox || control.kind() == ControlKind::Option;
  const int mark = marked ? ::MulDiv(13, static_cast<int>(dpi_), static_cast<int>(kStandardDpi)) + Horizontal(4) : 0;
  const int widest = Horizontal(kWidestText);
  Extent text = TextExtent(control.Caption());
  if (text.width > widest) text = TextExtent(control.Caption(), widest);
  return {text.width + mark + Horizontal(2), std::max(text.height, Vertical(marked ? 10 : 8))};
}

Extent Metrics::SmallestHeading(const Control& control) const {
  ::SelectObject(screen_, heading_font_);
  const Extent text = TextExtent(control.Caption());
  ::SelectObject(screen_, font_);
  return {text.width + Horizontal(12), text.height + Vertical(6)};
}

Extent Metrics::Smallest(const Control& control) const {
  switch (control.kind()) {
    case ControlKind::Frame:
      return {TextExtent(control.Caption()).width + Horizontal(6), Vertical(8)};
    case ControlKind::Link: {
      // The link control keeps a margin of its own and cuts what does not fit.
      const Extent text = SmallestText(control);
      return {text.width + Horizontal(5), text.height};
    }
    case ControlKind::Label:
      return static_cast<const Label&>(control).IsHeading() ? SmallestHeading(control) : SmallestText(control);
    case ControlKind::CheckBox:
    case ControlKind::Option:
      return SmallestText(control);
    case ControlKind::Button: {
      const bool picture = static_cast<const Button&>(control).Icon() != ButtonIcon::None;
      const int content = TextExtent(control.Caption()).width + (picture ? IconSize() * 5 / 4 : 0);
      // Room for the picture as well where there is none, so that the buttons of a row are alike.
      return {std::max(Horizontal(50), content + Horizontal(14)), std::max(Vertical(14), IconSize() + Vertical(4))};
    }
    case ControlKind::ListBox:
      return {Horizontal(140), Vertical(70)};
    case ControlKind::ComboBox: {
      int widest = Horizontal(40);
      for (const std::string& entry : static_cast<const ComboBox&>(control).Entries()) {
        widest = std::max(widest, TextExtent(entry).width);
      }
      return {widest + Horizontal(18), Vertical(14)};
    }
    case ControlKind::TextBox:
      return {Horizontal(100), Vertical(14)};
    case ControlKind::TabStrip:
      return {Horizontal(40), Vertical(14)};  // the strip itself knows better, once it is made
    case ControlKind::ProgressBar:
      return {Horizontal(100), Vertical(9)};
    case ControlKind::PictureBox: {
      const auto& picture = static_cast<const PictureBox&>(control);
      return {picture.Columns(), picture.Rows()};
    }
    case ControlKind::Timer:
    case ControlKind::MenuItem:
      return {};
  }
  return {};
}

int Metrics::HeightAt(const Control& control, int width) const {
  const Extent smallest = Smallest(control);
  if (control.kind() == ControlKind::Label && static_cast<const Label&>(control).IsHeading()) return smallest.height;
  if (!IsText(control.kind()) || width <= smallest.width) return smallest.height;
  // A wider place may need fewer lines.
  const int surplus = smallest.width - TextExtent(control.Caption()).width;
  if (surplus > 0) return smallest.height;
  const int mark = control.kind() == ControlKind::Label || control.kind() == ControlKind::Link ? 0 : Vertical(12);
  return std::min(smallest.height, std::max(TextExtent(control.Caption(), width - mark).height, Vertical(8)));
}

}  // namespace qb::win32
