#include <gtest/gtest.h>
#include <malloc.h>

#include "tests/support/resident_program.h"

namespace qb {
namespace {

constexpr std::uint64_t kHour = std::uint64_t{3600} * 1000;

TEST(Resident, ADayAtRestLeavesMemoryAndHandlesWhereTheyWere) {
  test::ResidentProgram resident;
  resident.machine().WindowOpen("IEFrame", "News", 0);
  StepOver(resident.program().main_window().Unload());  // into the tray
  resident.machine().Advance(kHour);
  const std::size_t handles = resident.machine().OpenHandles();
  const std::size_t bytes = mallinfo2().uordblks;
  resident.machine().Advance(24 * kHour);
  EXPECT_TRUE(resident.program().resident().auto_kill.Open(Family::InternetExplorer));
  EXPECT_EQ(resident.machine().OpenHandles(), handles);
  // A few texts may have grown within what is theirs; a tick that kept a byte would keep 86,400.
  EXPECT_LT(mallinfo2().uordblks, bytes + 10000);
}

}  // namespace
}  // namespace qb
