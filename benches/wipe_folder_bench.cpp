// The quick wipe of a folder tree against the plain removal of the same tree, and against one pass of GNU shred, which
// does more work: it overwrites the whole content, where the quick wipe gives it up to the file system.
#include <unistd.h>

#include <optional>

#include "benches/machine_folder.h"
#include "benches/ratio.h"

namespace {

using qb::bench::MachineFolder;
using qb::bench::Quoted;
using qb::bench::Timed;

constexpr int kFilesInAFolder = 50, kBytes = 8192;

void MakeTree(const std::filesystem::path& root, int files) {
  const std::string content(kBytes, 'A');
  for (int i = 0; i < files; ++i) {
    const auto folder = root / ("d" + std::to_string(i / kFilesInAFolder));
    if (i % kFilesInAFolder == 0) std::filesystem::create_directories(folder);
    std::ofstream(folder / ("f" + std::to_string(i) + ".tmp"), std::ios::binary) << content;
  }
  // Of files that were just written a part has no room on the disk yet, and to remove those is cheap.
  ::sync();
}

struct Trees {
  std::optional<MachineFolder> machine;
  std::optional<qb::test::TempFolder> plain;
};

Timed Wipe(Trees& trees, const std::filesystem::path& place, int files) {
  return {"",
          [&trees, place, files] {
            trees.machine.emplace(place);
            trees.machine->Close();
            MakeTree(trees.machine->Drive() / "tree", files);
            trees.machine->Open();
          },
          [&trees] { trees.machine->Play("start\ndo Wipe_Folder_Files C:\\tree\n"); }, static_cast<double>(files)};
}

Timed Plain(Trees& trees, const std::filesystem::path& place, int files, const char* what, const char* command) {
  return {what,
          [&trees, place, files] {
            trees.plain.emplace(place);
            MakeTree(trees.plain->path() / "tree", files);
          },
          [&trees, command] {
            const std::string tree = Quoted(trees.plain->path() / "tree");
            qb::bench::Command("tree=" + tree + "; " + command);
          },
          static_cast<double>(files)};
}

// Against each in rounds of its own: what shred writes through to the disk would be in the way of the others. As it
// waits for the disk with each file, a twentieth of them tells what one costs.
int CompareIn(const std::filesystem::path& place, const std::string& where, double goal) {
  constexpr int kFiles = 20000;
  constexpr const char* kRemove = "rm -rf \"$tree\"";
  constexpr const char* kShred = "find \"$tree\" -type f -print0 | xargs -0 shred -n 1 -u";
  const std::string name = "quick wipe of 20,000 files of 8 KiB in 400 folders, " + where + ", each";
  Trees trees;
  const Timed ours = Wipe(trees, place, kFiles);
  return qb::bench::Compare(name, ours, {{Plain(trees, place, kFiles, "rm -rf", kRemove), goal}}) +
         qb::bench::Compare(
             name, ours, {{Plain(trees, place, kFiles / 20, "shred -n 1 -u (more work, fewer files)", kShred), 0.15}});
}

}  // namespace

int main() {
  // First, while this process is small: its memory is in the peaks.
  int missed = qb::bench::Growth("quick wipe, memory", 1250, [](int files) {
    const auto trees = std::make_shared<Trees>();
    return qb::bench::Owned(trees, Wipe(*trees, qb::bench::kMemory, files));
  });
  missed += CompareIn(qb::bench::Disk(), "disk", 3.0);
  missed += CompareIn(qb::bench::kMemory, "memory", 0);
  return missed == 0 ? 0 : 1;
}
