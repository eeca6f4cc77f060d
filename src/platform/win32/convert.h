// Conversions between the values of the seam and those of the Windows headers.
#pragma once

#include <cwchar>
#include <optional>
#include <string>

#include "platform/text_buffer.h"
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

inline std::wstring Wide(std::string_view text) {
  const std::u16string units = ToUtf16(text);
  return std::wstring(units.begin(), units.end());
}
inline std::string Narrow(std::wstring_view wide) {
  return ToUtf8(std::u16string(wide.begin(), wide.end()));
}
// For what Windows acts on: InvalidName for a text with a zero character in it, as Windows would act on what stands
// before.
inline Result<std::wstring> NativeText(std::string_view text) {
  if (text.find('\0') != std::string_view::npos) return Error::InvalidName;
  return Wide(text);
}
// The text of an array up to its first zero character.
template <std::size_t size>
std::string TextOf(const wchar_t (&buffer)[size]) {
  return Narrow(std::wstring_view(buffer, ::wcsnlen(buffer, size)));
}

// A text as Windows takes it: a pointer that is null where there is no text. What follows a zero character is lost.
class WideText {
 public:
  explicit WideText(std::optional<std::string_view> text) {
    if (text) text_ = Wide(*text);
  }
  const wchar_t* get() const { return text_ ? text_->c_str() : nullptr; }

 private:
  std::optional<std::wstring> text_;
};

// The text of a call that fills a buffer and gives the length, or the size that is needed. `call` is given the buffer
// and its size in characters. A length of 0 is failure, with the last error.
template <typename Call>
Result<std::string> FilledText(Call call) {
  std::wstring buffer(MAX_PATH, L'\0');
  for (;;) {
    ::SetLastError(ERROR_SUCCESS);
    const DWORD length = call(buffer.data(), static_cast<DWORD>(buffer.size()));
    if (length == 0) return LastError();
    if (length < buffer.size()) return Narrow(std::wstring_view(buffer).substr(0, length));
    // GetModuleFileNameW says no size: its length is the buffer's then.
    buffer.resize(length > buffer.size() ? length : 2 * buffer.size());
  }
}

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
