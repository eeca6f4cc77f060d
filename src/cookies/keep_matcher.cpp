#include "cookies/keep_matcher.h"

namespace qb {

KeepMatcher::KeepMatcher(const std::vector<std::string>& rows) : nodes_(1) {
  for (const std::string& row : rows) {
    std::uint32_t node = 0;
    for (char c : row) {
      const auto [place, added] =
          nodes_[node].next.emplace(static_cast<unsigned char>(c), static_cast<std::uint32_t>(nodes_.size()));
      node = place->second;
      if (added) nodes_.emplace_back();
    }
    nodes_[node].ends_row = true;
  }
  // Breadth first, so that the fallback of a node is complete before its children ask for it.
  std::vector<std::uint32_t> order{0};
  for (std::size_t i = 0; i < order.size(); ++i) {
    const std::uint32_t parent = order[i];
    for (const auto& [byte, child] : nodes_[parent].next) {
      nodes_[child].fallback = parent == 0 ? 0 : Step(nodes_[parent].fallback, byte);
      nodes_[child].ends_row = nodes_[child].ends_row || nodes_[nodes_[child].fallback].ends_row;
      order.push_back(child);
    }
  }
}

std::uint32_t KeepMatcher::Step(std::uint32_t node, unsigned char byte) const {
  for (;;) {
    auto found = nodes_[node].next.find(byte);
    if (found != nodes_[node].next.end()) return found->second;
    if (node == 0) return 0;
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
