#include "runtime/currency.h"

#include <cmath>

namespace qb {

std::optional<Currency> Currency::FromDouble(double number) {
  // 2^63 is the first double past the range; nearbyint rounds half to even in the default rounding mode.
  constexpr double kPastRange = 9223372036854775808.0;
  const double scaled = std::nearbyint(number * kScale);
  if (!(scaled >= -kPastRange && scaled < kPastRange)) return std::nullopt;
  return Currency(static_cast<std::int64_t>(scaled));
}

double Currency::ToDouble() const {
  // In two parts, since the ten-thousandths of a large whole number need more than the 53 bits of a double.
  const std::int64_t whole = scaled_ / kScale, rest = scaled_ % kScale;
  return static_cast<double>(whole) + static_cast<double>(rest) / static_cast<double>(kScale);
}

std::string Currency::Text() const {
  // Unsigned, since the lowest number has no positive counterpart.
  const auto bits = static_cast<std::uint64_t>(scaled_);
  const std::uint64_t magnitude = scaled_ < 0 ? std::uint64_t{0} - bits : bits;
  std::string text = std::to_string(magnitude / kScale);
  if (magnitude % kScale != 0) {
    const std::string decimals = std::to_string(kScale + magnitude % kScale).substr(1);
    text += "." + decimals.substr(0, decimals.find_last_not_of('0') + 1);
  }
  return scaled_ < 0 ? "-" + text : text;
}

Currency& Currency::operator+=(Currency other) {
  const std::int64_t room = std::numeric_limits<std::int64_t>::max() - (scaled_ > 0 ? scaled_ : 0);
  const std::int64_t lowest = std::numeric_limits<std::int64_t>::min() - (scaled_ < 0 ? scaled_ : 0);
  if (scaled_ > 0 && other.scaled_ > room) {
    scaled_ = std::numeric_limits<std::int64_t>::max();
  } else if (scaled_ < 0 && other.scaled_ < lowest) {
    scaled_ = std::numeric_limits<std::int64_t>::min();
  } else {
    scaled_ += other.scaled_;
  }
  return *this;
}

}  // namespace qb
