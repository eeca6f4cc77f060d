#include "kill/selection.h"

#include <algorithm>
#include <iterator>
#include <numeric>

#include "settings/settings.h"

namespace qb {

namespace {

// These are read strictly: a bad text leaves the value of the time before.
constexpr std::string_view kStrictlyRead[] = {"REGWindowsTemp", "REGFileFrag", "MSOfficeRecent"};

// Deliberate: these are written in another spelling than they are read in. Names of values know no case.
constexpr struct {
  std::string_view key, written;
} kWrittenAs[] = {{"Safari_SessionData", "Safari_Sessiondata"}, {"REGAOLhistory", "REGAOLHistory"}};

bool ReadStrictly(std::string_view key) {
  return std::find(std::begin(kStrictlyRead), std::end(kStrictlyRead), key) != std::end(kStrictlyRead);
}

std::size_t PlaceOf(const TraceClass& row) {
  return static_cast<std::size_t>(&row - TraceClasses().data());
}

}  // namespace

void Selection::Load() {
  for (const TraceClass& row : TraceClasses()) {
    if (row.key.empty()) continue;
    const std::string text = store_.Get(row.key, "0");
    std::int16_t& value = values_[PlaceOf(row)];
    value = ReadStrictly(row.key) ? StrictNumber(text).value_or(value) : TolerantNumber(text);
  }
}

std::int16_t Selection::Of(const TraceClass& row) const {
  return values_[PlaceOf(row)];
}

void Selection::Store(const TraceClass& row, std::int16_t value) {
  if (row.key.empty()) return;
  std::string_view key = row.key;
  for (const auto& other : kWrittenAs) {
    if (other.key == row.key) key = other.written;
  }
  values_[PlaceOf(row)] = value;
  StepOver(store_.Save(key, std::to_string(value)));
}

bool Selection::Anything() const {
  return std::accumulate(values_.begin(), values_.end(), std::int32_t{0}) != 0;
}

}  // namespace qb
