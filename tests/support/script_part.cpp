#include <fstream>
#include <iterator>

#include "tests/support/rehearsal.h"

namespace qb::test {

std::string ScriptPart(const std::string& name) {
  std::ifstream in(QUILLBARROW_SCRIPT_PARTS + name + ".rehearsal", std::ios::binary);
  EXPECT_TRUE(in) << name;
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace qb::test
