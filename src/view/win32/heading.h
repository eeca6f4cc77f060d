// A title across a window or page, on a field that runs from one colour into another.
#pragma once

#include "platform/win32/windows_api.h"

namespace qb::win32 {

// Answers the WM_DRAWITEM of a label that is a title. The colours are those of window captions, and plain
// ones in high contrast.
void DrawHeading(const DRAWITEMSTRUCT& item, HFONT font);

}  // namespace qb::win32
