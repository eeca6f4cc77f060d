// Whether a text holds any of many rows: all rows are looked for at once, in one walk over the text.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace qb {

class KeepMatcher {
 public:
  // The time is in the sum of the rows' lengths. Rows and texts are compared byte by byte; an empty row
  // stands in every text.
  explicit KeepMatcher(const std::vector<std::string>& rows);

  // The time is in the length of the text, whatever the number of rows.
  bool HitIn(std::string_view text) const;

 private:
  struct Node {
    std::map<unsigned char, std::uint32_t> next;
    std::uint32_t fallback = 0;  // the longest proper suffix that begins a row too
    bool ends_row = false;       // here, or at a suffix
  };
  std::uint32_t Step(std::uint32_t node, unsigned char byte) const;
  std::vector<Node> nodes_;
};

}  // namespace qb
