// The thumbnail audit: the walk against find, the search for pictures against a sum of the same bytes, the unpacking
// against foremost; and what walk and reader hold in memory.
#include <malloc.h>

#include <new>
#include <numeric>

#include "benches/machine_folder.h"
#include "benches/ratio.h"
#include "thumbs/disk_walk.h"
#include "thumbs/picture_cut.h"

namespace {

// What is held on the heap by now, as its blocks really are, and the most since it was last set.
std::size_t held = 0, most_held = 0;

}  // namespace

void* operator new(std::size_t size) {
  void* block = std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  held += malloc_usable_size(block) + sizeof(std::size_t);
  most_held = std::max(most_held, held);
  return block;
}
void operator delete(void* block) noexcept {
  if (block == nullptr) return;
  held -= malloc_usable_size(block) + sizeof(std::size_t);
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  operator delete(block);
}

namespace {

using qb::bench::MachineFolder;
using qb::bench::Quoted;
using qb::bench::Timed;

// Keeps the paths of what is found, as the list does.
class Finder : public qb::WalkObserver {
 public:
  explicit Finder(qb::machine::Machine& machine) : machine_(machine) {}
  bool PumpMessages() override {
    machine_.platform().pump.PumpMessages();
    return true;
  }
  bool Scan_Cancelled() const override { return false; }
  void Do_Cancel() override {}
  void EntrySeen() override {}
  void CacheFound(const std::string& path) override { found.push_back(path); }
  std::vector<std::string> found;

 private:
  qb::machine::Machine& machine_;
};

constexpr int kFilesInAFolder = 100;

// Folders of empty files, of which `matching` in each have the name of a cache.
void FillTree(MachineFolder& world, int files, int matching) {
  world.Close();
  for (int i = 0; i < files; ++i) {
    const auto folder = world.Drive() / "tree" / std::to_string(i / kFilesInAFolder);
    const int number = i % kFilesInAFolder;
    if (number == 0) std::filesystem::create_directories(folder);
    std::ofstream(folder / ((number < matching ? "thumbcache_" : "document ") + std::to_string(number) + ".db"));
  }
  world.Open();
}

void Walk(MachineFolder& world, std::size_t expected) {
  Finder finder(world.machine());
  qb::DiskWalk walk(world.machine().platform().files, finder);
  walk.Find_Thumbs("C:\\tree");
  if (finder.found.size() != expected) throw std::runtime_error("not all was found");
}

int ScanGrowth() {
  return qb::bench::Growth("scan", 12500, [](int files) {
    const auto grown = std::make_shared<MachineFolder>(qb::bench::kMemory);
    return qb::bench::Owned(grown, {"", [grown, files] { FillTree(*grown, files, 1); },
                                    [grown, files] { Walk(*grown, files / kFilesInAFolder); }});
  });
}

int BenchScan() {
  constexpr int kFiles = 200000;
  MachineFolder world;
  FillTree(world, kFiles, 1);
  const std::string find = "find " + Quoted(world.Drive() / "tree") +
                           " \\( -iname '*thumbs.db*' -o -iname '*thumbcache_*' \\) | wc -l > /dev/null";
  return qb::bench::Compare("scan over 200,000 entries", {"", [] {}, [&] { Walk(world, kFiles / kFilesInAFolder); }},
                            {{{"find with two -iname", [] {}, [&] { qb::bench::Command(find); }}, 2.5}});
}

// Each entry is one of the list too, whose text counts as the walk's does: as a text.
int ScanMemory() {
  constexpr int kFiles = 200000;
  constexpr double kGoal = 300;
  MachineFolder world(qb::bench::kMemory);
  FillTree(world, kFiles, kFilesInAFolder);
  const std::size_t before = held;
  most_held = held;
  Finder finder(world.machine());
  qb::DiskWalk walk(world.machine().platform().files, finder);
  walk.Find_Thumbs("C:\\tree");
  std::size_t texts = 0;
  for (const std::string& path : finder.found) texts += 2 * path.size();
  const double each = static_cast<double>(most_held - before - texts) / kFiles;
  char told[64];
  std::snprintf(told, sizeof told, "%.0f bytes", each);
  return qb::bench::Line("scan of 200,000 matching entries, memory of each beyond its texts", told, "goal 300 bytes",
                         each / kGoal, 1.0);
}

int BenchSearch() {
  constexpr std::size_t kBytes = 256u << 20;
  std::string bytes(kBytes, '\0');
  std::uint64_t state = 1;
  for (std::size_t i = 0; i < kBytes; ++i) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    bytes[i] = static_cast<char>(state >> 56);
  }
  for (std::size_t at = 0; at + 4 < kBytes; at += 25000) bytes.replace(at, 4, qb::kPictureStart);
  std::uint64_t sum = 0;
  std::size_t found = 0;
  const Timed ours{"", [] {}, [&] { found += qb::CountPictures(bytes); }};
  const Timed other{"their sum", [] {},
                    [&] {
                      const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
                      sum += std::accumulate(data, data + kBytes, std::uint64_t{0});
                    }};
  const int missed = qb::bench::Compare("search for the separator in 256 MiB", ours, {{other, 2.0}});
  return sum != 0 && found != 0 ? missed : 1;
}

