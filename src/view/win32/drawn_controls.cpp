#include "view/win32/drawn_controls.h"

namespace qb::win32 {

namespace {

constexpr Color kSystemColor = 0x80000000;

// As a bitmap of 32 bits holds it: 0x00RRGGBB.
DWORD PixelOf(Color color) {
  if ((color & kSystemColor) != 0) color = ::GetSysColor(static_cast<int>(color & ~kSystemColor));
  return RGB(GetBValue(color), GetGValue(color), GetRValue(color));
}

}  // namespace

GdiObject WithWeight(HFONT font, bool bold) {
  LOGFONTW about{};
  ::GetObjectW(font, sizeof about, &about);
  about.lfWeight = bold ? FW_BOLD : FW_NORMAL;
  return GdiObject(::CreateFontIndirectW(&about));
}

GdiObject BitmapOf(const PictureBox& box) {
  if (box.Columns() == 0 || box.Rows() == 0) return nullptr;
  BITMAPINFO about{};
  about.bmiHeader.biSize = sizeof about.bmiHeader;
  about.bmiHeader.biWidth = box.Columns();
  about.bmiHeader.biHeight = -box.Rows();  // the top row first
  about.bmiHeader.biPlanes = 1;
  about.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  GdiObject bitmap(::CreateDIBSection(nullptr, &about, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (bitmap == nullptr) return nullptr;
  auto* pixel = static_cast<DWORD*>(bits);
  for (int row = 0; row < box.Rows(); ++row) {
    for (int column = 0; column < box.Columns(); ++column) *pixel++ = PixelOf(box.PixelAt(column, row));
  }
  return bitmap;
}

}  // namespace qb::win32
