// quillbarrow-rehearse MACHINE [SCRIPT]: plays a script, or what is typed, on a machine in a folder.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>

#include "app/rehearse/console/console.h"
#include "core/version.h"

namespace {

constexpr const char* kHelp =
    "usage: quillbarrow-rehearse MACHINE [SCRIPT]\n"
    "\n"
    "Runs Quillbarrow " QUILLBARROW_VERSION
    " on a machine, a Windows computer in a folder, and deletes nothing outside of it.\n"
    "\n"
    "MACHINE  the folder; a plain machine is made in one that is absent or empty. One of your own\n"
    "         computer: docs/machine.md\n"
    "SCRIPT   a file of commands, one a line; without it they come from standard input\n"
    "\n"
    "A first session: start | choose SftTabs1 4 | show | tick chkWin_StartRun | click cmdKILLALL | log\n"
    "\n"
    "Exit status: 0; 1 if an expect did not hold; 2 if something was not understood or could not be read.\n";

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
  const std::string_view first = argc > 1 ? argv[1] : "";
  if (argc == 2 && (first == "--help" || first == "-h")) {
    std::cout << kHelp;
    return 0;
  }
  if (first.substr(0, 1) == "-") {
    return Refuse("unknown option " + std::string(first) + "; see --help (a folder of that name: ./" +
                  std::string(first) + ")");
  }
  if (argc < 2 || argc > 3) return Refuse("usage: quillbarrow-rehearse MACHINE [SCRIPT]; see --help");
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
