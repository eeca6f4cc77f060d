#include "app/rehearse/console/operations.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

namespace qb::rehearse {
namespace {

// An operation that the list lacks could never be made to fail.
TEST(Operations, EveryOneOfThePlatformIsKnown) {
  const std::regex declaration(R"(virtual [^;~]*?(\w+)\()");
  int found = 0;
  for (const auto& entry : std::filesystem::directory_iterator(QUILLBARROW_SOURCE "/src/platform")) {
    if (entry.path().extension() != ".h") continue;
    std::ifstream file(entry.path());
    std::string text(std::istreambuf_iterator<char>(file), {});
    for (std::sregex_iterator match(text.begin(), text.end(), declaration), end; match != end; ++match, ++found) {
      EXPECT_TRUE(KnownOperation((*match)[1].str())) << (*match)[1];
    }
  }
  EXPECT_GT(found, 70);
  EXPECT_FALSE(KnownOperation("DeleteFile"));
}

}  // namespace
}  // namespace qb::rehearse
