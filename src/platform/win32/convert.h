// Conversions between the values of the seam and those of the Windows headers.
#pragma once

#include <optional>
#include <string>

#include "platform/types.h"
#include "platform/win32/windows_api.h"

namespace qb::win32 {

// A handle of the seam holds the bits of the Windows handle, unchanged.
template <typename Native, typename Handle>
Native Unwrap(Handle handle) {
  return reinterpret_cast<Native>(static_cast<std::uintptr_t>(handle));
}

template <typename Handle, typename Native>
Handle Wrap(Native native) {
  return static_cast<Handle>(reinterpret_cast<std::uintptr_t>(native));
}

// Predefined registry keys are 32-bit numbers that 64-bit Windows wants sign-extended.
inline HKEY Unwrap(KeyHandle key) {
  const auto bits = static_cast<std::uint64_t>(key);
  const bool predefined = bits == (bits & 0xFFFFFFFFu) && (bits & 0x80000000u) != 0;
  return reinterpret_cast<HKEY>(predefined ? static_cast<LONG_PTR>(static_cast<LONG>(bits))
                                           : static_cast<LONG_PTR>(bits));
}

inline Error LastError() {
  return static_cast<Error>(::GetLastError());
}
inline Error FromBool(BOOL succeeded) {
  return succeeded != FALSE ? Error::Success : LastError();
}
inline Error FromStatus(LSTATUS status) {
  return static_cast<Error>(status);
}

// A pointer that is null where there is no text.
class OptionalText {
 public:
  explicit OptionalText(std::optional<std::string_view> text) : text_(text) {}
  const char* get() const { return text_ ? text_->c_str() : nullptr; }

 private:
  std::optional<std::string> text_;
};

inline FileTime FromNative(const FILETIME& time) {
  return {static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime};
}

inline FILETIME ToNative(FileTime time) {
  return {static_cast<DWORD>(time.ticks), static_cast<DWORD>(time.ticks >> 32)};
}

inline SystemTime FromNative(const SYSTEMTIME& time) {
  return {time.wYear, time.wMonth,  time.wDayOfWeek, time.wDay,
          time.wHour, time.wMinute, time.wSecond,    time.wMilliseconds};
}

inline DWORD SizeOf(Buffer buffer) {
  return static_cast<DWORD>(buffer.size());
}

}  // namespace qb::win32
