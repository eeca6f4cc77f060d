// What a window does when its content is larger than its room: pure arithmetic, in the unit of the view.
#pragma once

#include "view/placement/placement.h"

namespace qb {

struct ScreenFit {
  // The area with the scroll bars: the content, or as much of it as there is room for.
  Extent area;
  // The part of the content that is in sight.
  Extent view;
  bool scrolls_across = false, scrolls_down = false;
};

// `room` is the largest area that there is. `bars` holds the width of a bar that scrolls down and the height
// of one that scrolls across: each takes room from the other direction.
ScreenFit FitToRoom(Extent content, Extent room, Extent bars);

// The nearest place to `offset` at which no more than the content is scrolled past.
int ScrollWithin(int offset, int content, int view);

// The nearest place to `offset` at which what stands from `begin` to `end` of the content is in sight; of
// what is longer than the view, its beginning.
int ScrollToShow(int offset, int view, int begin, int end);

}  // namespace qb
