// Holds the machine against Windows: plays the same sequences on both and compares what each call gave, line by line.
//   conformance --tests FOLDER --drive FOLDER [--seed N] [--random N]
// FOLDER of the tests holds "sequences" and "exceptions.txt"; the drive is C: of a Wine prefix with the player in it.
//   conformance --tests FOLDER --machine FOLDER
// writes what the directed sequences give on a machine, which is made in that folder.
#include <fnmatch.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include "platform/machine/machine.h"
#include "tests/conformance/generate.h"
#include "tests/conformance/player.h"

namespace qb::conformance {
namespace {

namespace fs = std::filesystem;

std::string ReadFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

class MachineWorld final : public World {
 public:
  explicit MachineWorld(const fs::path& folder) {
    std::string problem;
    machine_ = machine::Machine::Open(folder.string(), problem);
    if (machine_ == nullptr) {
      std::fprintf(stderr, "%s\n", problem.c_str());
      std::exit(2);
    }
    machine_->gate().SetRecording(false);
    machine_->SetProgramFolder("C:\\helper");
    machine_->OutsideProgram("end.exe", 7, 3);
  }
  Platform& platform() override { return machine_->platform(); }
  WindowHandle OpenWindow(const std::string& class_name, const std::string& title, bool own, Heard heard) override {
    if (!own) return static_cast<WindowHandle>(machine_->WindowOpen(class_name, title, 0));
    machine::OwnWindow actions;
    actions.message = std::move(heard);
    const WindowHandle window = machine_->OwnWindowCreate(class_name, title, std::move(actions));
    machine_->OwnWindowState(window, true, title);
    return window;
  }
  void CloseWindow(WindowHandle window) override {
    if (!machine_->WindowClose(static_cast<std::uint64_t>(window))) machine_->OwnWindowDestroy(window);
  }
  void AddToCache(const std::string& url, std::uint32_t type) override { machine_->CacheAdd({url, type, {}}); }
  void MakeLink(const std::string& path, const std::string& target) override { machine_->MakeLink(path, target); }
  std::size_t OpenHandles() const { return machine_->OpenHandles(); }

 private:
  std::unique_ptr<machine::Machine> machine_;
};

// A difference that is known: patterns of the call and of what each side gives. After one that leaves the two in
// different states the rest of its sequence is not compared. `before` is a pattern of a call that must stand earlier.
struct Exception {
  std::string call, before, machine, windows;
  bool ends = false;
  std::size_t met = 0;
};

// Lines "CALL [<< EARLIER CALL] | MACHINE | WINE | goes on or ends | who is right | reason".
std::vector<Exception> ReadExceptions(const std::string& text) {
  std::vector<Exception> exceptions;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line.front() == ';') continue;
    std::vector<std::string> fields;
    for (std::size_t at = 0; at <= line.size();) {
      const std::size_t cut = std::min(line.find(" | ", at), line.size());
      fields.push_back(line.substr(at, cut - at));
      at = cut + 3;
    }
    const bool told = fields.size() == 6 && (fields[3] == "ends" || fields[3] == "goes on") &&
                      (fields[4] == "machine" || fields[4] == "Wine" || fields[4] == "neither");
    if (!told) {
      std::fprintf(stderr, "An exception that cannot be read: %s\n", line.c_str());
      std::exit(2);
    }
    const std::size_t behind = std::min(fields[0].find(" << "), fields[0].size());
    const std::string before = fields[0].substr(std::min(behind + 4, fields[0].size()));
    exceptions.push_back({fields[0].substr(0, behind), before, fields[1], fields[2], fields[3] == "ends", 0});
  }
  return exceptions;
}

struct Difference {
  Sequence sequence;  // as far as the first call that differs
  std::string machine, windows;
};

class Comparison {
 public:
  Comparison(const fs::path& tests, fs::path drive, const fs::path& machine)
      : drive_(std::move(drive)), exceptions_(ReadExceptions(ReadFile(tests / "exceptions.txt"))), world_(machine) {}

  // Plays all on both sides; the first difference of each sequence, if it has one.
  std::vector<std::optional<Difference>> Compare(const std::vector<Sequence>& sequences);
  // Leaves calls out as long as what differs stays the same.
  void Shrink(std::vector<Difference>& differences);

  std::size_t compared() const { return compared_; }
  const std::vector<Exception>& exceptions() const { return exceptions_; }
  std::vector<Exception>& exceptions() { return exceptions_; }

 private:
  std::map<std::string, std::vector<std::string>> PlayOnWindows(const std::vector<Sequence>& sequences) const;
  std::optional<Difference> FirstDifference(const Sequence& sequence, const std::vector<std::string>& machine,
                                            const std::vector<std::string>& windows);

