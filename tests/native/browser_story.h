// The traces of Firefox, Chrome, Safari and AOL on the real program: by hand, and when Windows starts.
#pragma once

#include "report.h"

namespace native {

// Reads its files and settings from C:\browsers.rehearsal; leaves its logs in C:\browsers-log.txt.
void BrowserStory(const Report& check);

}  // namespace native
