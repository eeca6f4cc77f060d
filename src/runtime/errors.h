// Run-time error numbers: what the statements that work on files and numbers report, under the
// numbers that the error log and the file analyzer give out.
#pragma once

#include <string_view>

#include "platform/types.h"

namespace qb {

enum class [[nodiscard]] RuntimeError : int{
    None = 0,
    InvalidCall = 5,
    Overflow = 6,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    BadFileNumber = 52,
    FileNotFound = 53,
    FileAlreadyOpen = 55,
    DeviceIo = 57,
    FileExists = 58,
    DiskFull = 61,
    InputPastEnd = 62,
    TooManyFiles = 67,
    DeviceUnavailable = 68,
    PermissionDenied = 70,
    DifferentDrive = 74,
    PathFileAccess = 75,
    PathNotFound = 76,
};

constexpr bool Ok(RuntimeError error) {
  return error == RuntimeError::None;
}
constexpr int Number(RuntimeError error) {
  return static_cast<int>(error);
}

// The number under which a statement reports a failed Windows call.
RuntimeError FromWindows(Error error);
// The standard text of a number; "Application-defined or object-defined error" for one without.
std::string_view Describe(int number);

}  // namespace qb
