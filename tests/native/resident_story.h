// The half of the program that lives in the tray: Boss Key, icon and menus, wizard, watcher, guards.
#pragma once

#include "report.h"

namespace native {

// Leaves the log in C:\resident-log.txt.
void ResidentStory(const Report& check);

}  // namespace native
