// A form drawn as text.
#pragma once

#include <string>

#include "widgets/form.h"

namespace qb {

// The form as the user would see it, as lines that end in "\n": title, menus, then its controls in their
// arrangement. A ticked box is "[x]", a set option "(*)", a button "[ Caption ]", a link "<Caption>", the
// tab in front "[Caption]" among its bare neighbours. A control that takes no click is marked "(disabled)";
// what cannot be seen is left out.
std::string Draw(const Form& form);

// A caption without the ampersand of its access key; "&&" stands for one ampersand.
std::string PlainCaption(std::string_view caption);

// Columns that a UTF-8 text takes: one for each character.
std::size_t Columns(std::string_view text);

}  // namespace qb