  fs::path drive_;
  std::vector<Exception> exceptions_;
  MachineWorld world_;
  std::size_t compared_ = 0, played_ = 0;
};

// A link that a sequence makes is one of the host.
void MakeLinks(const fs::path& drive, const Sequence& sequence) {
  for (const std::string& line : sequence.lines) {
    std::istringstream in(line);
    std::string operation, path, target;
    in >> operation >> path >> target;
    if (operation != "MakeLink") continue;
    const fs::path folder = drive / "seq" / sequence.name / "in";
    fs::create_directories(folder);
    fs::create_symlink(target.substr(2), folder / path.substr(2));  // both "@\name"
  }
}

std::map<std::string, std::vector<std::string>> Comparison::PlayOnWindows(
    const std::vector<Sequence>& sequences) const {
  std::ofstream out(drive_ / "sequences.txt", std::ios::binary);
  for (const Sequence& sequence : sequences) {
    MakeLinks(drive_, sequence);
    out << "# " << sequence.name << '\n';
    for (const std::string& line : sequence.lines) out << line << '\n';
  }
  out.close();
  fs::remove(drive_ / "transcript.txt");
  const std::size_t seconds = 300 + sequences.size() / 10;  // some five times what it takes
  const int status =
      std::system(("timeout " + std::to_string(seconds) +
                   " wine 'C:\\conformance_windows.exe' 'C:\\sequences.txt' 'C:\\transcript.txt' >/dev/null 2>&1")
                      .c_str());
  if (status != 0) std::fprintf(stderr, "The player under Wine ended with status %d.\n", status);
  std::map<std::string, std::vector<std::string>> transcript;
  for (Sequence& played : ReadSequences(ReadFile(drive_ / "transcript.txt"))) {
    transcript[played.name] = std::move(played.lines);
  }
  return transcript;
}

std::optional<Difference> Comparison::FirstDifference(const Sequence& sequence, const std::vector<std::string>& machine,
                                                      const std::vector<std::string>& windows) {
  auto matches = [](const std::string& pattern, const std::string& text) {
    return fnmatch(pattern.c_str(), text.c_str(), FNM_NOESCAPE) == 0;
  };
  auto upto = [&](std::size_t i) {
    return Sequence{sequence.name,
                    {sequence.lines.begin(), sequence.lines.begin() + static_cast<std::ptrdiff_t>(i) + 1}};
  };
  for (std::size_t i = 0; i < machine.size(); ++i) {
    if (i >= windows.size()) return Difference{upto(i), machine[i], "nothing: the player ended"};
    ++compared_;
    if (machine[i] == windows[i]) continue;
    auto known = std::find_if(exceptions_.begin(), exceptions_.end(), [&](const Exception& row) {
      const auto here = sequence.lines.begin() + static_cast<std::ptrdiff_t>(i);
      return matches(row.call, *here) && matches(row.machine, machine[i]) && matches(row.windows, windows[i]) &&
             (row.before.empty() || std::any_of(sequence.lines.begin(), here,
                                                [&](const std::string& line) { return matches(row.before, line); }));
    });
    if (known == exceptions_.end()) return Difference{upto(i), machine[i], windows[i]};
    ++known->met;
    if (known->ends) break;
  }
  return std::nullopt;
}

std::vector<std::optional<Difference>> Comparison::Compare(const std::vector<Sequence>& sequences) {
  std::vector<Sequence> numbered = sequences;
  for (Sequence& sequence : numbered) sequence.name = std::to_string(1000000 + played_++);  // all of one length
  auto transcript = PlayOnWindows(numbered);
  Player player(world_);
  std::vector<std::optional<Difference>> differences;
  for (const Sequence& sequence : numbered) {
    const auto machine = player.Play(sequence);
    differences.push_back(FirstDifference(sequence, machine, transcript[sequence.name]));
    if (world_.OpenHandles() != 0 && !differences.back()) {
      differences.back() = Difference{sequence, "a handle stays open", "none does"};
    }
  }
  return differences;
}

void Comparison::Shrink(std::vector<Difference>& differences) {
  for (std::size_t shortened = differences.size(); shortened != 0;) {
    // One call less of each, in every place; all tries of a round are one run.
    std::vector<Sequence> tries;
    std::vector<std::size_t> of;
    for (std::size_t i = 0; i < differences.size(); ++i) {
      const Sequence& whole = differences[i].sequence;
      for (std::size_t at = 0; at + 1 < whole.lines.size(); ++at) {
        tries.push_back(whole);
        tries.back().lines.erase(tries.back().lines.begin() + static_cast<std::ptrdiff_t>(at));
        of.push_back(i);
      }
    }
    shortened = 0;
    const auto outcomes = Compare(tries);
    for (std::size_t t = 0; t < tries.size(); ++t) {
      Difference& known = differences[of[t]];
      const auto& found = outcomes[t];
      const bool same = found && found->machine == known.machine && found->windows == known.windows &&
                        found->sequence.lines.back() == known.sequence.lines.back();
      if (!same || found->sequence.lines.size() >= known.sequence.lines.size()) continue;
      known.sequence.lines = found->sequence.lines;
      ++shortened;
    }
  }
}

