// A machine in a folder of its own for each test, and what its tests ask again and again.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "platform/machine/machine.h"
#include "tests/app/temp_folder.h"

namespace qb::test {

class MachineTest : public ::testing::Test {
 protected:
  void SetUp() override { Reopen(); }

  std::filesystem::path HostFolder() const { return folder_.path() / "machine"; }
  std::filesystem::path Beside() const { return folder_.path(); }

  // What the next start of a rehearsal finds.
  void SaveAndReopen() {
    std::string problem;
    ASSERT_TRUE(machine_->Save(problem)) << problem;
    Reopen();
  }
  void Reopen() {
    machine_.reset();
    std::string problem;
    machine_ = machine::Machine::Open(HostFolder().string(), problem);
    ASSERT_NE(machine_, nullptr) << problem;
  }

  // A machine of the folder as it stands, if it can be one. The test's own is let go, as only one may hold the folder.
  std::unique_ptr<machine::Machine> TryOpenFolder(std::string& problem) {
    machine_.reset();
    return machine::Machine::Open(HostFolder().string(), problem);
  }

  machine::Machine& world() { return *machine_; }
  Files& files() { return machine_->platform().files; }
  Registry& registry() { return machine_->platform().registry; }
  Desktop& desktop() { return machine_->platform().desktop; }
  Pump& pump() { return machine_->platform().pump; }

  // The error of opening a file, which is closed again.
  Error TryOpen(std::string_view path, std::uint32_t access, std::uint32_t disposition = kOpenExisting,
                std::uint32_t attributes = 0) {
    auto file = files().CreateFileA(path, access, kShareRead | kShareWrite, disposition, attributes);
    if (file.ok()) {
      EXPECT_EQ(files().CloseHandle(file.value), Error::Success);
    }
    return file.error;
  }
  // The names that a pattern lists, in order.
  std::vector<std::string> Names(std::string_view pattern) {
    std::vector<std::string> names;
    auto first = files().FindFirstFileA(pattern);
    if (!first.ok()) return names;
    names.push_back(first.value.data.name);
    for (auto next = files().FindNextFileA(first.value.handle); next.ok();
         next = files().FindNextFileA(first.value.handle)) {
      names.push_back(next.value.name);
    }
    EXPECT_EQ(files().FindClose(first.value.handle), Error::Success);
    return names;
  }
  static std::string HostRead(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }
  static void HostWrite(const std::filesystem::path& path, std::string_view content) {
    std::ofstream(path, std::ios::binary) << content;
  }

 private:
  TempFolder folder_;
  std::unique_ptr<machine::Machine> machine_;
};

}  // namespace qb::test
