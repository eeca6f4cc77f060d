// The thumbnail audit: the walk against find, the search for pictures against a sum of the same bytes, and the
// unpacking against foremost.
#include <filesystem>
#include <fstream>
#include <memory>
#include <numeric>
#include <sstream>

#include "app/rehearse/console/console.h"
#include "bench/ratio.h"
#include "platform/machine/machine.h"
#include "tests/app/temp_folder.h"
#include "thumbs/disk_walk.h"
#include "thumbs/picture_cut.h"

namespace {

using qb::machine::Machine;

// A machine whose drive C: is filled on the host.
struct World {
  World() {
    Reopen();
    std::string problem;
    if (!machine->Save(problem)) throw std::runtime_error(problem);
  }
  void Reopen() {
    std::string problem;
    machine.reset();
    machine = Machine::Open((folder.path() / "machine").string(), problem);
    if (machine == nullptr) throw std::runtime_error(problem);
    machine->gate().SetRecording(false);
  }
  std::filesystem::path Drive() const { return folder.path() / "machine" / "drives" / "C"; }
  qb::test::TempFolder folder(std::filesystem::temp_directory_path());
  std::unique_ptr<Machine> machine;
};

class Counter : public qb::WalkObserver {
 public:
  explicit Counter(Machine& machine) : machine_(machine) {}
  bool PumpMessages() override {
    machine_.platform().pump.PumpMessages();
    return true;
  }
  bool Scan_Cancelled() const override { return false; }
  void Do_Cancel() override {}
  void EntrySeen() override { ++seen; }
  void CacheFound(const std::string&) override { ++found; }
  std::size_t seen = 0, found = 0;

 private:
  Machine& machine_;
};

int BenchScan() {
  constexpr int kFolders = 2000, kFiles = 100;
  World world;
  for (int folder = 0; folder < kFolders; ++folder) {
    const auto path = world.Drive() / "tree" / std::to_string(folder);
    std::filesystem::create_directories(path);
    for (int file = 0; file < kFiles; ++file) {
      std::ofstream(path / (file == 7 ? "Thumbs.db" : "document " + std::to_string(file) + ".txt"));
    }
  }
  world.Reopen();
  const std::string find = "find '" + (world.Drive() / "tree").string() +
                           "' \\( -iname '*thumbs.db*' -o -iname '*thumbcache_*' \\) | wc -l > /dev/null";
  return qb::bench::CompareRatio({"find with the two name tests", double(kFolders) * kFiles, [] {},
                                  [&] {
                                    if (std::system(find.c_str()) != 0) throw std::runtime_error("find failed");
                                  }},
                                 {"the walk, with a pump at each entry", double(kFolders) * kFiles, [] {},
                                  [&] {
                                    Counter counter(*world.machine);
                                    qb::DiskWalk walk(world.machine->platform().files, counter);
                                    walk.Find_Thumbs("C:\\tree");
                                    if (counter.found != kFolders) throw std::runtime_error("not all was found");
                                  }},
                                 2.5, 5);
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
  const int result = qb::bench::CompareRatio(
      {"the sum of the bytes", double(kBytes >> 20), [] {},
       [&] {
         const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
         sum += std::accumulate(data, data + kBytes, std::uint64_t{0});
       }},
      {"the search for the four bytes", double(kBytes >> 20), [] {}, [&] { found += qb::CountPictures(bytes); }}, 2.0,
      5);
  return sum != 0 && found != 0 ? result : 1;
}

int BenchUnpack() {
  if (std::system("command -v foremost > /dev/null && command -v convert > /dev/null") != 0) {
    std::puts("unpacking: left out, foremost or convert is not installed");
    return 0;
  }
  constexpr int kCaches = 50, kPictures = 400;
  World world;
  const auto picture_path = world.folder.path() / "picture.jpg";
  // 25 KB of noise.
  if (std::system(
          ("convert -size 160x160 xc:gray +noise random -quality 92 '" + picture_path.string() + "'").c_str()) != 0) {
    throw std::runtime_error("no picture");
  }
  std::ostringstream picture;
  picture << std::ifstream(picture_path, std::ios::binary).rdbuf();
  const auto caches = world.Drive() / "Users" / "user" / "AppData" / "Local" / "caches";
  std::filesystem::create_directories(caches);
  for (int cache = 0; cache < kCaches; ++cache) {
    std::ofstream file(caches / ("thumbcache_" + std::to_string(cache) + ".db"), std::ios::binary);
    for (int i = 0; i < kPictures; ++i) file << std::string(56, 'h') << picture.str();
  }
  std::printf("%d pictures of %zu bytes\n", kCaches * kPictures, picture.str().size());
  const auto output = world.folder.path() / "foremost";
  const std::string foremost =
      "foremost -Q -t jpg -o '" + output.string() + "' '" + caches.string() + "'/*.db > /dev/null";
  return qb::bench::CompareRatio(
      {"foremost -t jpg", double(kCaches) * kPictures, [&] { std::filesystem::remove_all(output); },
       [&] {
         if (std::system(foremost.c_str()) != 0) throw std::runtime_error("foremost failed");
       }},
      {"count, unpack twice and write the page", double(kCaches) * kPictures,
       [&] {
         std::filesystem::remove_all(world.Drive() / "thumbs");
         std::filesystem::remove_all(world.Drive() / "Users/user/AppData/Local/Quillbarrow");
         world.Reopen();
       },
       [&] {
         std::istringstream script("start\nclick cmdThumbs\nadvance 600ms\nexpect get Thumbnails_Found is " +
                                   std::to_string(kCaches * kPictures + 1) + "\n");
         std::ostringstream out, err;
         if (qb::rehearse::RunScript(*world.machine, script, out, err) != qb::rehearse::Status::Held) {
           throw std::runtime_error(out.str() + err.str());
         }
       }},
      1.0, 2);
}

}  // namespace

int main() {
  const int scan = BenchScan();
  const int search = BenchSearch();
  const int unpack = BenchUnpack();
  return scan + search + unpack == 0 ? 0 : 1;
}
