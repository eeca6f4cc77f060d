// Names that Windows bends for programs of one byte a letter, and paths that are long.
#pragma once

#include "report.h"

namespace native {

// Plays on the program whose manifest does not ask for UTF-8, as Windows before version 1903 of 10 takes every one.
void NamesStory(const Report& check);

}  // namespace native
