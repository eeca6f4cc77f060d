#include "view/placement/placement.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/rehearsal.h"
#include "view/text/text_view.h"

namespace qb {
namespace {

// Every letter is 10 by 10; a label is broken into lines that are as wide as its place. A list is 50 by 50.
class Letters : public Measurer {
 public:
  Extent Smallest(const Control& control) const override {
    switch (control.kind()) {
      case ControlKind::ListBox:
        return {50, 50};
      case ControlKind::TabStrip:
        return {120, 20};
      default:
        return {std::min(Length(control), 200), HeightAt(control, 200)};
    }
  }
  int HeightAt(const Control& control, int width) const override {
    if (control.kind() == ControlKind::ListBox) return 50;
    return std::max(1, (Length(control) + width - 1) / width) * 10;
  }

 private:
  static int Length(const Control& control) { return static_cast<int>(control.Caption().size()) * 10; }
};

class DemoForm : public Form {
 public:
  using Form::Add;
  using Form::Form;
};

class PlacementTest : public ::testing::Test {
 protected:
  template <typename T>
  T& Make(const std::string& caption) {
    return form_.Add<T>("c" + std::to_string(form_.Controls().size()), caption);
  }
  ListBox& MakeList() { return form_.Add<ListBox>("list"); }
  Placement Of(const Layout& layout) const { return {layout, letters_, spacing_}; }
  PlacedControl PlaceOf(const Control& control, const Layout& layout, const Box& area) const {
    for (const PlacedControl& placed : Of(layout).Place(area)) {
      if (placed.control == &control) return placed;
    }
    ADD_FAILURE() << control.name() << " has no place";
    return {};
  }

  test::Rehearsal rehearsal_;
  TextView view_{rehearsal_.machine(), "Demo program"};
  Lifetime life_;
  DemoForm form_{FormHost{rehearsal_.machine().platform(), view_, life_}, "frmDemo", "Demo"};
  const Letters letters_{};
  const Spacing spacing_{4, 8, {6, 6}, 16, {6, 6}};
};

TEST_F(PlacementTest, AWindowIsAsLargeAsItsLargestPageWhicheverIsInFront) {
  auto& tabs = form_.Add<TabStrip>("tabs", std::vector<TabStrip::Page>{{"one", ""}, {"two", ""}});
  auto& wide = Make<CheckBox>(std::string(15, 'w'));
  auto& high = Make<CheckBox>("a");
  auto& higher = Make<CheckBox>("b");
  const Layout layout = Tabs(tabs, {Page({wide}), Page({high, higher})});
  for (int front : {0, 1}) {
    ASSERT_TRUE(tabs.SetTab(front));
    const Extent smallest = Of(layout).Smallest();
    EXPECT_EQ(smallest.width, 150 + 2 * 6);
    EXPECT_EQ(smallest.height, 20 + 2 * 6 + 10 + 4 + 10);
    const Box area{0, 0, smallest.width, smallest.height};
    EXPECT_EQ(PlaceOf(wide, layout, area).shown, front == 0);
    EXPECT_EQ(PlaceOf(higher, layout, area).shown, front == 1);
    EXPECT_EQ(PlaceOf(high, layout, area).box, (Box{6, 26, 10, 10}));
    EXPECT_EQ(PlaceOf(higher, layout, area).box, (Box{6, 40, 10, 10}));
  }
}

TEST_F(PlacementTest, WhatIsNotVisibleTakesNoRoom) {
  auto& above = Make<CheckBox>("a");
  auto& frame = Make<Frame>("frame");
  auto& inside = Make<CheckBox>("i");
  auto& below = Make<CheckBox>("b");
  const Layout layout = Column({above, Group(frame, {inside}), below});
  EXPECT_EQ(PlaceOf(below, layout, {0, 0, 100, 100}).box.y, 10 + 8 + (16 + 10 + 6) + 8);
  EXPECT_EQ(PlaceOf(inside, layout, {0, 0, 100, 100}).box, (Box{6, 34, 10, 10}));
  frame.SetVisible(false);
  EXPECT_EQ(PlaceOf(below, layout, {0, 0, 100, 100}).box.y, 10 + 4);
  EXPECT_FALSE(PlaceOf(inside, layout, {0, 0, 100, 100}).shown);
}

TEST_F(PlacementTest, ColumnsSideBySideShareTheWidthIfTheirContentAllows) {
  auto& left = Make<CheckBox>("ab");
  auto& right = Make<CheckBox>("abcdef");
  const Layout layout = Row({Column({left}), Column({right})});
  EXPECT_EQ(PlaceOf(right, layout, {0, 0, 204, 50}).box.x, 104);
  // The right one needs more than half of it: then what is left over is halved.
  EXPECT_EQ(PlaceOf(right, layout, {0, 0, 104, 50}).box.x, 30 + 4);
}

TEST_F(PlacementTest, AListTakesTheRoomThatIsLeftAndButtonsStandAtTheRight) {
  auto& list = MakeList();
  auto& ok = Make<Button>("ok");
  auto& no = Make<Button>("no");
  const Layout layout = Column({list, Row({ok, no})});
  EXPECT_TRUE(Of(layout).Grows());
  EXPECT_FALSE(Of(Column({Row({ok, no})})).Grows());
  const Box area{0, 0, 300, 200};
  EXPECT_EQ(PlaceOf(list, layout, area).box, (Box{0, 0, 300, 200 - 8 - 10}));
  EXPECT_EQ(PlaceOf(no, layout, area).box, (Box{280, 190, 20, 10}));
  EXPECT_EQ(PlaceOf(ok, layout, area).box, (Box{256, 190, 20, 10}));
}

TEST_F(PlacementTest, ButtonsBetweenListsStandAtTheMiddle) {
  auto& list = MakeList();
  auto& to = Make<Button>("to");
  auto& fro = Make<Button>("fro");
  auto& box = Make<CheckBox>("b");
  const Layout layout = Row({list, Column({to, fro}), Column({box})});
  const Box area{0, 0, 300, 124};
  EXPECT_EQ(PlaceOf(list, layout, area).box.height, 124);
  EXPECT_EQ(PlaceOf(to, layout, area).box.y, 50);
  EXPECT_EQ(PlaceOf(fro, layout, area).box.y, 64);
  EXPECT_EQ(PlaceOf(box, layout, area).box.y, 0);
}

TEST_F(PlacementTest, ALongTextTakesFewerLinesWhereThereIsRoom) {
  auto& text = Make<Label>(std::string(39, 't'));
  auto& below = Make<CheckBox>("b");
  const Layout layout = Column({text, below});
  EXPECT_EQ(Of(layout).Smallest().width, 200);
  EXPECT_EQ(PlaceOf(below, layout, {0, 0, 200, 90}).box.y, 20 + 4);
  EXPECT_EQ(PlaceOf(below, layout, {0, 0, 400, 90}).box.y, 10 + 4);
}

}  // namespace
}  // namespace qb
