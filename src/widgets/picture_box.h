// A control to draw on: filled boxes in a grid of pixels that a view shows and a test can read.
#pragma once

#include <cstdint>
#include <vector>

#include "widgets/control.h"

namespace qb {

// 0x00BBGGRR, or a system colour: 0x80000000 and its number.
using Color = std::uint32_t;
inline constexpr Color kSystemHighlight = 0x8000000D;
inline constexpr Color kSystemButtonFace = 0x8000000F;

// Units of ScaleWidth and ScaleHeight.
enum class ScaleMode { Twips = 1, Pixels = 3 };

class PictureBox : public Control {
 public:
  static constexpr int kTwipsPerPixel = 15;

  // Outer sizes and the border at each side, in pixels; none below 0.
  PictureBox(Form& form, std::string name, int width, int height, int border);

  // The outer width in twips. The content is cleared where the width in pixels changes.
  int Width() const { return width_; }
  void SetWidth(int twips);
  // The area inside the border.
  int ScaleWidth() const { return Scaled(columns_); }
  int ScaleHeight() const { return Scaled(rows_); }
  void SetScaleMode(ScaleMode mode) { scale_mode_ = mode; }

  Color ForeColor() const { return fore_color_; }
  void SetForeColor(Color color) { fore_color_ = color; }
  Color BackColor() const { return back_color_; }
  void SetBackColor(Color color);  // clears
  void Clear();
  // From corner to corner, both within, in the fore colour; in pixels. What lies outside is cut off.
  void FillBox(int left, int top, int right, int bottom);

  // Inside the border, in pixels.
  int Columns() const { return columns_; }
  int Rows() const { return rows_; }
  int Border() const { return border_; }
  Color PixelAt(int column, int row) const {
    return pixels_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                   static_cast<std::size_t>(column)];
  }

  Handler Resize;  // the width has changed

 private:
  int Scaled(int pixels) const { return scale_mode_ == ScaleMode::Pixels ? pixels : pixels * kTwipsPerPixel; }
  void MakePixels();

  const int border_;
  int width_;
  int columns_ = 0, rows_ = 0;
  ScaleMode scale_mode_ = ScaleMode::Twips;
  Color fore_color_ = 0, back_color_ = kSystemButtonFace;
  std::vector<Color> pixels_;  // row by row
};

}  // namespace qb
