// A progress bar of separate blocks, drawn on a picture box.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "widgets/picture_box.h"

namespace qb {

// What a property raises instead of taking a value.
struct RaisedError {
  std::uint32_t Number = 0;
  std::string_view Source, Description;
};

// No form uses it: their bars are controls of Windows.
class CProgressBar {
 public:
  PictureBox* Canvas() const { return canvas_; }
  std::int32_t Value() const { return value_; }
  std::int32_t min() const { return min_; }
  std::int32_t Max() const { return max_; }
  Color ForeColor() const { return fore_color_; }
  Color BackColor() const { return back_color_; }

  // Refused for anything but a picture box. The box must outlive its use here; its width becomes that of a
  // whole number of blocks.
  [[nodiscard]] std::optional<RaisedError> SetCanvas(Control* canvas);
  // Held to the limits.
  void SetValue(std::int32_t value);
  // Refused unless the lower limit stays below the upper one.
  [[nodiscard]] std::optional<RaisedError> SetMin(std::int32_t lower);
  [[nodiscard]] std::optional<RaisedError> SetMax(std::int32_t upper);
  void SetForeColor(Color color);
  void SetBackColor(Color color);

  // Draws all blocks anew, on a cleared canvas if asked to. Nothing without a canvas.
  void Refresh(bool clear = false);
  // To be called when the owner has changed the size of the canvas.
  void Resize();
  void ResizeEx();

 private:
  void Draw_Blocks();
  void Calc_Blocks();
  int DrawRow(Color color, std::int64_t count, int x);

  PictureBox* canvas_ = nullptr;
  std::int32_t value_ = 0, min_ = 0, max_ = 100;
  Color fore_color_ = kSystemHighlight, back_color_ = kSystemButtonFace;
  std::int16_t block_width_ = 0, block_height_ = 0;  // pixels
  std::int16_t gap_ = 3, margin_ = 2;                // pixels between the blocks, and round them
  std::int16_t block_count_ = 0;
  bool resizing_ = false;  // ResizeEx is changing the width of the canvas
};

}  // namespace qb
