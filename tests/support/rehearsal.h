// A whole program on a machine of its own, driven by a script, for tests.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "app/rehearse/console/console.h"
#include "platform/machine/machine.h"
#include "tests/app/temp_folder.h"

namespace qb::test {

// A script of tests/scripts/parts, which several tests or variants of one play. Fails the test if there is none.
std::string ScriptPart(const std::string& name);

class Rehearsal {
 public:
  Rehearsal() {
    std::string problem;
    machine_ = machine::Machine::Open((folder_.path() / "machine").string(), problem);
    EXPECT_NE(machine_, nullptr) << problem;
  }

  // Plays the script and gives what it printed, line by line. A command that was not understood fails the test.
  std::vector<std::string> Play(const std::string& script) {
    std::istringstream in(script);
    std::ostringstream out, err;
    status_ = rehearse::RunScript(*machine_, in, out, err);
    EXPECT_NE(status_, rehearse::Status::NotUnderstood) << err.str();
    printed_ = out.str();
    std::vector<std::string> lines;
    std::istringstream printed(printed_);
    for (std::string line; std::getline(printed, line);) lines.push_back(line);
    return lines;
  }

  // The same; fails the test, and tells `what`, unless every expectation held.
  std::vector<std::string> Hold(const std::string& script, const std::string& what = {}) {
    std::vector<std::string> lines = Play(script);
    EXPECT_EQ(status_, rehearse::Status::Held) << what << "\n" << printed_;
    return lines;
  }

  machine::Machine& machine() { return *machine_; }
  // Where the machine lies on this computer.
  std::filesystem::path folder() const { return folder_.path() / "machine"; }
  rehearse::Status status() const { return status_; }
  // What the last script printed, for the message of a failed test.
  const std::string& printed() const { return printed_; }
  // Opens the machine of the folder anew, as the next start of the rehearsal would.
  void Reopen() {
    machine_.reset();
    std::string problem;
    machine_ = machine::Machine::Open((folder_.path() / "machine").string(), problem);
    ASSERT_NE(machine_, nullptr) << problem;
  }

 private:
  TempFolder folder_;
  std::unique_ptr<machine::Machine> machine_;
  rehearse::Status status_ = rehearse::Status::Held;
  std::string printed_;
};

}  // namespace qb::test
