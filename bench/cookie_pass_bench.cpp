// The cookie pass over 20,000 cache entries must not cost more with 2,000 keep rows than with 20, and must
// keep what the plain double loop over the same rows and entries keeps.
#include <memory>
#include <set>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "app/rehearse/console/console.h"
#include "bench/ratio.h"
#include "platform/machine/machine.h"
#include "tests/app/temp_folder.h"

namespace {

using qb::machine::Machine;

constexpr int kEntries = 20000;

std::vector<std::string> Urls() {
  std::vector<std::string> urls;
  for (int i = 0; i < kEntries; ++i) {
    urls.push_back("cookie:user@www.site" + std::to_string(i * 7919 % 50000) + ".example/path/" + std::to_string(i));
  }
  return urls;
}

std::vector<std::string> Rows(int count) {
  std::vector<std::string> rows;
  for (int i = 0; i < count; ++i) rows.push_back("site" + std::to_string(i * 13) + ".example");
  return rows;
}

std::set<std::string> KeptByPlainDoubleLoop(const std::vector<std::string>& urls,
                                            const std::vector<std::string>& rows) {
  std::set<std::string> kept;
  for (const std::string& url : urls) {
    bool hit = false;
    for (const std::string& row : rows) hit = hit || url.find(row) != std::string::npos;
    if (hit) kept.insert(url);
  }
  return kept;
}

class Cache {
 public:
  Cache(const std::vector<std::string>& urls, const std::vector<std::string>& rows) : urls_(urls), rows_(rows) {}

  void Make() {
    machine_.reset();
    folder_ = std::make_unique<qb::test::TempFolder>(std::filesystem::temp_directory_path());
    std::string problem;
    machine_ = Machine::Open((folder_->path() / "machine").string(), problem);
    if (machine_ == nullptr) throw std::runtime_error(problem);
    machine_->gate().SetRecording(false);
    for (const std::string& url : urls_) machine_->CacheAdd({url, 0x100001, ""});
    std::string list;
    // The cache pass cuts a row at its bracket.
    for (const std::string& row : rows_) list += row + "[1]\r\n";
    machine_->MakeFile("C:\\Users\\user\\AppData\\Local\\Quillbarrow\\qb.dat", list);
  }
  void Pass() {
    std::istringstream script("start\ndo Kill_Cache_Entries 2\n");
    std::ostringstream out, err;
    if (qb::rehearse::RunScript(*machine_, script, out, err) != qb::rehearse::Status::Held) {
      throw std::runtime_error(err.str());
    }
  }
  std::set<std::string> Kept() const {
    std::set<std::string> kept;
    for (const auto& entry : machine_->Cache()) kept.insert(entry.url);
    return kept;
  }

 private:
  const std::vector<std::string>& urls_;
  const std::vector<std::string>& rows_;
  std::unique_ptr<qb::test::TempFolder> folder_;
  std::unique_ptr<Machine> machine_;
};

}  // namespace

int main() {
  const std::vector<std::string> urls = Urls(), few = Rows(20), many = Rows(2000);
  Cache with_few(urls, few), with_many(urls, many);
  const int result = qb::bench::CompareRatio(
      {"20,000 entries, 20 keep rows", kEntries, [&] { with_few.Make(); }, [&] { with_few.Pass(); }},
      {"20,000 entries, 2,000 keep rows", kEntries, [&] { with_many.Make(); }, [&] { with_many.Pass(); }}, 1.2, 5);
  if (with_few.Kept() != KeptByPlainDoubleLoop(urls, few) || with_many.Kept() != KeptByPlainDoubleLoop(urls, many)) {
    std::puts("the pass and the plain double loop differ");
    return 1;
  }
  return result;
}
