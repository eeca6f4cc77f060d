// Values that cross the platform seam: handles, error codes, and the two small result types.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace qb {

// Windows error codes, as GetLastError and the registry functions give them. Only those that the
// program or its machine tells apart have a name; any other number may occur.
enum class [[nodiscard]] Error : std::uint32_t{
    Success = 0,         InvalidFunction = 1,   FileNotFound = 2,      PathNotFound = 3,   AccessDenied = 5,
    InvalidHandle = 6,   NotSameDevice = 17,    NoMoreFiles = 18,      WriteProtect = 19,  SharingViolation = 32,
    HandleEof = 38,      FileExists = 80,       InvalidParameter = 87, DiskFull = 112,     InsufficientBuffer = 122,
    InvalidName = 123,   NegativeSeek = 131,    DirNotRoot = 144,      DirNotEmpty = 145,  BadPathName = 161,
    AlreadyExists = 183, FilenameTooLong = 206, MoreData = 234,        NoMoreItems = 259,  DirectoryName = 267,
    KeyDeleted = 1018,   NoneMapped = 1332,     InvalidWindow = 1400,  HotKeyTaken = 1409, HotKeyUnknown = 1419,
};

constexpr bool Ok(Error error) {
  return error == Error::Success;
}

// A value, or the reason why there is none. `value` is only meaningful when `ok()`.
template <typename T>
struct [[nodiscard]] Result {
  Error error = Error::Success;
  T value{};

  Result(T v) : value(std::move(v)) {}  // NOLINT(google-explicit-constructor)
  Result(Error e) : error(e) {}         // NOLINT(google-explicit-constructor)
  bool ok() const { return error == Error::Success; }
  T value_or(T other) const { return ok() ? value : std::move(other); }
};

// Says at a call that a failure is passed over by decision: the next statement runs.
template <typename T>
constexpr void StepOver(T&& /*outcome*/) {}

// One type for each family of handles, so that they cannot be mixed up. Null is "none".
enum class FileHandle : std::uint64_t { None = 0 };
enum class FindHandle : std::uint64_t { None = 0 };
enum class ProcessHandle : std::uint64_t { None = 0 };
enum class MutexHandle : std::uint64_t { None = 0 };
enum class ItemIdList : std::uint64_t { None = 0 };
enum class WindowHandle : std::uint64_t { None = 0 };
enum class WindowProcedure : std::uint64_t { None = 0 };
enum class IconHandle : std::uint64_t { None = 0 };
enum class CursorHandle : std::uint64_t { None = 0 };
enum class CryptContext : std::uint64_t { None = 0 };
enum class KeyHandle : std::uint64_t {
  None = 0,
  CurrentUser = 0x80000001,   // HKEY_CURRENT_USER
  LocalMachine = 0x80000002,  // HKEY_LOCAL_MACHINE
};

// A buffer that the callee fills. A default-made one stands for a null pointer.
using Buffer = std::span<char>;

// 100 ns units since 1601-01-01, as FILETIME.
struct FileTime {
  std::uint64_t ticks = 0;
  friend bool operator==(const FileTime&, const FileTime&) = default;
};

// Fields as SYSTEMTIME has them; day_of_week 0 is Sunday.
struct SystemTime {
  std::uint16_t year = 1601, month = 1, day_of_week = 1, day = 1;
  std::uint16_t hour = 0, minute = 0, second = 0, milliseconds = 0;
};

// The text of a filled buffer up to its first zero character.
inline std::string TextOf(std::span<const char> buffer) {
  std::string_view all(buffer.data(), buffer.size());
  return std::string(all.substr(0, all.find('\0')));
}

}  // namespace qb
