// Gives the parts of an arrangement their places: pure arithmetic on sizes that a view measures.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "widgets/controls.h"
#include "widgets/layout.h"

namespace qb {

struct Extent {
  int width = 0, height = 0;
};

struct Box {
  int x = 0, y = 0, width = 0, height = 0;
  friend bool operator==(const Box&, const Box&) = default;
};

// Distances in the unit of the measurer (pixels, in a native view).
struct Spacing {
  int related = 0;        // between controls that belong together
  int separate = 0;       // round groups, tab strips and rows of buttons
  Extent group_border;    // at each side of a group, and below its last part
  int group_heading = 0;  // from the top of a group to its first part
  Extent tab_border;      // at each side of a page, and above and below its parts
};

class Measurer {
 public:
  virtual ~Measurer() = default;
  // The smallest size at which the control shows all of its text. For a frame, the size of its heading;
  // for a tab strip, that of its row of tabs.
  virtual Extent Smallest(const Control& control) const = 0;
  // The height that the control wants at a width that is not below its smallest.
  virtual int HeightAt(const Control& control, int width) const = 0;
};

struct PlacedControl {
  Control* control = nullptr;
  Box box;
  bool shown = true;  // false on a page that is not in front, or in a part that is not visible
};

// For one pass, in which nothing that it measures changes: a control is measured once, however often the arithmetic
// asks.
class Placement {
 public:
  // Keeps references to all three.
  Placement(const Layout& root, const Measurer& measurer, const Spacing& spacing)
      : root_(root), measurer_(measurer), spacing_(spacing) {}

  // The smallest area that holds every page.
  Extent Smallest() const;
  // True if a larger area is of use: some part stretches downwards.
  bool Grows() const { return StretchesDown(root_); }
  // Every control of the arrangement, in order. An area below the smallest is exceeded.
  std::vector<PlacedControl> Place(const Box& area) const;

 private:
  Extent Smallest(const Control& control) const;
  int HeightAt(const Control& control, int width) const;
  int WidthOf(const Layout& part) const;
  int HeightOf(const Layout& part, int width) const;
  int ColumnHeight(const Layout& column, int width) const;
  std::vector<int> RowWidths(const Layout& row, int width) const;
  int ColumnWidthOf(const Layout& column, const Layout& part, int width) const;
  int GapBetween(const Layout& before, const Layout& after) const;
  bool StretchesDown(const Layout& part) const;
  void PlacePart(const Layout& part, const Box& area, bool shown, std::vector<PlacedControl>& placed) const;
  void PlaceRow(const Layout& row, const Box& area, bool shown, std::vector<PlacedControl>& placed) const;
  void PlaceColumn(const Layout& column, const Box& area, bool shown, std::vector<PlacedControl>& placed) const;

  const Layout& root_;
  const Measurer& measurer_;
  const Spacing& spacing_;
  mutable std::map<const Control*, Extent> smallest_;
  mutable std::map<std::pair<const Control*, int>, int> heights_;
};

}  // namespace qb