constexpr int kPicturesInACache = 400;

// Caches of pictures of 25 KB of noise each, in a folder of the machine.
class Caches {
 public:
  Caches(const std::filesystem::path& place, int pictures) : place_(place), pictures_(pictures) { Make(); }

  Timed Ours() {
    return {"",
            [this] {
              world_.Close();
              SetAside(world_.Drive() / "thumbs");
              SetAside(world_.Drive() / "Users/user/AppData/Local/Quillbarrow");
              world_.Open();
            },
            [this] {
              world_.Play("start\nclick cmdThumbs\nadvance 600ms\nexpect get Thumbnails_Found is " +
                          std::to_string(pictures_ + 1) + "\n");
            }};
  }
  Timed Foremost() {
    return {"foremost -t jpg", [this] { SetAside(Output()); },
            [this] {
              qb::bench::Command("foremost -Q -t jpg -o " + Quoted(Output()) + " " + Quoted(Folder()) +
                                 "/*.db > /dev/null");
            }};
  }

 private:
  std::filesystem::path Folder() const { return world_.Drive() / "Users/user/AppData/Local/caches"; }
  std::filesystem::path Output() const { return world_.path() / "foremost"; }
  // Not removed until all is over: for minutes ext4 then looks long for each new file's place, whoever makes it.
  void SetAside(const std::filesystem::path& folder) {
    if (std::filesystem::exists(folder)) std::filesystem::rename(folder, world_.path() / std::to_string(aside_++));
  }
  void Make() {
    const auto path = world_.path() / "picture.jpg";
    qb::bench::Command("convert -size 160x160 xc:gray +noise random -quality 92 " + Quoted(path));
    std::ostringstream picture;
    picture << std::ifstream(path, std::ios::binary).rdbuf();
    world_.Close();
    std::filesystem::create_directories(Folder());
    for (int i = 0; i < pictures_; ++i) {
      const std::string name = "thumbcache_" + std::to_string(i / kPicturesInACache) + ".db";
      std::ofstream(Folder() / name, std::ios::binary | std::ios::app) << std::string(56, 'h') << picture.str();
    }
  }

  const std::filesystem::path place_;
  const int pictures_;
  MachineFolder world_{place_};
  int aside_ = 0;
};

bool ToolsAreHere() {
  return std::system("command -v foremost > /dev/null && command -v convert > /dev/null") == 0;
}

int UnpackGrowth() {
  return qb::bench::Growth("unpacking, memory", kPicturesInACache, [](int pictures) {
    const auto grown = std::make_shared<Caches>(qb::bench::kMemory, pictures);
    return qb::bench::Owned(grown, grown->Ours());
  });
}

int BenchUnpack() {
  int missed = 0;
  constexpr int kPictures = 20000;
  for (const bool disk : {true, false}) {
    Caches caches(disk ? qb::bench::Disk() : qb::bench::kMemory, kPictures);
    missed += qb::bench::Compare(
        std::string("count, unpack 20,000 pictures of 500 MiB twice and write the page, ") + (disk ? "disk" : "memory"),
        caches.Ours(), {{caches.Foremost(), 1.0}});
  }
  return missed;
}

// One cache of 500 MB, in a file without content on the disk: the peak of a whole scan against its size.
int ReaderMemory() {
  constexpr std::uintmax_t kBytes = 500'000'000;
  const qb::bench::Cost cost = qb::bench::InOwnProcess([] {
    const auto world = std::make_shared<MachineFolder>();
    return qb::bench::Owned(world, {"",
                                    [world] {
                                      world->Close();
                                      const auto cache = world->Drive() / "Users/user/AppData/Local/thumbcache_256.db";
                                      std::ofstream(cache).close();
                                      std::filesystem::resize_file(cache, kBytes);
                                      world->Open();
                                    },
                                    [world] {
                                      world->Play(
                                          "start\nclick cmdThumbs\nadvance 600ms\n"
                                          "expect get Thumbs_Located is 1\n");
                                    }});
  });
  return qb::bench::Line("reading a cache of 500 MB, peak memory", qb::bench::MemoryText(cost.peak_bytes),
                         "the file " + qb::bench::MemoryText(kBytes), cost.peak_bytes / kBytes, 1.1);
}

}  // namespace

int main() {
  const bool unpacks = ToolsAreHere();
  if (!unpacks) std::puts("unpacking: left out, foremost or convert is not installed");
  // First, while this process is small: its memory is in the peaks.
  int missed = ReaderMemory();
  // Before the others remove so many files, see SetAside.
  if (unpacks) missed += BenchUnpack();
  missed += ScanGrowth();
  if (unpacks) missed += UnpackGrowth();
  missed += BenchScan();
  missed += ScanMemory();
  missed += BenchSearch();
  return missed == 0 ? 0 : 1;
}
