// Stories about the windows themselves: pages, keys, questions, and the end of the Windows session.
#pragma once

#include "report.h"

namespace native {

void WindowStories(const Report& check);

}  // namespace native
