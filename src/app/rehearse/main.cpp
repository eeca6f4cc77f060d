// quillbarrow-rehearse MACHINE [SCRIPT]: plays a script, or what is typed, on a machine in a folder.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>

#include "app/rehearse/console/console.h"

namespace {

using qb::rehearse::Status;

int Exit(Status status) {
  return static_cast<int>(status);
}

int Refuse(const std::string& problem) {
  std::cerr << problem << "\n";
  return Exit(Status::NotUnderstood);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) return Refuse("usage: quillbarrow-rehearse MACHINE [SCRIPT]");
  std::ifstream script;
  if (argc == 3) {
    // Read first, so that a misspelt name leaves no new machine behind. A folder opens as a file too.
    script.open(argv[2], std::ios::binary);
    if (!script || std::filesystem::is_directory(argv[2]))
      return Refuse("cannot read the script " + std::string(argv[2]));
  }
  std::string problem;
  auto machine = qb::machine::Machine::Open(argv[1], problem);
  if (machine == nullptr) return Refuse(problem);
  // What a script never asks for need not be kept. One that comes through a pipe cannot be read twice.
  if (argc == 3 && std::filesystem::is_regular_file(argv[2])) {
    machine->gate().SetRecording(qb::rehearse::AsksForCalls(script));
    script.clear();
    script.seekg(0);
  }
  bool typed = argc == 2 && isatty(STDIN_FILENO) != 0;
  std::istream& in = argc == 3 ? script : std::cin;
  return Exit(qb::rehearse::RunScript(*machine, in, std::cout, std::cerr, typed ? "> " : ""));
}
