// Fonts and pictures that a control is drawn with.
#pragma once

#include <memory>

#include "platform/win32/windows_api.h"
#include "widgets/picture_box.h"

namespace qb::win32 {

struct GdiDeleter {
  void operator()(void* object) const { ::DeleteObject(object); }
};
using GdiObject = std::unique_ptr<void, GdiDeleter>;

// The same font in bold or in plain weight.
GdiObject WithWeight(HFONT font, bool bold);
// A bitmap of what is drawn on the box, for the resolution of the screen. Null for a box without pixels.
GdiObject BitmapOf(const PictureBox& box);

}  // namespace qb::win32
