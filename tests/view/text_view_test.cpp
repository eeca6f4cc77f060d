#include "view/text/text_view.h"

#include <gtest/gtest.h>

#include "tests/app/demo_program.h"
#include "tests/app/temp_folder.h"
#include "view/text/drawing.h"

namespace qb {
namespace {

class TextViewTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string problem;
    machine_ = machine::Machine::Open((folder_.path() / "machine").string(), problem);
    ASSERT_NE(machine_, nullptr) << problem;
    view_ = std::make_unique<TextView>(*machine_, "Demo program");
  }
  Desktop& desktop() { return machine_->platform().desktop; }
  Pump& pump() { return machine_->platform().pump; }

  test::TempFolder folder_;
  std::unique_ptr<machine::Machine> machine_;
  std::unique_ptr<TextView> view_;
  Lifetime life_;
};

TEST_F(TextViewTest, MainFormStandsDirectlyAboveTheOwnerWindow) {
  test::DemoMain main({machine_->platform(), *view_, life_});
  main.Load();
  main.options.Load();
  WindowHandle owner = desktop().FindWindowA("ThunderRT6Main", "Demo program");
  ASSERT_EQ(owner, view_->ApplicationWindow());
  EXPECT_EQ(desktop().GetWindow(owner, kWindowPrevious), main.Window());
  main.options.Show();
  EXPECT_EQ(desktop().GetWindow(owner, kWindowPrevious), main.Window());
  main.Show();
  EXPECT_EQ(desktop().GetWindow(owner, kWindowPrevious), main.Window());
  EXPECT_EQ(view_->FrontToBack(), (std::vector<Form*>{&main, &main.options}));
  // A hidden window is never the front one.
  main.Hide();
  EXPECT_EQ(view_->FrontToBack(), (std::vector<Form*>{&main.options, &main}));
}

TEST_F(TextViewTest, OutsideShowsRestoresAndCloses) {
  test::DemoMain main({machine_->platform(), *view_, life_});
  main.Load();
  main.SetState(WindowState::Minimised);
  desktop().ShowWindow(main.Window(), kShowNormal);
  EXPECT_TRUE(main.Visible());
  EXPECT_EQ(main.State(), WindowState::Normal);
  StepOver(pump().PostMessageA(main.Window(), kMessageClose, 0, 0));
  pump().PumpMessages();
  EXPECT_EQ(main.asked, std::vector{UnloadMode::ControlMenu});
  EXPECT_FALSE(main.Visible());
  WindowHandle window = main.Window();
  main.Unload();
  EXPECT_EQ(desktop().FindWindowA("ThunderRT6FormDC", "Demo"), WindowHandle::None);
  EXPECT_FALSE(desktop().ShowWindow(window, kShowNormal));
}

TEST_F(TextViewTest, Drawing) {
  test::DemoMain main({machine_->platform(), *view_, life_});
  main.Show();
  main.box.SetValue(1);
  main.shared.SetVisible(false);
  EXPECT_EQ(Draw(main),
            "+- Demo ----------------------------+\n"
            "| File                              |\n"
            "| [First]  Second                   |\n"
            "| +-------------------------------+ |\n"
            "| | [x] A box  [ ] Off (disabled) | |\n"
            "| | +- Kind ------------+         | |\n"
            "| | | ( ) First         |         | |\n"
            "| | | (*) Second & last |         | |\n"
            "| | +-------------------+         | |\n"
            "| | [ Run ]  [ Modal ]            | |\n"
            "| +-------------------------------+ |\n"
            "+-----------------------------------+\n");
  main.tabs.UserPick(1);
  for (int i = 0; i < 30; ++i) main.status.AddItem("entry " + std::to_string(i));
  ASSERT_TRUE(main.status.SetListIndex(25));
  ASSERT_TRUE(main.combo.SetListIndex(1));
  ASSERT_TRUE(main.bar.SetValue(50));
  std::string drawn = Draw(main);
  for (const char* part :
       {"> entry 25", "  entry 6 ", "30 entries", "[1 Hour ", "####....", "] 50/100", "<A page>", " First  [Second]"}) {
    EXPECT_NE(drawn.find(part), std::string::npos) << part << "\n" << drawn;
  }
  for (const char* part : {"entry 5 ", "entry 26", "A box", "Menu"}) {
    EXPECT_EQ(drawn.find(part), std::string::npos) << part << "\n" << drawn;
  }
}

}  // namespace
}  // namespace qb