void Print(const Difference& difference) {
  std::printf("FAIL %s\n", difference.sequence.name.c_str());
  for (const std::string& line : difference.sequence.lines) std::printf("     %s\n", line.c_str());
  std::printf("       machine: %s\n       Windows: %s\n", difference.machine.c_str(), difference.windows.c_str());
}

std::vector<Sequence> DirectedSequences(const fs::path& tests) {
  const std::set<fs::path> files{fs::directory_iterator(tests / "sequences"), {}};
  std::string all;
  for (const fs::path& file : files) all += ReadFile(file);
  return ReadSequences(all);
}

int WriteTranscript(const fs::path& tests, const fs::path& folder) {
  MachineWorld world(folder);
  Player player(world);
  for (const Sequence& sequence : DirectedSequences(tests)) {
    std::printf("# %s\n", sequence.name.c_str());
    const auto outcomes = player.Play(sequence);
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
      std::printf("%s -> %s\n", sequence.lines[i].c_str(), outcomes[i].c_str());
    }
  }
  return 0;
}

int Run(const fs::path& tests, const fs::path& drive, std::uint32_t seed, std::uint32_t random) {
  Comparison comparison(tests, drive, drive / ".." / "machine");
  std::size_t passed = 0, failed = 0;

  const std::vector<Sequence> directed = DirectedSequences(tests);
  const auto outcomes = comparison.Compare(directed);
  for (std::size_t i = 0; i < directed.size(); ++i) {
    ++(outcomes[i] ? failed : passed);
    if (outcomes[i])
      Print({{directed[i].name, outcomes[i]->sequence.lines}, outcomes[i]->machine, outcomes[i]->windows});
  }
  for (const Exception& exception : comparison.exceptions()) {
    ++(exception.met == 0 ? failed : passed);
    if (exception.met == 0)
      std::printf("FAIL an exception that no longer occurs: %s | %s\n", exception.call.c_str(),
                  exception.machine.c_str());
  }
  const std::size_t of_directed = comparison.compared();

  std::vector<Sequence> sequences;
  std::map<std::string, Difference> differing;  // of those that differ alike one is enough to look at
  Generator generator(ReadFile(tests / "words.txt"));
  for (std::uint32_t number = 0; number < random; ++number) {
    sequences.push_back(generator.RandomSequence(seed, number));
  }
  const auto found = comparison.Compare(sequences);
  const std::size_t of_random = comparison.compared() - of_directed;
  for (std::uint32_t i = 0; i < random; ++i) {
    ++(found[i] ? failed : passed);
    if (!found[i]) continue;
    const std::string& line = found[i]->sequence.lines.back();
    Difference& kept = differing[line.substr(0, line.find(' ')) + found[i]->machine + found[i]->windows];
    kept = *found[i];
    kept.sequence.name = "random sequence " + std::to_string(i) + " of seed " + std::to_string(seed);
  }
  constexpr std::size_t kMostShown = 40;
  std::vector<Difference> shown;
  shown.reserve(differing.size());
  for (const auto& [kind, difference] : differing) shown.push_back(difference);
  shown.resize(std::min(shown.size(), kMostShown));
  comparison.Shrink(shown);
  for (const Difference& difference : shown) Print(difference);
  std::printf("%zu directed sequences, %zu calls compared; %u random ones of seed %u, %zu calls compared\n",
              directed.size(), of_directed, random, seed, of_random);
  std::printf("conformance: %zu passed, %zu failed\n", passed, failed);
  return failed == 0 ? 0 : 1;
}

}  // namespace
}  // namespace qb::conformance

int main(int count, char** arguments) {
  std::map<std::string, std::string> options{{"--seed", "1"}, {"--random", "2000"}};
  for (int i = 1; i + 1 < count; i += 2) options[arguments[i]] = arguments[i + 1];
  if (options.count("--tests") == 0 || options.count("--drive") + options.count("--machine") != 1) return 2;
  if (options.count("--machine") != 0)
    return qb::conformance::WriteTranscript(options["--tests"], options["--machine"]);
  auto number = [&](const char* name) { return static_cast<std::uint32_t>(std::stoul(options[name])); };
  return qb::conformance::Run(options["--tests"], options["--drive"], number("--seed"), number("--random"));
}
