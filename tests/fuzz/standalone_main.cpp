// Feeds a fuzz target without a fuzzing engine: the corpus first, then mutations of it in a stream that is
// the same each time. Usage: TARGET RUNS [FILE-OR-FOLDER…]
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::string ReadAll(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

std::vector<std::string> LoadCorpus(int count, char** paths) {
  std::vector<fs::path> files;
  for (int i = 0; i < count; ++i) {
    if (!fs::is_directory(paths[i])) {
      files.emplace_back(paths[i]);
      continue;
    }
    for (const auto& entry : fs::directory_iterator(paths[i])) files.push_back(entry.path());
  }
  // The order in which a folder lists differs from one host to the next.
  std::sort(files.begin(), files.end());
  std::vector<std::string> corpus{""};
  for (const fs::path& file : files) corpus.push_back(ReadAll(file));
  return corpus;
}

class Mutator {
 public:
  explicit Mutator(const std::vector<std::string>& corpus) : corpus_(corpus) {}

  std::string Next() {
    std::string input = Pick();
    for (std::size_t steps = Below(6) + 1; steps > 0; --steps) Change(input);
    return input;
  }

 private:
  std::size_t Below(std::size_t bound) { return static_cast<std::size_t>(random_() % bound); }
  const std::string& Pick() { return corpus_[Below(corpus_.size())]; }

  void Change(std::string& input) {
    std::size_t at = Below(input.size() + 1);
    std::size_t length = Below(16) + 1;
    switch (Below(6)) {
      case 0:
        input.erase(at, length);
        break;
      case 1:
        input.insert(at, 1, static_cast<char>(Below(256)));
        break;
      case 2:
        if (at < input.size()) input[at] = static_cast<char>(input[at] ^ (1 << Below(8)));
        break;
      case 3:
        input.insert(at, input.substr(Below(input.size() + 1), length));
        break;
      case 4: {
        const std::string& other = Pick();
        input.insert(at, other.substr(Below(other.size() + 1), length * 8));
        break;
      }
      default: {
        static constexpr const char* kEdges[] = {"0", "-1", "65535", "2147483648", "4294967296", "\"", "\\", "\r\n"};
        input.insert(at, kEdges[Below(std::size(kEdges))]);
        break;
      }
    }
  }

  const std::vector<std::string>& corpus_;
  std::mt19937_64 random_{20190601};
};

void Feed(const std::string& input) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

}  // namespace

int main(int argc, char** argv) {
  int runs = argc > 1 ? std::atoi(argv[1]) : 0;
  if (runs <= 0) {
    std::cerr << "usage: " << argv[0] << " RUNS [FILE-OR-FOLDER...]\n";
    return 2;
  }
  std::vector<std::string> corpus = LoadCorpus(argc - 2, argv + 2);
  for (const std::string& input : corpus) Feed(input);
  Mutator mutator(corpus);
  for (int i = 0; i < runs; ++i) Feed(mutator.Next());
  std::cout << corpus.size() + static_cast<std::size_t>(runs) << " inputs\n";
  return 0;
}
