// Whether a text holds any of many rows: all rows are looked for at once, in one walk over the text.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qb {

class KeepMatcher {
 public:
  // The time and the memory are in the sum of the rows' lengths. Rows and texts are compared byte by byte;
  // an empty row stands in every text.
  explicit KeepMatcher(const std::vector<std::string>& rows);

  // The time is in the length of the text, whatever the number of rows.
  bool HitIn(std::string_view text) const;

 private:
  // A beginning that some rows share. Place 0 is the empty one, and as a link it means none.
  struct Node {
    std::uint32_t first_child = 0, next_sibling = 0;
    std::uint32_t fallback = 0;  // the longest proper suffix that begins a row too
    unsigned char byte = 0;      // the last one of the beginning
    bool ends_row = false;       // here, or at a suffix
  };
  std::uint32_t Child(std::uint32_t node, unsigned char byte) const;
  std::uint32_t AddedChild(std::uint32_t node, unsigned char byte);
  std::uint32_t Step(std::uint32_t node, unsigned char byte) const;

  std::vector<Node> nodes_;
  std::array<std::uint32_t, 256> first_bytes_{};  // the children of place 0, where most steps begin
};

}  // namespace qb
