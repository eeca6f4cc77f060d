// The forms and controls that a script names.
#pragma once

#include <string>
#include <string_view>

#include "widgets/form.h"

namespace qb::rehearse {

class Console;

struct Target {
  Form* form = nullptr;
  Control* control = nullptr;
};

// The front window: the visible one on top, else the first that is loaded; null if the program has none.
Form* FrontForm(Console& console);
// A loaded form by its name without regard to case; null if there is none.
Form* FindForm(Console& console, std::string_view name);
// "NAME" in the front window, then in the others, or "FORM.NAME". Both null if there is none.
Target FindControl(Console& console, std::string_view name);

}  // namespace qb::rehearse
