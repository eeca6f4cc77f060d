// The shredder: which blocks it writes where, what they hold, and what survives when a step fails.
#include "delete/shredder.h"

#include <map>
#include <set>

#include "tests/platform/machine/machine_test.h"

namespace qb {
namespace {

using machine::Gate;

class Shredder : public test::MachineTest {
 protected:
  static constexpr const char* kPath = "C:\\t\\a.db";

  void SetUp() override {
    MachineTest::SetUp();
    shredder_.emplace(world().platform(), life_);
    shredder_->Shred_Start = [this](std::int32_t passes) {
      events_.push_back("Shred_Start " + std::to_string(passes));
    };
    shredder_->Pass_Done = [this](std::int32_t pass) {
      events_.push_back("Pass_Done " + std::to_string(pass));
      contents_.push_back(world().Content(kPath).value_or(""));
    };
    shredder_->Shred_End = [this] { events_.emplace_back("Shred_End"); };
  }

  void Shred(std::size_t length, std::int32_t passes = 2) {
    ASSERT_TRUE(world().MakeFile(kPath, std::string(length, 'A')));
    events_.clear();
    contents_.clear();
    shredder_->p_SourceFile = kPath;
    shredder_->p_Passes = passes;
    StepOver(world().gate().TakeCalls());
    shredder_->File_Shred();
    calls_ = world().gate().TakeCalls();
  }
  std::vector<std::string> Lines(std::string_view operation) const {
    std::vector<std::string> lines;
    for (const Gate::RecordedCall& call : calls_) {
      if (call.operation == operation) lines.push_back(call.line);
    }
    return lines;
  }
  // Of each write, where it went and how long it was.
  std::vector<std::pair<std::uint64_t, std::size_t>> Writes() const {
    std::vector<std::pair<std::uint64_t, std::size_t>> writes;
    const auto number_behind = [](const std::string& line, const char* text) {
      return std::stoull(line.substr(line.find(text) + std::string_view(text).size()));
    };
    std::uint64_t place = 0;
    for (const Gate::RecordedCall& call : calls_) {
      if (call.operation == "SetFilePointer") place = number_behind(call.line, ") = ");
      if (call.operation == "WriteFile") writes.emplace_back(place, number_behind(call.line, "<"));
    }
    return writes;
  }
  static std::vector<std::string> Events(std::int32_t passes) {
    std::vector<std::string> events{"Shred_Start " + std::to_string(passes)};
    for (std::int32_t pass = 1; pass <= passes; ++pass) events.push_back("Pass_Done " + std::to_string(pass));
    events.emplace_back("Shred_End");
    return events;
  }

