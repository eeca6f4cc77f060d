#include "runtime/filetime.h"

#include <gtest/gtest.h>

#include <array>

namespace qb {
namespace {

using Fields = std::array<int, 8>;

Fields FieldsOf(const SystemTime& time) {
  return {time.year, time.month, time.day_of_week, time.day, time.hour, time.minute, time.second, time.milliseconds};
}

SystemTime FromFields(const Fields& f) {
  auto field = [&f](std::size_t i) { return static_cast<std::uint16_t>(f[i]); };
  return {field(0), field(1), field(2), field(3), field(4), field(5), field(6), field(7)};
}

TEST(FileTime, AgreesWithTheCalendarInBothDirections) {
  const struct {
    std::uint64_t ticks;
    Fields fields;
  } kCases[] = {
      {0, {1601, 1, 1, 1, 0, 0, 0, 0}},
      {116444736000000000, {1970, 1, 4, 1, 0, 0, 0, 0}},
      {125963423990000000, {2000, 2, 2, 29, 23, 59, 59, 0}},
      {132038640001230000, {2019, 6, 6, 1, 12, 0, 0, 123}},
  };
  for (const auto& c : kCases) {
    const auto time = FileTimeToSystemTime({c.ticks});
    ASSERT_TRUE(time) << c.ticks;
    EXPECT_EQ(FieldsOf(*time), c.fields) << c.ticks;
    EXPECT_EQ(SystemTimeToFileTime(FromFields(c.fields)), FileTime{c.ticks});
  }
}

TEST(FileTime, RefusesWhatIsNoTime) {
  EXPECT_FALSE(FileTimeToSystemTime({0x8000000000000000}));
  EXPECT_TRUE(FileTimeToSystemTime({0x7FFFFFFFFFFFFFFF}));
  const Fields kRefused[] = {
      {1600, 12, 0, 31},         {30828, 1, 0, 1},
      {2019, 0, 0, 1},           {2019, 13, 0, 1},
      {1900, 2, 0, 29},          {2019, 1, 0, 0},
      {2019, 1, 0, 1, 24},       {2019, 1, 0, 1, 0, 60},
      {2019, 1, 0, 1, 0, 0, 60}, {2019, 1, 0, 1, 0, 0, 0, 1000},
  };
  for (const Fields& fields : kRefused)
    EXPECT_FALSE(SystemTimeToFileTime(FromFields(fields))) << ::testing::PrintToString(fields);
}

}  // namespace
}  // namespace qb
