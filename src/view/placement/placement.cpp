#include "view/placement/placement.h"

#include <algorithm>
#include <numeric>

namespace qb {

namespace {

using Kind = Layout::Kind;

bool IsSingle(const Layout& part, ControlKind kind) {
  return part.kind == Kind::Single && part.control->kind() == kind;
}

// A part that is not visible takes no room.
bool TakesRoom(const Layout& part) {
  if (part.control != nullptr && !part.control->Visible()) return false;
  if (part.kind == Kind::Row || part.kind == Kind::Column || part.kind == Kind::Page) {
    return std::any_of(part.parts.begin(), part.parts.end(), TakesRoom);
  }
  return part.control == nullptr ||
         (part.control->kind() != ControlKind::Timer && part.control->kind() != ControlKind::MenuItem);
}

std::vector<const Layout*> PartsWithRoom(const Layout& part) {
  std::vector<const Layout*> parts;
  for (const Layout& child : part.parts) {
    if (TakesRoom(child)) parts.push_back(&child);
  }
  return parts;
}

bool AllButtons(const Layout& part) {
  return !part.parts.empty() && std::all_of(part.parts.begin(), part.parts.end(),
                                            [](const Layout& child) { return IsSingle(child, ControlKind::Button); });
}

// Parts that look better the wider they are.
bool LikesWidth(const Layout& part) {
  if (part.kind != Kind::Single) return !AllButtons(part);
  switch (part.control->kind()) {
    case ControlKind::ListBox:
    case ControlKind::TextBox:
    case ControlKind::ProgressBar:
      return true;
    default:
      return false;
  }
}

bool IsContainer(const Layout& part) {
  return part.kind != Kind::Single;
}

// What is to be set off from its neighbours.
bool SetsApart(const Layout& part) {
  switch (part.kind) {
    case Kind::Group:
    case Kind::Tabs:
      return true;
    case Kind::Row:
    case Kind::Column:
    case Kind::Page:
      return AllButtons(part) || std::any_of(part.parts.begin(), part.parts.end(), SetsApart);
    case Kind::Single:
      return false;
  }
  return false;
}

}  // namespace

Extent Placement::Smallest(const Control& control) const {
  const auto [kept, is_new] = smallest_.try_emplace(&control);
  if (is_new) kept->second = measurer_.Smallest(control);
  return kept->second;
}

int Placement::HeightAt(const Control& control, int width) const {
  const auto [kept, is_new] = heights_.try_emplace({&control, width});
  if (is_new) kept->second = measurer_.HeightAt(control, width);
  return kept->second;
}

bool Placement::StretchesDown(const Layout& part) const {
  if (!TakesRoom(part)) return false;
  if (part.kind == Kind::Single) return part.control->kind() == ControlKind::ListBox;
  const bool downwards = part.kind == Kind::Column || part.kind == Kind::Page || part.kind == Kind::Group;
  return std::any_of(part.parts.begin(), part.parts.end(),
                     [&](const Layout& child) { return (downwards && child.stretch) || StretchesDown(child); });
}

int Placement::GapBetween(const Layout& before, const Layout& after) const {
  return SetsApart(before) || SetsApart(after) ? spacing_.separate : spacing_.related;
}

int Placement::WidthOf(const Layout& part) const {
  int widest = 0;
  int sum = 0;
  const Layout* before = nullptr;
  for (const Layout* child : PartsWithRoom(part)) {
    const int width = WidthOf(*child);
    widest = std::max(widest, width);
    sum += width + (before != nullptr ? GapBetween(*before, *child) : 0);
    before = child;
  }
  switch (part.kind) {
    case Kind::Single:
      return Smallest(*part.control).width;
    case Kind::Row:
      return sum;
    case Kind::Group:
      return std::max(widest, Smallest(*part.control).width) + 2 * spacing_.group_border.width;
    case Kind::Tabs:
      return std::max(widest + 2 * spacing_.tab_border.width, Smallest(*part.control).width);
    case Kind::Column:
    case Kind::Page:
      return widest;
  }
  return widest;
}

std::vector<int> Placement::RowWidths(const Layout& row, int width) const {
  const std::vector<const Layout*> parts = PartsWithRoom(row);
  const bool told = std::any_of(parts.begin(), parts.end(), [](const Layout* part) { return part->stretch; });
  std::vector<int> widths;
  std::vector<std::size_t> stretching;
  int left = width;
  bool alike = true;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    widths.push_back(WidthOf(*parts[i]));
    left -= widths.back() + (i > 0 ? GapBetween(*parts[i - 1], *parts[i]) : 0);
    if (told ? parts[i]->stretch : LikesWidth(*parts[i])) {
      stretching.push_back(i);
      alike = alike && IsContainer(*parts[i]);
    }
  }
  if (stretching.empty() || left <= 0) return widths;
  // Containers side by side get the same width where their content allows it.
  const int count = static_cast<int>(stretching.size());
  int shared = left;
  for (std::size_t i : stretching) shared += widths[i];
  const bool equal = alike && std::all_of(stretching.begin(), stretching.end(),
                                          [&](std::size_t i) { return widths[i] <= shared / count; });
  for (std::size_t i : stretching) widths[i] = equal ? shared / count : widths[i] + left / count;
  return widths;
}

