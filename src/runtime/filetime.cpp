#include "runtime/filetime.h"

#include <chrono>

namespace qb {

namespace {

constexpr std::uint64_t kMillisecondsPerDay = 86'400'000;
constexpr std::chrono::sys_days kFirstDay = std::chrono::year(1601) / 1 / 1;

}  // namespace

std::optional<SystemTime> FileTimeToSystemTime(FileTime time) {
  if (time.ticks >= 0x8000000000000000) return std::nullopt;
  const std::uint64_t milliseconds = time.ticks / kFileTimeTicksPerMillisecond;
  const std::chrono::sys_days day = kFirstDay + std::chrono::days(milliseconds / kMillisecondsPerDay);
  const std::chrono::year_month_day date = day;
  const std::uint64_t in_day = milliseconds % kMillisecondsPerDay;

  SystemTime result;
  result.year = static_cast<std::uint16_t>(static_cast<int>(date.year()));
  result.month = static_cast<std::uint16_t>(static_cast<unsigned>(date.month()));
  result.day = static_cast<std::uint16_t>(static_cast<unsigned>(date.day()));
  result.day_of_week = static_cast<std::uint16_t>(std::chrono::weekday(day).c_encoding());
  result.hour = static_cast<std::uint16_t>(in_day / 3'600'000);
  result.minute = static_cast<std::uint16_t>(in_day / 60'000 % 60);
  result.second = static_cast<std::uint16_t>(in_day / 1000 % 60);
  result.milliseconds = static_cast<std::uint16_t>(in_day % 1000);
  return result;
}

std::optional<FileTime> SystemTimeToFileTime(const SystemTime& time) {
  const std::chrono::year_month_day date = std::chrono::year(time.year) / time.month / time.day;
  if (time.year < 1601 || time.year > 30827 || !date.ok()) return std::nullopt;
  if (time.hour > 23 || time.minute > 59 || time.second > 59 || time.milliseconds > 999) return std::nullopt;
  const auto days = static_cast<std::uint64_t>((std::chrono::sys_days(date) - kFirstDay).count());
  const std::uint64_t seconds = ((days * 24 + time.hour) * 60 + time.minute) * 60 + time.second;
  return FileTime{seconds * kFileTimeTicksPerSecond + time.milliseconds * kFileTimeTicksPerMillisecond};
}

}  // namespace qb
