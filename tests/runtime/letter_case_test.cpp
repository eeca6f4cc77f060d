#include "runtime/letter_case.h"

#include <gtest/gtest.h>
#include <wctype.h>

#include <clocale>

namespace qb {
namespace {

TEST(LetterCase, PairsAreThoseOfUnicodeThatLeadThereAndBack) {
  locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  ASSERT_NE(unicode, nullptr);
  int pairs = 0;
  for (char32_t c = 0; c < 0x10000; ++c) {
    const char32_t capital = Capital(c), small = SmallLetter(c);
    pairs += capital == c ? 0 : 1;
    EXPECT_TRUE(capital == c || capital == towupper_l(static_cast<wint_t>(c), unicode)) << std::hex << +c;
    EXPECT_TRUE(capital == c || SmallLetter(capital) == c) << std::hex << +c;
    EXPECT_TRUE(small == c || Capital(small) == c) << std::hex << +c;
  }
  EXPECT_EQ(pairs, 1163);  // of the plane whose characters take one unit, in Unicode 14
  freelocale(unicode);
}

}  // namespace
}  // namespace qb
