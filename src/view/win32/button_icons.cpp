#include "view/win32/button_icons.h"

#include <cstdint>
#include <cstring>
#include <vector>

namespace qb::win32 {

namespace {

constexpr int kGrid = 32;    // the pictures stand on a field of so many units
constexpr int kSamples = 4;  // of a pixel in each direction, for smooth edges

enum class Draw { Area, Line, Disc };

constexpr COLORREF kRed = RGB(0xC4, 0x2B, 0x1C), kGreen = RGB(0x10, 0x7C, 0x41), kBlue = RGB(0x1D, 0x5F, 0xA8),
                   kAmber = RGB(0xD8, 0x96, 0x14), kSand = RGB(0xF3, 0xC6, 0x5A), kBrown = RGB(0x9A, 0x62, 0x2B),
                   kGrey = RGB(0x8A, 0x94, 0xA0), kWhite = RGB(0xFF, 0xFF, 0xFF);

// One stroke of a picture, later ones above earlier ones.
struct Shape {
  Draw draw;
  COLORREF color;
  int width;                  // of a line
  std::vector<POINT> points;  // of a disc, two corners of the square round it
};

const std::vector<Shape>& ShapesOf(ButtonIcon icon) {
  static const std::vector<Shape> none;
  static const std::vector<Shape> kill = {
      {Draw::Area, kAmber, 0, {{19, 1}, {6, 18}, {14, 18}, {10, 31}, {26, 12}, {17, 12}, {22, 1}}}};
  static const std::vector<Shape> save = {{Draw::Line, kGreen, 5, {{5, 17}, {12, 25}, {27, 7}}}};
  static const std::vector<Shape> cancel = {{Draw::Line, kRed, 5, {{7, 7}, {25, 25}}},
                                            {Draw::Line, kRed, 5, {{25, 7}, {7, 25}}}};
  static const std::vector<Shape> help = {
      {Draw::Disc, kBlue, 0, {{2, 2}, {30, 30}}},
      {Draw::Line, kWhite, 3, {{11, 12}, {12, 9}, {16, 8}, {20, 9}, {21, 12}, {19, 15}, {16, 17}, {16, 20}}},
      {Draw::Disc, kWhite, 0, {{14, 22}, {18, 26}}}};
  static const std::vector<Shape> reset = {
      {Draw::Line, kBlue, 4, {{9, 10}, {16, 7}, {23, 10}, {26, 17}, {23, 24}, {16, 27}, {9, 24}, {7, 20}}},
      {Draw::Area, kBlue, 0, {{4, 3}, {4, 15}, {15, 13}}}};
  static const std::vector<Shape> folder = {
      {Draw::Area, kAmber, 0, {{2, 6}, {12, 6}, {15, 9}, {28, 9}, {28, 27}, {2, 27}}},
      {Draw::Area, kSand, 0, {{7, 14}, {31, 14}, {28, 27}, {2, 27}}}};
  static const std::vector<Shape> search = {{Draw::Line, kBrown, 5, {{19, 19}, {28, 28}}},
                                            {Draw::Disc, kBlue, 0, {{3, 3}, {22, 22}}},
                                            {Draw::Disc, kWhite, 0, {{7, 7}, {18, 18}}}};
  static const std::vector<Shape> forward = {
      {Draw::Area, kGreen, 0, {{3, 12}, {16, 12}, {16, 5}, {29, 16}, {16, 27}, {16, 20}, {3, 20}}}};
  static const std::vector<Shape> back = {
      {Draw::Area, kRed, 0, {{29, 12}, {16, 12}, {16, 5}, {3, 16}, {16, 27}, {16, 20}, {29, 20}}}};
  static const std::vector<Shape> clear = {{Draw::Area, kGrey, 0, {{6, 2}, {20, 2}, {26, 8}, {26, 30}, {6, 30}}},
                                           {Draw::Line, kWhite, 2, {{10, 12}, {22, 12}}},
                                           {Draw::Line, kWhite, 2, {{10, 17}, {22, 17}}},
                                           {Draw::Line, kWhite, 2, {{10, 22}, {22, 22}}},
                                           {Draw::Line, kRed, 4, {{4, 27}, {28, 5}}}};
  static const std::vector<Shape> cookie = {
      {Draw::Disc, kBrown, 0, {{2, 2}, {30, 30}}},   {Draw::Disc, kSand, 0, {{4, 4}, {28, 28}}},
      {Draw::Disc, kBrown, 0, {{8, 9}, {13, 14}}},   {Draw::Disc, kBrown, 0, {{18, 8}, {22, 12}}},
      {Draw::Disc, kBrown, 0, {{17, 17}, {23, 23}}}, {Draw::Disc, kBrown, 0, {{9, 20}, {13, 24}}}};
  static const std::vector<Shape> play = {{Draw::Area, kGreen, 0, {{8, 4}, {28, 16}, {8, 28}}}};
  switch (icon) {
    case ButtonIcon::None:
      break;
    case ButtonIcon::Kill:
      return kill;
    case ButtonIcon::Save:
      return save;
    case ButtonIcon::Cancel:
      return cancel;
    case ButtonIcon::Help:
      return help;
    case ButtonIcon::Reset:
      return reset;
    case ButtonIcon::Folder:
      return folder;
    case ButtonIcon::Search:
      return search;
    case ButtonIcon::Forward:
      return forward;
    case ButtonIcon::Back:
      return back;
    case ButtonIcon::Clear:
      return clear;
    case ButtonIcon::Cookie:
      return cookie;
    case ButtonIcon::Play:
      return play;
  }
  return none;
}

// A bitmap whose pixels can be reached, as bytes of blue, green, red and alpha.
struct Pixels {
  Pixels(int wide, int high) : width(wide), height(high) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, wide, -high, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    bitmap = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&bytes), nullptr, 0);
  }
  ~Pixels() { ::DeleteObject(bitmap); }
  Pixels(const Pixels&) = delete;
  Pixels& operator=(const Pixels&) = delete;
  std::uint8_t* At(int x, int y) const { return bytes + 4 * (static_cast<std::ptrdiff_t>(y) * width + x); }
  void Clear() const { std::memset(bytes, 0, 4 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height)); }

  const int width, height;
  HBITMAP bitmap = nullptr;
  std::uint8_t* bytes = nullptr;
};

