// Eight passes of the shredder against GNU shred with as many: one large file, on the disk and in memory, and
// many small ones.
#include <filesystem>
#include <fstream>
#include <memory>

#include "bench/ratio.h"
#include "delete/shredder.h"
#include "platform/machine/machine.h"
#include "tests/app/temp_folder.h"

namespace {

using qb::machine::Machine;

constexpr int kPasses = 8;

struct Load {
  int files;
  std::size_t bytes;
};

// Each file as shred's, and as the machine's, in a new folder of the same place.
class Shredding {
 public:
  Shredding(const char* place, Load load) : place_(place), load_(load) {}

  void MakePlain() {
    NewFolder();
    for (int i = 0; i < load_.files; ++i) Fill(folder_ / std::to_string(i));
  }
  void RunShred() {
    const std::string command =
        "find '" + folder_.string() + "' -type f -print0 | xargs -0 shred -n " + std::to_string(kPasses) + " -u";
    if (std::system(command.c_str()) != 0) throw std::runtime_error("shred failed");
  }
  void MakeMachine() {
    NewFolder();
    const std::string host = (folder_ / "machine").string();
    std::string problem;
    machine_ = Machine::Open(host, problem);
    if (machine_ == nullptr || !machine_->MakeFolder("C:\\t") || !machine_->Save(problem)) {
      throw std::runtime_error(problem);
    }
    for (int i = 0; i < load_.files; ++i) Fill(folder_ / "machine" / "drives" / "C" / "t" / std::to_string(i));
    machine_.reset();  // one at a time may hold the folder
    machine_ = Machine::Open(host, problem);
    if (machine_ == nullptr) throw std::runtime_error(problem);
    machine_->gate().SetRecording(false);
  }
  void RunOurs() {
    const qb::Lifetime life;
    qb::clsShredder shredder(machine_->platform(), life);
    for (int i = 0; i < load_.files; ++i) {
      shredder.p_SourceFile = "C:\\t\\" + std::to_string(i);
      shredder.p_Passes = kPasses;
      shredder.File_Shred();
      if (machine_->Exists(shredder.p_SourceFile) != "no") throw std::runtime_error("a file is left");
    }
  }
  ~Shredding() { Clear(); }

 private:
  void Fill(const std::filesystem::path& path) const {
    std::ofstream(path, std::ios::binary) << std::string(load_.bytes, 'A');
  }
  void Clear() {
    machine_.reset();
    std::error_code ignored;
    if (!folder_.empty()) std::filesystem::remove_all(folder_, ignored);
  }
  void NewFolder() {
    Clear();
    std::string name = std::string(place_) + "/quillbarrow-bench-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder_ = name;
  }

  const char* place_;
  const Load load_;
  std::filesystem::path folder_;
  std::unique_ptr<Machine> machine_;
};

int Compare(const char* place, Load load, double bound) {
  Shredding plain(place, load), ours(place, load);
  std::printf("%d files of %zu bytes in %s\n", load.files, load.bytes, place);
  return qb::bench::CompareRatio(
      {"shred -n 8 -u", double(load.files), [&] { plain.MakePlain(); }, [&] { plain.RunShred(); }},
      {"clsShredder, 8 passes", double(load.files), [&] { ours.MakeMachine(); }, [&] { ours.RunOurs(); }}, bound, 3);
}

}  // namespace

int main() {
  constexpr Load kLarge{1, 256u << 20}, kSmall{1000, 20480};
  // Where temporary files lie in memory, this is a second look at the same.
  const std::string disk = std::filesystem::temp_directory_path().string();
  const int on_disk = Compare(disk.c_str(), kLarge, 0.6);
  const int in_memory = Compare("/dev/shm", kLarge, 0.7);
  const int small = Compare(disk.c_str(), kSmall, 1.0);
  return on_disk + in_memory + small == 0 ? 0 : 1;
}
