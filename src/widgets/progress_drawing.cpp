#include "widgets/progress_drawing.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qb {

namespace {

std::int16_t Int16Of(double number) {
  using Limits = std::numeric_limits<std::int16_t>;
  return static_cast<std::int16_t>(std::clamp<double>(std::nearbyint(number), Limits::min(), Limits::max()));
}

}  // namespace

std::optional<RaisedError> CProgressBar::SetCanvas(Control* canvas) {
  if (canvas == nullptr || canvas->kind() != ControlKind::PictureBox) {
    return RaisedError{0x80040001, "CProgressBar.Canvas", "Canvas property must be of type PictureBox."};
  }
  canvas_ = static_cast<PictureBox*>(canvas);
  canvas_->SetForeColor(fore_color_);
  canvas_->SetBackColor(back_color_);
  canvas_->SetScaleMode(ScaleMode::Pixels);
  ResizeEx();
  return std::nullopt;
}

void CProgressBar::SetValue(std::int32_t value) {
  value_ = std::clamp(value, min_, max_);
  Refresh();
}

std::optional<RaisedError> CProgressBar::SetMin(std::int32_t lower) {
  if (lower >= max_) return RaisedError{0x80040002, "CProgressBar.Min", "Min property must be less than Max."};
  min_ = lower;
  Refresh();
  return std::nullopt;
}

std::optional<RaisedError> CProgressBar::SetMax(std::int32_t upper) {
  if (upper <= min_) return RaisedError{0x80040003, "CProgressBar.Max", "Max property must be greater than Min."};
  max_ = upper;
  Refresh();
  return std::nullopt;
}

void CProgressBar::SetForeColor(Color color) {
  fore_color_ = color;
  if (canvas_ == nullptr) return;
  canvas_->SetForeColor(color);
  Refresh();
}

void CProgressBar::SetBackColor(Color color) {
  back_color_ = color;
  if (canvas_ == nullptr) return;
  canvas_->SetBackColor(color);
  Refresh();
}

void CProgressBar::Refresh(bool clear) {
  if (canvas_ == nullptr) return;
  if (clear) canvas_->Clear();
  Draw_Blocks();
}

void CProgressBar::Resize() {
  ResizeEx();
  Refresh(true);
}

void CProgressBar::Calc_Blocks() {
  margin_ = 2;
  gap_ = 3;
  block_height_ = Int16Of(canvas_->ScaleHeight() - 2.0 * margin_);
  block_width_ = std::max<std::int16_t>(Int16Of(block_height_ * 2.0 / 3.0), 0);
  const int whole_blocks = canvas_->ScaleWidth() / (gap_ + block_width_);
  block_count_ = Int16Of(whole_blocks + 1.0);
}

void CProgressBar::ResizeEx() {
  if (resizing_ || canvas_ == nullptr) return;
  Calc_Blocks();
  const int step = block_width_ + gap_;
  int total = step * block_count_ + gap_;
  const int width = canvas_->ScaleWidth();
  if (width - (total - step) <= total - width) total = step * --block_count_ + gap_;
  const int border = canvas_->Width() - width * PictureBox::kTwipsPerPixel;
  resizing_ = true;
  canvas_->SetWidth(total * PictureBox::kTwipsPerPixel + border);
  Refresh(true);
  resizing_ = false;
}

int CProgressBar::DrawRow(Color color, std::int64_t count, int x) {
  canvas_->SetForeColor(color);
  // Behind the right edge nothing is seen.
  for (; count > 0 && x < canvas_->Columns(); --count) {
    canvas_->FillBox(x, margin_, x + block_width_, block_height_ + margin_ - 1);
    x += block_width_ + gap_;
  }
  return x;
}

void CProgressBar::Draw_Blocks() {
  // Deliberate: the value is taken as it is and not less the lower limit, so that with a limit other than 0 the
  // bar runs ahead of or behind the true share.
  const double share = static_cast<double>(value_) / (static_cast<double>(max_) - min_);
  const auto filled = static_cast<std::int64_t>(std::nearbyint(share * block_count_));
  const int x = DrawRow(fore_color_, filled, margin_);
  if (filled < block_count_) DrawRow(back_color_, block_count_ - std::max<std::int64_t>(filled, 0), x);
}

}  // namespace qb
