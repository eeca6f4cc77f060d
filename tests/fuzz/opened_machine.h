// A machine over files that a fuzz target makes up: whatever they hold, it either opens and saves so that it
// opens again the same, or says in one line why not and leaves them alone.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <string>

#include "platform/machine/machine.h"
#include "tests/app/temp_folder.h"

namespace qb::test {

inline void Require(bool holds) {
  if (!holds) std::abort();
}

inline std::map<std::string, std::string> StateFiles(const std::filesystem::path& folder) {
  std::map<std::string, std::string> content;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    std::ifstream file(entry.path(), std::ios::binary);
    content[entry.path().filename().string()].assign(std::istreambuf_iterator<char>(file), {});
  }
  return content;
}

// A plain machine whose calls are not recorded.
struct OpenMachine {
  OpenMachine() {
    std::string problem;
    machine = machine::Machine::Open((folder.path() / "machine").string(), problem);
    Require(machine != nullptr);
    machine->gate().SetRecording(false);
  }
  TempFolder folder;
  std::unique_ptr<machine::Machine> machine;
};

// A plain machine, and what its files hold as it was made.
struct PlainMachine {
  PlainMachine() {
    std::string problem;
    auto made = machine::Machine::Open(machine_folder.string(), problem);
    Require(made != nullptr && made->Save(problem));
    files = StateFiles(machine_folder);
  }
  TempFolder folder;
  const std::filesystem::path machine_folder = folder.path() / "machine";
  std::map<std::string, std::string> files;
};

// Puts `bytes` in place of one file of a plain machine and opens it.
inline void OpenWith(const std::string& name, const std::string& bytes) {
  const PlainMachine plain;
  const std::filesystem::path& machine_folder = plain.machine_folder;
  for (const auto& [file, content] : plain.files) {
    std::ofstream(machine_folder / file, std::ios::binary) << (file == name ? bytes : content);
  }
  std::string problem;
  const auto before = StateFiles(machine_folder);
  auto opened = machine::Machine::Open(machine_folder.string(), problem);
  if (opened == nullptr) {
    Require(!problem.empty() && problem.find('\n') == std::string::npos);
    Require(StateFiles(machine_folder) == before);
    return;
  }
  Require(opened->Save(problem));
  const auto saved = StateFiles(machine_folder);
  opened.reset();
  opened = machine::Machine::Open(machine_folder.string(), problem);
  Require(opened != nullptr && opened->Save(problem));
  Require(StateFiles(machine_folder) == saved);
  // Nothing beside the machine.
  Require(std::distance(std::filesystem::directory_iterator(plain.folder.path()), {}) == 1);
}

}  // namespace qb::test
