// A program that runs on a machine without a console.
#pragma once

#include "core/program.h"
#include "platform/machine/machine.h"
#include "tests/app/temp_folder.h"
#include "view/text/text_view.h"

namespace qb::test {

class ResidentProgram {
 public:
  ResidentProgram()
      : machine_(machine::Machine::Open((folder_.path() / "machine").string(), problem_)),
        view_(*machine_, "Quillbarrow"),
        program_(machine_->platform(), view_, "", view_.ApplicationWindow()) {
    machine_->gate().SetRecording(false);
    program_.Start();
  }
  machine::Machine& machine() { return *machine_; }
  Program& program() { return program_; }

 private:
  TempFolder folder_;
  std::string problem_;
  std::unique_ptr<machine::Machine> machine_;
  TextView view_;
  Program program_;
};

}  // namespace qb::test
