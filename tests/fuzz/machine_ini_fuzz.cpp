// Any bytes as machine.ini give a machine or one line that says why not.
#include <cstdint>

#include "tests/fuzz/opened_machine.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // Beyond a few kilobytes an input only gets slower, not stranger.
  if (size > 8192) return 0;
  qb::test::OpenWith("machine.ini", std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
