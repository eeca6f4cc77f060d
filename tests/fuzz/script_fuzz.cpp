// Any bytes as a script give an orderly end: an exit status, and nothing outside the machine's folder.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "app/rehearse/console/console.h"
#include "tests/fuzz/opened_machine.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr const char* kBystander = "a file beside the machine";

// Large numbers make a long wait, not a strange one: an hour of the machine's clock is hundreds of
// thousands of ticks. Of digits in a row, no more than three.
bool TakesTooLong(const std::string& script) {
  std::size_t digits = 0;
  for (char c : script) {
    digits = c >= '0' && c <= '9' ? digits + 1 : 0;
    if (digits > 3) return true;
  }
  return false;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // Beyond a few kilobytes an input only gets slower, not stranger.
  if (size > 4096) return 0;
  std::string input(reinterpret_cast<const char*>(data), size);
  if (TakesTooLong(input)) return 0;
  qb::test::TempFolder folder;
  std::filesystem::path bystander = folder.path() / "bystander.txt";
  std::ofstream(bystander) << kBystander;
  std::string problem;
  auto machine = qb::machine::Machine::Open((folder.path() / "machine").string(), problem);
  qb::test::Require(machine != nullptr);
  std::istringstream script(input);
  std::ostringstream out, err;
  auto status = qb::rehearse::RunScript(*machine, script, out, err);
  // Not understood must say why, and only then.
  qb::test::Require((status == qb::rehearse::Status::NotUnderstood) == !err.str().empty());
  qb::test::Require(qb::test::StateFiles(folder.path()).at("bystander.txt") == kBystander);
  for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
    qb::test::Require(entry.path() == bystander || entry.path() == folder.path() / "machine");
  }
  return 0;
}
