// Sizes of native controls, from the message font of Windows at one resolution.
#pragma once

#include <string>

#include "platform/win32/windows_api.h"
#include "view/placement/placement.h"

namespace qb::win32 {

// Dots per inch of the monitor that a window stands on; that of the system before Windows 10.
UINT DpiOf(HWND window);
// A measure of GetSystemMetrics at a resolution.
int SystemMetric(int index, UINT dpi);
// The size of a whole window round a client area.
SIZE WindowSize(SIZE client, DWORD style, DWORD ex_style, bool menu, UINT dpi);

class Metrics : public Measurer {
 public:
  explicit Metrics(UINT dpi);
  ~Metrics() override;
  Metrics(const Metrics&) = delete;
  Metrics& operator=(const Metrics&) = delete;

  HFONT font() const { return font_; }
  HFONT HeadingFont() const { return heading_font_; }
  UINT dpi() const { return dpi_; }
  const Spacing& spacing() const { return spacing_; }
  // Between the controls and the edge of the window.
  int Margin() const { return Vertical(7); }
  // Height and width of a picture on a button, in pixels; some more stands free at its right.
  int IconSize() const { return ::MulDiv(16, static_cast<int>(dpi_), 96); }
  // Extent of a text as a label shows it, with its access key left out; broken into lines at `width`
  // unless that is 0.
  Extent TextExtent(const std::string& text, int width = 0) const;

  Extent Smallest(const Control& control) const override;
  int HeightAt(const Control& control, int width) const override;

 private:
  // Dialog units: a quarter of the font's average width and an eighth of its height.
  int Horizontal(int units) const { return ::MulDiv(units, base_.width, 4); }
  int Vertical(int units) const { return ::MulDiv(units, base_.height, 8); }
  Extent SmallestText(const Control& control) const;
  Extent SmallestHeading(const Control& control) const;

  const UINT dpi_;
  HDC screen_ = nullptr;
  HBITMAP color_ = nullptr;  // makes the device one of the screen's colours
  HFONT font_ = nullptr, heading_font_ = nullptr;
  HGDIOBJ old_font_ = nullptr, old_bitmap_ = nullptr;
  Extent base_;
  Spacing spacing_;
};

}  // namespace qb::win32
