#include "view/placement/access_keys.h"

#include <gtest/gtest.h>

#include "view/text/drawing.h"

namespace qb {
namespace {

using Captions = std::vector<std::string>;

TEST(AccessKeysTest, EachCaptionGetsALetterOfItsOwn) {
  const struct {
    const char* what;
    Captions captions, with_keys;
  } cases[] = {
      {"the first letter, in either case", {"Save", "Cancel", "save"}, {"&Save", "&Cancel", "s&ave"}},
      {"a later word before a later letter", {"Cookies", "Cookie Manager"}, {"&Cookies", "Cookie &Manager"}},
      {"what a caption brings is taken, wherever it stands",
       {"Setup", "Cancel", "File &Shredder"},
       {"S&etup", "&Cancel", "File &Shredder"}},
      {"a blank, an arrow or a letter beyond ASCII is no key",
       {" << Remove", "\xC3\x84rger"},
       {" << &Remove", "\xC3\x84r&ger"}},
      {"an ampersand that is shown is none", {"A && B"}, {"&A && B"}},
      {"nothing left", {"ab", "ba", "ab", "", "..."}, {"&ab", "&ba", "ab", "", "..."}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(WithAccessKeys(c.captions), c.with_keys);
  }
  EXPECT_EQ(PlainCaption("Save && &quit&"), "Save & quit") << "where the keys are not drawn";
}

}  // namespace
}  // namespace qb
