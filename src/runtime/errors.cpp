#include "runtime/errors.h"

namespace qb {

namespace {

struct Description {
  RuntimeError error;
  std::string_view text;
};

constexpr Description kDescriptions[] = {
    {RuntimeError::InvalidCall, "Invalid procedure call or argument"},
    {RuntimeError::Overflow, "Overflow"},
    {RuntimeError::SubscriptOutOfRange, "Subscript out of range"},
    {RuntimeError::TypeMismatch, "Type mismatch"},
    {RuntimeError::BadFileNumber, "Bad file name or number"},
    {RuntimeError::FileNotFound, "File not found"},
    {RuntimeError::FileAlreadyOpen, "File already open"},
    {RuntimeError::DeviceIo, "Device I/O error"},
    {RuntimeError::FileExists, "File already exists"},
    {RuntimeError::DiskFull, "Disk full"},
    {RuntimeError::InputPastEnd, "Input past end of file"},
    {RuntimeError::TooManyFiles, "Too many files"},
    {RuntimeError::DeviceUnavailable, "Device unavailable"},
    {RuntimeError::PermissionDenied, "Permission denied"},
    {RuntimeError::DifferentDrive, "Can't rename with different drive"},
    {RuntimeError::PathFileAccess, "Path/File access error"},
    {RuntimeError::PathNotFound, "Path not found"},
};

}  // namespace

RuntimeError FromWindows(Error error) {
  switch (error) {
    case Error::Success:
      return RuntimeError::None;
    case Error::FileNotFound:
    case Error::NoMoreFiles:
      return RuntimeError::FileNotFound;
    case Error::PathNotFound:
      return RuntimeError::PathNotFound;
    case Error::SharingViolation:
      return RuntimeError::PermissionDenied;
    case Error::FileExists:
    case Error::AlreadyExists:
      return RuntimeError::FileExists;
    case Error::NotSameDevice:
      return RuntimeError::DifferentDrive;
    case Error::DiskFull:
      return RuntimeError::DiskFull;
    case Error::InvalidName:
    case Error::InvalidHandle:
      return RuntimeError::BadFileNumber;
    default:
      return RuntimeError::PathFileAccess;
  }
}

std::string_view Describe(int number) {
  for (const Description& description : kDescriptions) {
    if (Number(description.error) == number) return description.text;
  }
  return number == 0 ? "" : "Application-defined or object-defined error";
}

}  // namespace qb