  std::optional<clsShredder> shredder_;
  std::vector<std::string> events_, contents_;
  std::vector<Gate::RecordedCall> calls_;
  Lifetime life_;
};

TEST_F(Shredder, WritesTheBlocksOfItsTable) {
  const struct {
    std::size_t length, block;
  } cases[] = {{8, 1},           {9, 1},           {12, 2},          {13, 2},        {20, 2},        {28, 4},
               {1022, 128},      {1023, 128},      {1025, 128},      {8191, 128},    {8192, 128},    {8193, 1024},
               {65535, 1024},    {65536, 1024},    {65537, 8192},    {524287, 8192}, {524288, 8192}, {524289, 65536},
               {4194303, 65536}, {4194304, 65536}, {4194305, 524288}};
  constexpr std::size_t kPatterns = 8;
  for (const auto& c : cases) {
    Shred(c.length);
    const std::size_t whole = c.length / c.block, rest = c.length % c.block;
    std::vector<std::pair<std::uint64_t, std::size_t>> expected;
    for (int pass = 0; pass < 2; ++pass) {
      for (std::size_t block = 0; block < whole; ++block) expected.emplace_back(block * c.block, c.block);
      if (rest != 0) expected.emplace_back(whole * c.block, rest);
    }
    EXPECT_EQ(Writes(), expected) << c.length;
    EXPECT_EQ(events_, Events(2)) << c.length;
    EXPECT_EQ(world().Exists(kPath), "no") << c.length;
    // The patterns go round, through both passes, and the rest is the same in each.
    std::map<std::size_t, std::string> patterns;
    for (std::size_t pass = 0; pass < 2; ++pass) {
      ASSERT_EQ(contents_[pass].size(), c.length);
      for (std::size_t block = 0; block < whole; ++block) {
        const std::string bytes = contents_[pass].substr(block * c.block, c.block);
        const auto known = patterns.emplace((pass * whole + block) % kPatterns, bytes).first;
        ASSERT_EQ(known->second, bytes) << c.length << ", pass " << pass << ", block " << block;
      }
    }
    EXPECT_EQ(contents_[0].substr(whole * c.block), contents_[1].substr(whole * c.block));
    if (c.block >= 16) {
      std::set<std::string> different;
      for (const auto& [number, bytes] : patterns) different.insert(bytes);
      EXPECT_EQ(different.size(), patterns.size()) << c.length;
    }
  }
}

TEST_F(Shredder, OpensAndFlushesEachPassAsTold) {
  Shred(100, 3);
  EXPECT_EQ(Lines("FlushFileBuffers").size(), 3u);
  ASSERT_EQ(Lines("CreateFileA").size(), 3u);
  EXPECT_NE(Lines("CreateFileA")[0].find("CreateFileA(\"C:\\t\\a.db\", 1073741824, 1, null, 3, 128, null) = #"),
            std::string::npos);
  EXPECT_EQ(world().OpenHandles(), 0u);
  // 0 passes are one, and are so from then on.
  Shred(100, 0);
  EXPECT_EQ(events_, Events(1));
  EXPECT_EQ(shredder_->p_Passes, 1);
}

TEST_F(Shredder, LeavesAFileFrom2GiBOn) {
  ASSERT_TRUE(world().MakeFile(kPath, "x"));
  // Without content on the disk.
  for (std::uint64_t length : {0x7FFFFFFFull + 1, 0x100000000ull + 100}) {
    SaveAndReopen();
    const std::filesystem::path host = HostFolder() / "drives" / "C" / "t" / "a.db";
    std::filesystem::resize_file(host, length);
    Reopen();
    shredder_.emplace(world().platform(), life_);
    shredder_->p_SourceFile = kPath;
    shredder_->p_Passes = 1;
    shredder_->File_Shred();
    EXPECT_EQ(std::filesystem::file_size(host), length);
  }
}

TEST_F(Shredder, TakesWeakBytesWhereTheProviderFails) {
  for (const char* operation : {"CryptAcquireContextA", "CryptGenRandom", "CryptReleaseContext"}) {
    world().gate().SetFault(operation, 0, 5);
    Shred(100000, 1);
    world().gate().ClearFaults();
    EXPECT_EQ(events_, Events(1)) << operation;
    EXPECT_EQ(contents_[0].find('\xFF'), std::string::npos) << operation;
    EXPECT_GT(std::set<char>(contents_[0].begin(), contents_[0].end()).size(), 200u) << operation;
    EXPECT_EQ(world().Exists(kPath), "no") << operation;
  }
}

TEST_F(Shredder, TwoFilesShareNoBlock) {
  constexpr std::size_t kLength = 20000, kBlock = 1024;
  std::set<std::string> first;
  Shred(kLength, 1);
  for (std::size_t at = 0; at + kBlock <= kLength; at += kBlock) first.insert(contents_[0].substr(at, kBlock));
  EXPECT_EQ(first.size(), 8u);
  Shred(kLength, 1);
  for (std::size_t at = 0; at + kBlock <= kLength; at += kBlock) {
    EXPECT_EQ(first.count(contents_[0].substr(at, kBlock)), 0u);
  }
}

TEST_F(Shredder, ScatteredBlocksFollowNoOrder) {
  shredder_->p_Scattered = true;
  Shred(65536, 1);
  std::set<std::string> patterns;
  bool round = true;
  for (std::size_t block = 0; block < 64; ++block) {
    patterns.insert(contents_[0].substr(block * 1024, 1024));
    if (block >= 8 && contents_[0].substr(block * 1024, 1024) != contents_[0].substr((block - 8) * 1024, 1024)) {
      round = false;
    }
  }
  EXPECT_EQ(patterns.size(), 8u);
  EXPECT_FALSE(round);
}

}  // namespace
}  // namespace qb
