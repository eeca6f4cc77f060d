// The walks over the AutoComplete store end, whatever keys somebody put there.
#include "tests/support/rehearsal.h"

namespace qb {
namespace {

// " a" comes to "a" when it is trimmed: a walk that took it for a key of its own would take twice as long at each
// level.
TEST(AutoCompleteTest, NamesThatComeToTheSameAreWalkedOnce) {
  constexpr int kLevels = 40;
  test::Rehearsal rehearsal;
  std::string key = "HKCU\\Software\\Microsoft\\Protected Storage System Provider", script;
  for (int level = 0; level < kLevels; ++level) {
    script += "reg add \"" + key + "\\ a\"\nreg add \"" + key + "\\A  \"\n";
    key += "\\a";
  }
  script += "reg add \"" + key + "\\Q\"\nstart\ndo Kill_IE_AutoComplete\nexpect reg show \"" + key + "\" is\n";
  rehearsal.Play(script);
  EXPECT_EQ(rehearsal.status(), rehearse::Status::Held) << rehearsal.printed();
}

}  // namespace
}  // namespace qb
