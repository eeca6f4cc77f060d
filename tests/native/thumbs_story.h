// The thumbnail audit on the real program: scan, page, pictures, questions, removal.
#pragma once

#include "report.h"

namespace native {

// Finds its caches below C:\caches and the pictures in them in C:\pictures; leaves the log in C:\thumbs-log.txt. Prints
// how long the window took at most to answer a message.
void ThumbsStory(const Report& check);

}  // namespace native
