#include "view/placement/screen_fit.h"

#include <algorithm>

namespace qb {

ScreenFit FitToRoom(Extent content, Extent room, Extent bars) {
  ScreenFit fit;
  fit.scrolls_down = content.height > room.height;
  fit.scrolls_across = content.width > room.width - (fit.scrolls_down ? bars.width : 0);
  // The bar at the foot may be what makes the one at the side needed, and that one the other.
  fit.scrolls_down = content.height > room.height - (fit.scrolls_across ? bars.height : 0);
  fit.scrolls_across = content.width > room.width - (fit.scrolls_down ? bars.width : 0);

  const Extent taken{fit.scrolls_down ? bars.width : 0, fit.scrolls_across ? bars.height : 0};
  fit.area = {std::min(content.width + taken.width, room.width), std::min(content.height + taken.height, room.height)};
  fit.view = {std::max(0, fit.area.width - taken.width), std::max(0, fit.area.height - taken.height)};
  return fit;
}

int ScrollWithin(int offset, int content, int view) {
  return std::clamp(offset, 0, std::max(0, content - view));
}

int ScrollToShow(int offset, int view, int begin, int end) {
  if (begin < offset || end - begin > view) return begin;
  return std::max(offset, end - view);
}

}  // namespace qb
