#include "runtime/currency.h"

#include <gtest/gtest.h>

#include <limits>

namespace qb {
namespace {

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();

TEST(Currency, TextIsShortestAndExact) {
  const struct {
    std::int64_t scaled;
    const char* text;
  } kCases[] = {
      {0, "0"},
      {10000, "1"},
      {15000, "1.5"},
      {10230000, "1023"},
      {1, "0.0001"},
      {-1, "-0.0001"},
      {100500, "10.05"},
      {-15000, "-1.5"},
      {kMost, "922337203685477.5807"},
      {kLeast, "-922337203685477.5808"},
  };
  for (const auto& c : kCases) EXPECT_EQ(Currency::FromScaled(c.scaled).Text(), c.text);
}

TEST(Currency, TakesDoublesByRoundingHalfToEvenAndRefusesWhatItCannotHold) {
  EXPECT_EQ(Currency::FromDouble(1.0 / 32)->Scaled(), 312);    // 312.5
  EXPECT_EQ(Currency::FromDouble(-3.0 / 32)->Scaled(), -938);  // -937.5
  EXPECT_FALSE(Currency::FromDouble(922337203685478.0));
  EXPECT_FALSE(Currency::FromDouble(std::numeric_limits<double>::quiet_NaN()));
  EXPECT_TRUE(Currency::FromInteger(922337203685477));
  EXPECT_FALSE(Currency::FromInteger(922337203685478));
  EXPECT_FALSE(Currency::FromInteger(std::numeric_limits<std::uint64_t>::max()));
}

TEST(Currency, SumsStopAtTheEndsOfTheRange) {
  const struct {
    std::int64_t a, b, sum;
  } kCases[] = {
      {1, 2, 3},           {kMost, -1, kMost - 1}, {kMost - 1, 2, kMost}, {kMost, kMost, kMost}, {kLeast, -1, kLeast},
      {kLeast, kMost, -1},
  };
  for (const auto& c : kCases) {
    Currency sum = Currency::FromScaled(c.a);
    sum += Currency::FromScaled(c.b);
    EXPECT_EQ(sum.Scaled(), c.sum) << c.a << " + " << c.b;
  }
}

}  // namespace
}  // namespace qb