int Placement::ColumnWidthOf(const Layout& column, const Layout& part, int width) const {
  if (IsContainer(part) || AllButtons(column) || LikesWidth(part) || IsSingle(part, ControlKind::Label)) return width;
  return std::min(width, WidthOf(part));
}

int Placement::HeightOf(const Layout& part, int width) const {
  if (part.kind == Kind::Single) return HeightAt(*part.control, width);
  const std::vector<const Layout*> parts = PartsWithRoom(part);
  if (part.kind == Kind::Row) {
    const std::vector<int> widths = RowWidths(part, width);
    int highest = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) highest = std::max(highest, HeightOf(*parts[i], widths[i]));
    return highest;
  }
  if (part.kind == Kind::Tabs) {
    // Of all pages, not of the one in front: the window keeps its size when the user turns pages.
    int highest = 0;
    for (const Layout& page : part.parts) {
      highest = std::max(highest, HeightOf(page, width - 2 * spacing_.tab_border.width));
    }
    return highest + 2 * spacing_.tab_border.height + Smallest(*part.control).height;
  }
  if (part.kind != Kind::Group) return ColumnHeight(part, width);
  return spacing_.group_heading + spacing_.group_border.height +
         ColumnHeight(part, width - 2 * spacing_.group_border.width);
}

int Placement::ColumnHeight(const Layout& column, int width) const {
  int height = 0;
  const Layout* before = nullptr;
  for (const Layout* child : PartsWithRoom(column)) {
    height += HeightOf(*child, ColumnWidthOf(column, *child, width));
    if (before != nullptr) height += GapBetween(*before, *child);
    before = child;
  }
  return height;
}

Extent Placement::Smallest() const {
  const int width = WidthOf(root_);
  return {width, HeightOf(root_, width)};
}

std::vector<PlacedControl> Placement::Place(const Box& area) const {
  std::vector<PlacedControl> placed;
  PlacePart(root_, area, true, placed);
  return placed;
}

void Placement::PlacePart(const Layout& part, const Box& area, bool shown, std::vector<PlacedControl>& placed) const {
  if (part.control != nullptr) {
    shown = shown && part.control->Visible();
    placed.push_back({part.control, area, shown});
  }
  switch (part.kind) {
    case Kind::Single:
      return;
    case Kind::Row:
      return PlaceRow(part, area, shown, placed);
    case Kind::Column:
    case Kind::Page:
      return PlaceColumn(part, area, shown, placed);
    case Kind::Group:
      return PlaceColumn(part,
                         {area.x + spacing_.group_border.width, area.y + spacing_.group_heading,
                          area.width - 2 * spacing_.group_border.width,
                          area.height - spacing_.group_heading - spacing_.group_border.height},
                         shown, placed);
    case Kind::Tabs: {
      // NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker): tabs always have their strip
      const int heading = Smallest(*part.control).height;
      const Extent border = spacing_.tab_border;
      const Box page{area.x + border.width, area.y + heading + border.height, area.width - 2 * border.width,
                     area.height - heading - 2 * border.height};
      const int front = static_cast<const TabStrip&>(*part.control).Tab();
      for (std::size_t i = 0; i < part.parts.size(); ++i) {
        PlacePart(part.parts[i], page, shown && static_cast<int>(i) == front, placed);
      }
      return;
    }
  }
}

void Placement::PlaceRow(const Layout& row, const Box& area, bool shown, std::vector<PlacedControl>& placed) const {
  const std::vector<int> widths = RowWidths(row, area.width);
  int x = area.x;
  // Command buttons stand at the right end of their row.
  if (AllButtons(row)) x += std::max(0, area.width - WidthOf(row));
  std::size_t next = 0;
  const Layout* before = nullptr;
  for (const Layout& part : row.parts) {
    if (!TakesRoom(part)) {
      PlacePart(part, {}, false, placed);
      continue;
    }
    if (before != nullptr) x += GapBetween(*before, part);
    before = &part;
    Box box{x, area.y, widths[next], area.height};
    if (!StretchesDown(part) && part.kind != Kind::Group) {
      box.height = std::min(area.height, HeightOf(part, box.width));
      // Buttons between two lists act on both, so they stand at the middle of them.
      if (part.kind == Kind::Single || AllButtons(part)) box.y += (area.height - box.height) / 2;
    }
    PlacePart(part, box, shown, placed);
    x += widths[next++];
  }
}

void Placement::PlaceColumn(const Layout& column, const Box& area, bool shown,
                            std::vector<PlacedControl>& placed) const {
  const std::vector<const Layout*> parts = PartsWithRoom(column);
  auto stretches = [&](const Layout& part) { return part.stretch || StretchesDown(part); };
  const int stretching =
      static_cast<int>(std::count_if(parts.begin(), parts.end(), [&](auto* p) { return stretches(*p); }));
  const int wanted = ColumnHeight(column, area.width);
  const int extra = stretching > 0 ? std::max(0, area.height - wanted) / stretching : 0;
  int y = area.y;
  const Layout* before = nullptr;
  for (const Layout& part : column.parts) {
    if (!TakesRoom(part)) {
      PlacePart(part, {}, false, placed);
      continue;
    }
    if (before != nullptr) y += GapBetween(*before, part);
    before = &part;
    const int width = ColumnWidthOf(column, part, area.width);
    const int height = HeightOf(part, width) + (stretches(part) ? extra : 0);
    PlacePart(part, {area.x, y, width, height}, shown, placed);
    y += height;
  }
}

}  // namespace qb
