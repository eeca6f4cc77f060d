#include <gtest/gtest.h>

#include "tests/support/resident_program.h"

namespace qb {
namespace {

// The icon's events share their message with the real moves of the mouse over the window.
TEST(Tray, TakesNoRealMoveForAnEventOfTheIcon) {
  constexpr std::uint64_t kIcon = 1;
  constexpr std::int64_t kLeftDown = 513, kSecondRow = 0x10000;
  constexpr struct {
    std::uint64_t wparam;
    std::int64_t lparam;
    bool shows;
  } kMoves[] = {
      {kIcon, kLeftDown, true},
      {0, kLeftDown, false},                   // over the window's first row, no button held
      {2, kLeftDown, false},                   // the same with the right button
      {kIcon, kSecondRow + kLeftDown, false},  // one row below with the left button
      {kIcon, 514, false},
  };
  test::ResidentProgram resident;
  frmMain& window = resident.program().main_window();
  for (const auto& move : kMoves) {
    window.Hide();
    resident.program().resident().MainWindowMessage(kMessageMouseMove, move.wparam, move.lparam);
    EXPECT_EQ(window.Visible(), move.shows) << move.wparam << ", " << move.lparam;
  }
}

}  // namespace
}  // namespace qb
