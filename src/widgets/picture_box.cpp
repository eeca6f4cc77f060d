#include "widgets/picture_box.h"

#include <algorithm>

namespace qb {

PictureBox::PictureBox(Form& form, std::string name, int width, int height, int border)
    : Control(form, ControlKind::PictureBox, std::move(name)),
      border_(border),
      width_(width * kTwipsPerPixel),
      rows_(std::max(height - 2 * border, 0)) {
  MakePixels();
}

void PictureBox::MakePixels() {
  columns_ = std::max(width_ / kTwipsPerPixel - 2 * border_, 0);
  pixels_.assign(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_), back_color_);
}

void PictureBox::SetWidth(int twips) {
  if (twips == width_) return;
  width_ = twips;
  MakePixels();
  Changed();
  if (Resize) Resize();
}

void PictureBox::SetBackColor(Color color) {
  back_color_ = color;
  Clear();
}

void PictureBox::Clear() {
  std::fill(pixels_.begin(), pixels_.end(), back_color_);
  Changed();
}

void PictureBox::FillBox(int left, int top, int right, int bottom) {
  left = std::max(left, 0);
  right = std::min(right, columns_ - 1);
  if (left > right) return;
  for (int row = std::max(top, 0); row <= std::min(bottom, rows_ - 1); ++row) {
    const auto start = pixels_.begin() + static_cast<std::ptrdiff_t>(row) * columns_ + left;
    std::fill(start, start + (right - left + 1), fore_color_);
  }
  Changed();
}

}  // namespace qb
