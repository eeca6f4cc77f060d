// The cookie pass: with many rows on the keep list against few, and that it keeps what the plain double loop over the
// same rows and entries keeps. And the keep list's window against a sort of the same rows.
#include <set>

#include <optional>

#include "benches/machine_folder.h"
#include "benches/ratio.h"

namespace {

using qb::bench::MachineFolder;
using qb::bench::Timed;

constexpr int kEntries = 20000;
constexpr const char* kList = "C:\\Users\\user\\AppData\\Local\\Quillbarrow\\qb.dat";

std::vector<std::string> Urls(int count) {
  std::vector<std::string> urls;
  urls.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    urls.push_back("cookie:user@www.site" + std::to_string(i * 7919 % 50000) + ".example/path/" + std::to_string(i));
  }
  return urls;
}

std::vector<std::string> Rows(int count) {
  std::vector<std::string> rows;
  rows.reserve(static_cast<std::size_t>(count));
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
    folder_.emplace(qb::bench::kMemory);
    for (const std::string& url : urls_) folder_->machine().CacheAdd({url, 0x100001, ""});
    std::string list;
    // The cache pass cuts a row at its bracket.
    for (const std::string& row : rows_) list += row + "[1]\r\n";
    folder_->machine().MakeFile(kList, list);
  }
  void Pass() { folder_->Play("start\ndo Kill_Cache_Entries 2\n"); }
  Timed Work(const char* what) {
    return {what, [this] { Make(); }, [this] { Pass(); }};
  }
  std::set<std::string> Kept() const {
    std::set<std::string> kept;
    for (const auto& entry : folder_->machine().Cache()) kept.insert(entry.url);
    return kept;
  }

 private:
  const std::vector<std::string> urls_, rows_;
  mutable std::optional<MachineFolder> folder_;
};

// What the computer has must be read too; it has one cookie.
class KeepList {
 public:
  explicit KeepList(int rows) : rows_(rows) {}

  Timed Open() {
    return {"",
            [this] {
              folder_.emplace(qb::bench::kMemory);
              folder_->machine().CacheAdd({"Cookie:me@shop.test/", 0x100001, ""});
              folder_->machine().MakeFile(kList, Text());
              folder_->Play("");
            },
            [this] {
              folder_->Play("start\nchoose SftTabs1 0\nclick cmdSetCookies\nexpect get List2.ListCount is " +
                            std::to_string(rows_) + "\n");
            }};
  }
  Timed Sort() {
    return {"sort -f", [this] { std::ofstream(path_.path() / "rows", std::ios::binary) << Text(); },
            [this] {
              const std::string rows = qb::bench::Quoted(path_.path() / "rows");
              qb::bench::Command("sort -f " + rows + " > " + rows + ".sorted");
            }};
  }

 private:
  std::string Text() const {
    std::string text;
    for (const std::string& row : Rows(rows_)) text += row + "\r\n";
    return text;
  }

  int rows_;
  std::optional<MachineFolder> folder_;
  qb::test::TempFolder path_{qb::bench::kMemory};
};

}  // namespace

int main() {
  constexpr int kRows = 100000;
  constexpr int kShort = qb::bench::kMoreRounds;
  const std::vector<std::string> urls = Urls(kEntries), few = Rows(20), many = Rows(2000);
  // First, while this process is small: its memory is in the peaks.
  int missed = qb::bench::Growth(
      "cookie pass, 2,000 keep rows", kEntries / 4,
      [&](int entries) {
        const auto cache = std::make_shared<Cache>(Urls(entries), many);
        return qb::bench::Owned(cache, cache->Work(""));
      },
      kShort);
  missed += qb::bench::Growth(
      "keep list in its window", kRows / 16,
      [](int rows) {
        const auto grown = std::make_shared<KeepList>(rows);
        return qb::bench::Owned(grown, grown->Open());
      },
      kShort);
  Cache with_few(urls, few), with_many(urls, many);
  missed += qb::bench::Compare("cookie pass over 20,000 entries, 2,000 keep rows", with_many.Work(""),
                               {{with_few.Work("with 20 keep rows"), 1.2}}, kShort);
  if (with_few.Kept() != KeptByPlainDoubleLoop(urls, few) || with_many.Kept() != KeptByPlainDoubleLoop(urls, many)) {
    std::puts("cookie pass: it and the plain double loop differ");
    missed = 1;
  }
  KeepList list(kRows);
  missed += qb::bench::Compare("keep list of 100,000 rows in its window", list.Open(), {{list.Sort(), 0}}, kShort);
  return missed == 0 ? 0 : 1;
}
