// How a story tells what held.
#pragma once

#include <functional>
#include <string>

namespace native {

using Report = std::function<void(bool held, const std::string& what)>;

}  // namespace native
