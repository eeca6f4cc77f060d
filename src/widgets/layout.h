// How a form's controls are arranged: nested rows, columns, groups and tab pages, without coordinates.
// A view gives them places and sizes.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <vector>

namespace qb {

class Control;

struct Layout {
  enum class Kind {
    Single,  // one control
    Row,     // parts side by side
    Column,  // parts below one another
    Group,   // a frame (control) round a column of parts
    Tabs,    // a tab strip (control); part i is the page of tab i
    Page     // a column that is the page of a tab
  };
  Kind kind = Kind::Column;
  Control* control = nullptr;
  std::vector<Layout> parts;
  bool stretch = false;  // takes the space that is left over

  Layout() = default;
  Layout(Control& single) : kind(Kind::Single), control(&single) {}  // NOLINT(google-explicit-constructor)
  Layout(Kind k, Control* c, std::vector<Layout> p) : kind(k), control(c), parts(std::move(p)) {}
  Layout Stretched() && {
    stretch = true;
    return std::move(*this);
  }
};

inline Layout Row(std::vector<Layout> parts) {
  return {Layout::Kind::Row, nullptr, std::move(parts)};
}
inline Layout Column(std::vector<Layout> parts) {
  return {Layout::Kind::Column, nullptr, std::move(parts)};
}
// The parts in two columns of the same length, the first half on the left.
inline Layout TwoColumns(std::vector<Layout> parts) {
  const auto middle = parts.begin() + static_cast<std::ptrdiff_t>((parts.size() + 1) / 2);
  std::vector<Layout> right(std::make_move_iterator(middle), std::make_move_iterator(parts.end()));
  parts.erase(middle, parts.end());
  return Row({Column(std::move(parts)), Column(std::move(right))});
}
inline Layout Group(Control& frame, std::vector<Layout> parts) {
  return {Layout::Kind::Group, &frame, std::move(parts)};
}
inline Layout Page(std::vector<Layout> parts) {
  return {Layout::Kind::Page, nullptr, std::move(parts)};
}
inline Layout Tabs(Control& strip, std::vector<Layout> pages) {
  return {Layout::Kind::Tabs, &strip, std::move(pages)};
}

}  // namespace qb
