// Internet Explorer's traces on a real Windows: its URL cache, cookies and the keep list, the helpers, the
// registry, and what goes at the next boot.
#pragma once

#include "report.h"

namespace native {

// Leaves C:\internet-log.txt: the log and count of its runs, one after the other.
void InternetStory(const Report& check);
// What the boot after that story did.
void InternetStoryAfterBoot(const Report& check);

}  // namespace native
