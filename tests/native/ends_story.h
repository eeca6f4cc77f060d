// What comes in the middle of a run: a second copy, windows that somebody named to do harm, the end of the process.
#pragma once

#include "report.h"

namespace native {

void EndsStory(const Report& check);

}  // namespace native
