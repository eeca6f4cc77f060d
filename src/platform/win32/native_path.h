// Paths as the file functions of Windows take them.
#pragma once

#include <string>
#include <string_view>

#include "platform/types.h"

namespace qb::win32 {

// The path in UTF-16. One that is too long for the plain form becomes an extended one (\\?\), after Windows itself has
// made it whole; relative paths and device names stay as they are. InvalidName for a path with a zero character in
// it: Windows would act on what stands before.
Result<std::wstring> NativePath(std::string_view path);
// The plain form of what Windows says of an extended path.
std::string PlainPath(std::string_view path);

}  // namespace qb::win32
