// Opening a large machine against reading what the opening must read: the names on its drives and the bytes of its own
// files.
#include "benches/machine_folder.h"
#include "benches/ratio.h"

namespace {

using qb::bench::MachineFolder;
using qb::bench::Timed;

// So many files and so many registry keys with a value each.
class Large {
 public:
  explicit Large(int items) : world_(qb::bench::kMemory) {
    world_.Close();
    for (int i = 0; i < items; ++i) {
      const auto folder = world_.Drive() / "tree" / std::to_string(i / kInEach);
      if (i % kInEach == 0) std::filesystem::create_directories(folder);
      std::ofstream(folder / ("Document number " + std::to_string(i) + ".txt"));
    }
    std::ofstream registry(world_.Host() / "registry.reg", std::ios::binary | std::ios::app);
    for (int i = 0; i < items; ++i) {
      registry << "\r\n[HKEY_CURRENT_USER\\Software\\Vendor " << i / kInEach << "\\Key " << i
               << "]\r\n\"Value\"=\"of key " << i << "\"\r\n";
    }
  }
  Timed Open() {
    return {"", [this] { world_.Close(); }, [this] { world_.Open(); }};
  }
  Timed Read() {
    return {"find and cat", [] {},
            [this] {
              qb::bench::Command("cd " + qb::bench::Quoted(world_.Host()) +
                                 " && find drives > /dev/null && cat *.ini *.reg > /dev/null");
            }};
  }

 private:
  static constexpr int kInEach = 100;
  MachineFolder world_;
};

}  // namespace

int main() {
  constexpr int kItems = 100000;
  // First, while this process is small: its memory is in the peaks.
  int missed = qb::bench::Growth(
      "opening a machine", kItems / 16,
      [](int items) {
        const auto grown = std::make_shared<Large>(items);
        return qb::bench::Owned(grown, grown->Open());
      },
      qb::bench::kMoreRounds);
  Large large(kItems);
  missed +=
      qb::bench::Compare("opening a machine of 100,000 files and 100,000 keys", large.Open(), {{large.Read(), 0}});
  return missed == 0 ? 0 : 1;
}
