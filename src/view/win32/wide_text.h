// The program's texts are UTF-8; windows take UTF-16.
#pragma once

#include <string>
#include <string_view>

namespace qb::win32 {

std::wstring Wide(std::string_view text);
std::string Narrow(std::wstring_view text);

}  // namespace qb::win32
