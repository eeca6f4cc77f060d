#include "cookies/keep_matcher.h"

namespace qb {

KeepMatcher::KeepMatcher(const std::vector<std::string>& rows) : nodes_(1) {
  for (const std::string& row : rows) {
    std::uint32_t node = 0;
    for (char c : row) node = AddedChild(node, static_cast<unsigned char>(c));
    nodes_[node].ends_row = true;
  }
  // Breadth first, so that the fallback of a node is complete before its children ask for it.
  std::vector<std::uint32_t> order{0};
  for (std::size_t i = 0; i < order.size(); ++i) {
    const std::uint32_t parent = order[i];
    for (std::uint32_t child = nodes_[parent].first_child; child != 0; child = nodes_[child].next_sibling) {
      nodes_[child].fallback = parent == 0 ? 0 : Step(nodes_[parent].fallback, nodes_[child].byte);
      nodes_[child].ends_row = nodes_[child].ends_row || nodes_[nodes_[child].fallback].ends_row;
      order.push_back(child);
    }
  }
}

std::uint32_t KeepMatcher::Child(std::uint32_t node, unsigned char byte) const {
  if (node == 0) return first_bytes_[byte];
  std::uint32_t child = nodes_[node].first_child;
  while (child != 0 && nodes_[child].byte != byte) child = nodes_[child].next_sibling;
  return child;
}

std::uint32_t KeepMatcher::AddedChild(std::uint32_t node, unsigned char byte) {
  if (const std::uint32_t child = Child(node, byte); child != 0) return child;
  const auto added = static_cast<std::uint32_t>(nodes_.size());
  nodes_.push_back({.next_sibling = nodes_[node].first_child, .byte = byte});
  nodes_[node].first_child = added;
  if (node == 0) first_bytes_[byte] = added;
  return added;
}

std::uint32_t KeepMatcher::Step(std::uint32_t node, unsigned char byte) const {
  for (;;) {
    const std::uint32_t child = Child(node, byte);
    if (child != 0 || node == 0) return child;
    node = nodes_[node].fallback;
  }
}

bool KeepMatcher::HitIn(std::string_view text) const {
  std::uint32_t node = 0;
  if (nodes_[node].ends_row) return true;
  for (char c : text) {
    node = Step(node, static_cast<unsigned char>(c));
    if (nodes_[node].ends_row) return true;
  }
  return false;
}

}  // namespace qb
