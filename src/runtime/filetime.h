// Between FILETIME and SYSTEMTIME: pure arithmetic on the Gregorian calendar, without any time zone.
#pragma once

#include <optional>

#include "platform/types.h"

namespace qb {

inline constexpr std::uint64_t kFileTimeTicksPerMillisecond = 10'000;
inline constexpr std::uint64_t kFileTimeTicksPerSecond = 1'000 * kFileTimeTicksPerMillisecond;

// Ticks below a millisecond are cut off. Nothing from 0x8000000000000000 ticks on, which Windows refuses too.
std::optional<SystemTime> FileTimeToSystemTime(FileTime time);
// Nothing if a field is out of its range, the day is not in the month, or the year is not one from 1601
// to 30827. The day of the week is not looked at.
std::optional<FileTime> SystemTimeToFileTime(const SystemTime& time);

}  // namespace qb
