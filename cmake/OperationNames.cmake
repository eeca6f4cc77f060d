# The names of the platform's operations, as a table in alphabetical order: those that the operations of a machine call
# themselves by. An operation that the table lacks does not compile.
file(GLOB files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/platform/machine/operations/*.cpp)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${files})
set(names "")
foreach(file IN LISTS files)
  file(READ ${file} text)
  string(REGEX MATCHALL "<\"[A-Za-z_]+\">" found "${text}")
  list(APPEND names ${found})
endforeach()
list(TRANSFORM names REPLACE "[<>]" "")
list(SORT names)
list(REMOVE_DUPLICATES names)
list(JOIN names ",\n    " names)
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/include/machine/platform/machine/operation_names.h @ONLY CONTENT [[
#pragma once

#include <array>
#include <string_view>

namespace qb::machine {

inline constexpr auto kOperationNames = std::to_array<std::string_view>({
    @names@,
});

}  // namespace qb::machine
]])
