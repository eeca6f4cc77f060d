// The pictures on buttons, drawn at any size.
#pragma once

#include "platform/win32/windows_api.h"
#include "widgets/controls.h"

namespace qb::win32 {

// True while the user has Windows show high contrast: everything is drawn in the plain system colours then.
bool HighContrast();

// The picture as an icon `size` pixels high and wide, with a quarter of that left free at its right. The caller
// destroys it. Null for None, or if Windows has no bitmap left.
HICON DrawButtonIcon(ButtonIcon icon, int size);

}  // namespace qb::win32
