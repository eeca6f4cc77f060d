// A folder walk over 20,000 files in 400 folders must cost for each file what one over 2,000 files in 40 does.
#include <filesystem>
#include <memory>
#include <sstream>

#include "app/rehearse/console/console.h"
#include "bench/ratio.h"
#include "platform/machine/machine.h"
#include "tests/app/temp_folder.h"

namespace {

using qb::machine::Machine;

class Tree {
 public:
  explicit Tree(int folders) : folders_(folders) {}

  void Make() {
    machine_.reset();
    folder_ = std::make_unique<qb::test::TempFolder>(std::filesystem::temp_directory_path());
    std::string problem;
    machine_ = Machine::Open((folder_->path() / "machine").string(), problem);
    if (machine_ == nullptr) throw std::runtime_error(problem);
    machine_->gate().SetRecording(false);
    constexpr int kFilesInAFolder = 50;
    for (int folder = 0; folder < folders_; ++folder) {
      for (int file = 0; file < kFilesInAFolder; ++file) {
        machine_->MakeFile("C:\\tree\\d" + std::to_string(folder) + "\\f" + std::to_string(file) + ".tmp", "content");
      }
    }
  }
  void Walk() {
    std::istringstream script("start\ndo Wipe_Folder_Files C:\\tree\n");
    std::ostringstream out, err;
    if (qb::rehearse::RunScript(*machine_, script, out, err) != qb::rehearse::Status::Held) {
      throw std::runtime_error(err.str());
    }
  }

 private:
  const int folders_;
  std::unique_ptr<qb::test::TempFolder> folder_;
  std::unique_ptr<Machine> machine_;
};

}  // namespace

int main() {
  Tree small(40), large(400);
  return qb::bench::CompareRatio({"2,000 files in 40 folders", 2000, [&] { small.Make(); }, [&] { small.Walk(); }},
                                 {"20,000 files in 400 folders", 20000, [&] { large.Make(); }, [&] { large.Walk(); }},
                                 1.2, 5);
}
