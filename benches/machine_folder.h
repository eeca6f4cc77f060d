// A folder of its own for a bench, in a place of the host, and a machine in it that the host may fill.
#pragma once

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "app/rehearse/console/console.h"
#include "platform/machine/machine.h"
#include "tests/app/temp_folder.h"

namespace qb::bench {

inline const std::filesystem::path kMemory = "/dev/shm";

// Where temporary files lie; on a computer that keeps them in memory the lines of disk and memory are alike.
inline std::filesystem::path Disk() {
  return std::filesystem::temp_directory_path();
}

inline std::string Quoted(const std::filesystem::path& path) {
  return "'" + path.string() + "'";
}

class MachineFolder {
 public:
  explicit MachineFolder(const std::filesystem::path& place = Disk()) : folder_(place) {
    Open();
    std::string problem;
    if (!machine_->Save(problem)) throw std::runtime_error(problem);
  }
  // Lets go of the folder, so that the host may change what lies in it.
  void Close() { machine_.reset(); }
  void Open() {
    std::string problem;
    machine_.reset();  // one at a time may hold the folder
    machine_ = machine::Machine::Open(Host().string(), problem);
    if (machine_ == nullptr) throw std::runtime_error(problem);
    machine_->gate().SetRecording(false);
  }
  machine::Machine& machine() { return *machine_; }
  const std::filesystem::path& path() const { return folder_.path(); }
  std::filesystem::path Host() const { return folder_.path() / "machine"; }
  std::filesystem::path Drive() const { return Host() / "drives" / "C"; }

  // Plays commands of the console; throws unless all that they expect holds.
  void Play(const std::string& commands) {
    std::istringstream script(commands);
    std::ostringstream out, err;
    if (rehearse::RunScript(*machine_, script, out, err) != rehearse::Status::Held) {
      throw std::runtime_error(out.str() + err.str());
    }
  }

 private:
  test::TempFolder folder_;
  std::unique_ptr<machine::Machine> machine_;
};

}  // namespace qb::bench
