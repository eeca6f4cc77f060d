// A 64-bit fixed-point number with four decimals: the sizes of files, folders and drives.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace qb {

class Currency {
 public:
  static constexpr std::int64_t kScale = 10000;

  constexpr Currency() = default;
  // From ten-thousandths: 15000 is 1.5.
  static constexpr Currency FromScaled(std::int64_t scaled) { return Currency(scaled); }
  static constexpr Currency Highest() { return Currency(std::numeric_limits<std::int64_t>::max()); }
  // Nothing above 922,337,203,685,477, which is some 839 TB.
  static constexpr std::optional<Currency> FromInteger(std::uint64_t whole) {
    if (whole > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max() / kScale)) return std::nullopt;
    return Currency(static_cast<std::int64_t>(whole) * kScale);
  }
  // Rounds half to even at the fourth decimal. Nothing for a number out of range or none at all.
  static std::optional<Currency> FromDouble(double number);

  constexpr std::int64_t Scaled() const { return scaled_; }
  // Exact up to some 900,000,000,000 with decimals, and to any whole number of the range.
  double ToDouble() const;
  // The shortest decimal text, as "1.5" or "1023".
  std::string Text() const;

  friend constexpr bool operator==(Currency, Currency) = default;
  friend constexpr bool operator<(Currency a, Currency b) { return a.scaled_ < b.scaled_; }
  // The sum stays at Highest where it would go past it.
  Currency& operator+=(Currency other);

 private:
  explicit constexpr Currency(std::int64_t scaled) : scaled_(scaled) {}

  std::int64_t scaled_ = 0;
};

}  // namespace qb
