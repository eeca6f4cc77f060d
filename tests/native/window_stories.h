// Stories about the windows themselves: pages, keys, questions, and the end of the Windows session.
#pragma once

#include <functional>
#include <string>

namespace native {

using Report = std::function<void(bool held, const std::string& what)>;

void WindowStories(const Report& check);

}  // namespace native
