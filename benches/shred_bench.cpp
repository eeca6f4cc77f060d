// Eight passes of the shredder against GNU shred with as many: one large file, on the disk and in memory, and
// many small ones.
#include <optional>

#include "benches/machine_folder.h"
#include "benches/ratio.h"
#include "delete/shredder.h"

namespace {

using qb::bench::MachineFolder;
using qb::bench::Timed;

constexpr int kPasses = 8;

struct Load {
  int files;
  std::size_t bytes;
};

// Each file as shred's, and as the machine's, in a new folder of the same place.
class Shredding {
 public:
  Shredding(std::filesystem::path place, Load load) : place_(std::move(place)), load_(load) {}

  Timed Shred() {
    return {"shred -n 8 -u",
            [this] {
              plain_.emplace(place_);
              Fill(plain_->path());
            },
            [this] {
              qb::bench::Command("find " + qb::bench::Quoted(plain_->path()) + " -type f -print0 | xargs -0 shred -n " +
                                 std::to_string(kPasses) + " -u");
            },
            Files()};
  }
  Timed Ours() {
    return {"",
            [this] {
              machine_.emplace(place_);
              machine_->Close();
              std::filesystem::create_directories(machine_->Drive() / "t");
              Fill(machine_->Drive() / "t");
              machine_->Open();
            },
            [this] {
              const qb::Lifetime life;
              qb::clsShredder shredder(machine_->machine().platform(), life);
              for (int i = 0; i < load_.files; ++i) {
                shredder.p_SourceFile = "C:\\t\\" + std::to_string(i);
                shredder.p_Passes = kPasses;
                shredder.File_Shred();
                if (machine_->machine().Exists(shredder.p_SourceFile) != "no")
                  throw std::runtime_error("a file is left");
              }
            },
            Files()};
  }

 private:
  double Files() const { return load_.files; }
  void Fill(const std::filesystem::path& folder) const {
    const std::string content(load_.bytes, 'A');
    for (int i = 0; i < load_.files; ++i) std::ofstream(folder / std::to_string(i), std::ios::binary) << content;
  }

  const std::filesystem::path place_;
  const Load load_;
  std::optional<qb::test::TempFolder> plain_;
  std::optional<MachineFolder> machine_;
};

int CompareIn(const std::string& name, const std::filesystem::path& place, Load load, double goal) {
  Shredding shredding(place, load);
  return qb::bench::Compare(name, shredding.Ours(), {{shredding.Shred(), goal}});
}

}  // namespace

int main() {
  constexpr Load kLarge{1, 256u << 20}, kSmall{1000, 20480};
  // First, while this process is small: its memory is in the peaks.
  int missed = qb::bench::Growth("8 passes over files of 20 KiB, memory", 250, [&](int files) {
    const auto grown = std::make_shared<Shredding>(qb::bench::kMemory, Load{files, kSmall.bytes});
    return qb::bench::Owned(grown, grown->Ours());
  });
  missed += CompareIn("8 passes over one file of 256 MiB, disk", qb::bench::Disk(), kLarge, 0.6);
  missed += CompareIn("8 passes over one file of 256 MiB, memory", qb::bench::kMemory, kLarge, 0.7);
  missed += CompareIn("8 passes over 1,000 files of 20 KiB, disk, each", qb::bench::Disk(), kSmall, 1.0);
  return missed == 0 ? 0 : 1;
}
