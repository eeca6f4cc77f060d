// The drawn progress bar, pixel by pixel.
#include "widgets/progress_drawing.h"

#include <gtest/gtest.h>

#include "tests/support/rehearsal.h"
#include "view/text/drawing.h"
#include "view/text/text_view.h"

namespace qb {
namespace {

constexpr Color kFull = 0x112233;

class Drawing : public ::testing::Test {
 protected:
  // The row in the middle: F for a pixel of a full block.
  static std::string MiddleRow(const PictureBox& box) {
    std::string row;
    for (int x = 0; x < box.Columns(); ++x) row += box.PixelAt(x, box.Rows() / 2) == kFull ? 'F' : '.';
    return row;
  }
  test::Rehearsal rehearsal_;
  TextView view_{rehearsal_.machine(), "test"};
  Lifetime life_;
  Form form_{{rehearsal_.machine().platform(), view_, life_}, "frmTest", "Test"};
  CProgressBar bar_;
};

TEST_F(Drawing, FitsWholeBlocksAndFillsTheirShare) {
  // 13 rows inside: blocks of 9 by 6, every 9 pixels.
  const struct {
    int outer_width;
    std::int32_t value;
    int blocks, filled;
  } cases[] = {{50, 0, 5, 0},   {50, 100, 5, 5}, {50, 50, 5, 2}, {50, 70, 5, 4},
               {53, 100, 5, 5}, {55, 100, 6, 6}, {4, 100, 0, 0}};
  for (const auto& c : cases) {
    PictureBox box(form_, "box", c.outer_width, 15, 1);
    CProgressBar bar;
    bar.SetForeColor(kFull);
    ASSERT_EQ(bar.SetCanvas(&box), std::nullopt);
    EXPECT_EQ(box.Columns(), c.blocks * 9 + 3) << c.outer_width;
    bar.SetValue(100);
    bar.SetValue(c.value);  // back again: what was filled is emptied
    std::string expected = "..";
    // A block reaches from its first pixel to the one behind its width.
    for (int i = 0; i < c.blocks; ++i) expected += i < c.filled ? "FFFFFFF.." : ".........";
    EXPECT_EQ(MiddleRow(box), expected + ".") << c.outer_width << " " << c.value;
    for (int x = 0; x < box.Columns(); ++x) {
      EXPECT_NE(box.PixelAt(x, 1), kFull);
      EXPECT_NE(box.PixelAt(x, 11), kFull);
    }
  }
}

TEST_F(Drawing, HoldsItsLimits) {
  PictureBox box(form_, "box", 50, 15, 1);
  Label label(form_, "label", "");
  const auto refused = bar_.SetCanvas(&label);
  ASSERT_TRUE(refused.has_value());
  EXPECT_EQ(refused->Number, 0x80040001u);
  EXPECT_EQ(refused->Source, "CProgressBar.Canvas");
  EXPECT_EQ(bar_.Canvas(), nullptr);
  bar_.SetValue(500);
  EXPECT_EQ(bar_.Value(), 100);
  bar_.SetValue(-5);
  EXPECT_EQ(bar_.Value(), 0);
  EXPECT_EQ(bar_.SetMin(100)->Number, 0x80040002u);
  EXPECT_EQ(bar_.SetMax(0)->Number, 0x80040003u);
  EXPECT_EQ(bar_.min(), 0);
  EXPECT_EQ(bar_.Max(), 100);
  // With a lower limit the bar runs ahead of the share, to the edge and not beyond.
  ASSERT_FALSE(bar_.SetMin(50).has_value());
  bar_.SetForeColor(kFull);
  ASSERT_FALSE(bar_.SetCanvas(&box).has_value());
  bar_.SetValue(50);
  EXPECT_EQ(MiddleRow(box).find("FFFFFFF..FFFFFFF..FFFFFFF..FFFFFFF..FFFFFFF"), 2u);
  bar_.SetValue(100);
  EXPECT_EQ(MiddleRow(box).find("FFFFFFF..FFFFFFF..FFFFFFF..FFFFFFF..FFFFFFF"), 2u);
  // New limits show at once.
  ASSERT_FALSE(bar_.SetMax(200).has_value() || bar_.SetMin(0).has_value());
  EXPECT_EQ(MiddleRow(box).find("FFFFFFF..FFFFFFF..........."), 2u);
}

TEST_F(Drawing, AWidthSetFromInsideDoesNotCallItselfAgain) {
  PictureBox box(form_, "box", 50, 15, 1);
  int resizes = 0;
  box.Resize = [&] {
    ASSERT_LT(++resizes, 5);
    bar_.Resize();
  };
  ASSERT_FALSE(bar_.SetCanvas(&box).has_value());
  EXPECT_EQ(resizes, 0);
  box.SetWidth(100 * PictureBox::kTwipsPerPixel);
  EXPECT_EQ(resizes, 2);
  EXPECT_EQ(box.Columns() % 9, 3);
  // Too low for any block.
  PictureBox low(form_, "low", 50, 4, 0);
  ASSERT_FALSE(bar_.SetCanvas(&low).has_value());
  bar_.SetValue(100);
}

TEST_F(Drawing, TheTextViewShowsIt) {
  PictureBox box(form_, "box", 50, 15, 1);
  ASSERT_FALSE(bar_.SetCanvas(&box).has_value());
  bar_.SetValue(60);
  EXPECT_NE(Draw(form_).find("[## # ##     ]"), std::string::npos) << Draw(form_);
}

}  // namespace
}  // namespace qb
