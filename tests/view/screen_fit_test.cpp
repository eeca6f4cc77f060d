#include "view/placement/screen_fit.h"

#include <gtest/gtest.h>

namespace qb {
namespace {

TEST(ScreenFitTest, BarsComeWhereTheContentIsLargerThanItsRoom) {
  const struct {
    const char* what;
    Extent content, area, view;
    bool across, down;
  } cases[] = {
      {"fits exactly", {100, 80}, {100, 80}, {100, 80}, false, false},
      {"smaller than its room", {60, 40}, {60, 40}, {60, 40}, false, false},
      {"too high, with room for the bar beside it", {60, 81}, {70, 80}, {60, 80}, false, true},
      {"too wide, with room for the bar below it", {101, 40}, {100, 48}, {100, 40}, true, false},
      {"the bar at the side takes the room that the width needed", {95, 81}, {100, 80}, {90, 72}, true, true},
      {"the bar at the foot takes the room that the height needed", {101, 75}, {100, 80}, {90, 72}, true, true},
      {"too large both ways", {500, 500}, {100, 80}, {90, 72}, true, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const ScreenFit fit = FitToRoom(c.content, {100, 80}, {10, 8});
    EXPECT_EQ(fit.scrolls_across, c.across);
    EXPECT_EQ(fit.scrolls_down, c.down);
    EXPECT_EQ(fit.area.width, c.area.width);
    EXPECT_EQ(fit.area.height, c.area.height);
    EXPECT_EQ(fit.view.width, c.view.width);
    EXPECT_EQ(fit.view.height, c.view.height);
  }
  EXPECT_EQ(FitToRoom({50, 50}, {5, 5}, {10, 8}).view.width, 0) << "a room that its bars fill";
}

TEST(ScreenFitTest, ScrollingStaysWithinTheContentAndMovesNoFurtherThanNeeded) {
  EXPECT_EQ(ScrollWithin(-5, 100, 40), 0);
  EXPECT_EQ(ScrollWithin(30, 100, 40), 30);
  EXPECT_EQ(ScrollWithin(90, 100, 40), 60);
  EXPECT_EQ(ScrollWithin(20, 30, 40), 0) << "the window was made larger than its content";

  EXPECT_EQ(ScrollToShow(20, 40, 25, 35), 20) << "in sight already";
  EXPECT_EQ(ScrollToShow(20, 40, 10, 15), 10) << "above";
  EXPECT_EQ(ScrollToShow(20, 40, 65, 70), 30) << "below";
  EXPECT_EQ(ScrollToShow(20, 40, 50, 120), 50) << "longer than the view";
}

}  // namespace
}  // namespace qb