// Draws the shape in white on `field`, which stands for the whole grid.
void DrawMask(const Shape& shape, const Pixels& field) {
  auto scaled = [&](LONG units) { return ::MulDiv(static_cast<int>(units), field.height, kGrid); };
  std::vector<POINT> points;
  for (const POINT& point : shape.points) points.push_back({scaled(point.x), scaled(point.y)});
  field.Clear();
  HDC dc = ::CreateCompatibleDC(nullptr);
  HGDIOBJ old_bitmap = ::SelectObject(dc, field.bitmap);
  const LOGBRUSH solid{BS_SOLID, kWhite, 0};
  HPEN pen = shape.draw == Draw::Line ? ::ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_ROUND | PS_JOIN_ROUND,
                                                       static_cast<DWORD>(scaled(shape.width)), &solid, 0, nullptr)
                                      : ::CreatePen(PS_NULL, 0, 0);
  HGDIOBJ old_pen = ::SelectObject(dc, pen);
  HGDIOBJ old_brush = ::SelectObject(dc, ::GetStockObject(WHITE_BRUSH));
  switch (shape.draw) {
    case Draw::Area:
      ::Polygon(dc, points.data(), static_cast<int>(points.size()));
      break;
    case Draw::Line:
      ::Polyline(dc, points.data(), static_cast<int>(points.size()));
      break;
    case Draw::Disc:
      ::Ellipse(dc, points[0].x, points[0].y, points[1].x, points[1].y);
      break;
  }
  ::SelectObject(dc, old_brush);
  ::SelectObject(dc, old_pen);
  ::SelectObject(dc, old_bitmap);
  ::DeleteObject(pen);
  ::DeleteDC(dc);
  ::GdiFlush();
}

// How much of a pixel the mask covers, from 0 to 255.
int Coverage(const Pixels& field, int x, int y) {
  int covered = 0;
  for (int row = 0; row < kSamples; ++row) {
    for (int column = 0; column < kSamples; ++column) {
      covered += *field.At(x * kSamples + column, y * kSamples + row);
    }
  }
  return covered / (kSamples * kSamples);
}

// Lays a colour of that coverage over what the pixel shows already.
void Lay(std::uint8_t* pixel, COLORREF color, int coverage) {
  const int before = pixel[3] * (255 - coverage) / 255;
  const int alpha = coverage + before;
  if (alpha == 0) return;
  const BYTE parts[] = {GetBValue(color), GetGValue(color), GetRValue(color)};
  for (int i = 0; i < 3; ++i) {
    pixel[i] = static_cast<std::uint8_t>((parts[i] * coverage + pixel[i] * before) / alpha);
  }
  pixel[3] = static_cast<std::uint8_t>(alpha);
}

// One bit a pixel, set where the picture shows what is below it: a button that is disabled is drawn from these alone.
HBITMAP MaskOf(const Pixels& picture) {
  const std::size_t line = static_cast<std::size_t>(picture.width + 15) / 16 * 2;  // padded to 16 bits
  std::vector<std::uint8_t> bits(line * static_cast<std::size_t>(picture.height));
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      if (picture.At(x, y)[3] < 128)
        bits[static_cast<std::size_t>(y) * line + static_cast<std::size_t>(x / 8)] |= 0x80 >> x % 8;
    }
  }
  return ::CreateBitmap(picture.width, picture.height, 1, 1, bits.data());
}

}  // namespace

bool HighContrast() {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof contrast;
  return ::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != FALSE &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

HICON DrawButtonIcon(ButtonIcon icon, int size) {
  const std::vector<Shape>& shapes = ShapesOf(icon);
  if (shapes.empty()) return nullptr;
  const Pixels picture(size + size / 4, size);
  const Pixels field(size * kSamples, size * kSamples);
  if (picture.bitmap == nullptr || field.bitmap == nullptr) return nullptr;
  picture.Clear();
  const bool plain = HighContrast();
  for (const Shape& shape : shapes) {
    DrawMask(shape, field);
    // The light colours stand for what shows through.
    const bool light = shape.color == kWhite || shape.color == kSand;
    const COLORREF color = plain ? ::GetSysColor(light ? COLOR_BTNFACE : COLOR_BTNTEXT) : shape.color;
    for (int y = 0; y < size; ++y) {
      for (int x = 0; x < size; ++x) Lay(picture.At(x, y), color, Coverage(field, x, y));
    }
  }
  HBITMAP mask = MaskOf(picture);
  if (mask == nullptr) return nullptr;
  ICONINFO info{TRUE, 0, 0, mask, picture.bitmap};
  HICON made = ::CreateIconIndirect(&info);
  ::DeleteObject(mask);
  return made;
}

}  // namespace qb::win32
