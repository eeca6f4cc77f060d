// What a folder may do to the rehearsal that is given it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <iterator>

#include "platform/machine/machine.h"
#include "tests/app/temp_folder.h"

namespace qb {
namespace {

using machine::Machine;

TEST(MachineFolder, ServesOneRehearsalAtATime) {
  test::TempFolder folder;
  const std::string path = (folder.path() / "machine").string();
  std::string problem;
  auto first = Machine::Open(path, problem);
  ASSERT_NE(first, nullptr) << problem;
  EXPECT_EQ(Machine::Open(path, problem), nullptr);
  EXPECT_EQ(problem, path + ": another rehearsal uses this machine");
  first.reset();
  EXPECT_NE(Machine::Open(path, problem), nullptr);
}

TEST(MachineFolder, WhatIsNoPlainFileIsRefused) {
  for (const char* name : {"machine.ini", "registry.reg", "urlcache.ini"}) {
    test::TempFolder folder;
    ASSERT_EQ(mkfifo((folder.path() / name).c_str(), 0600), 0);
    std::string problem;
    EXPECT_EQ(Machine::Open(folder.path().string(), problem), nullptr) << name;
    EXPECT_EQ(problem, std::string(name) + ": no plain file");
  }
}

TEST(MachineFolder, FullDiskKeepsTheOldFileAndNoHalfOne) {
  test::TempFolder folder;
  std::string problem;
  auto machine = Machine::Open(folder.path().string(), problem);
  ASSERT_NE(machine, nullptr) << problem;
  ASSERT_TRUE(machine->Save(problem)) << problem;
  machine->SetUser("somebody else");
  // To the writer a file that may not grow is a disk that is full.
  rlimit before = {};
  getrlimit(RLIMIT_FSIZE, &before);
  auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small = {16, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  const bool saved = machine->Save(problem);
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_FALSE(saved);
  EXPECT_TRUE(problem.starts_with("machine.ini: ")) << problem;
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "machine.ini.new"));
  machine.reset();
  EXPECT_NE(Machine::Open(folder.path().string(), problem), nullptr) << problem;
}

TEST(MachineFolder, JunctionInsideAJunctionIsThereTheNextTime) {
  test::TempFolder folder;
  std::string problem;
  auto machine = Machine::Open(folder.path().string(), problem);
  ASSERT_NE(machine, nullptr) << problem;
  ASSERT_TRUE(machine->Save(problem));
  machine.reset();
  // In this order the inner one is made first; it is saved behind the outer one.
  std::ofstream(folder.path() / "machine.ini", std::ios::app)
      << "\n[junctions]\nC:\\WINDOWS\\TEMP=C:\\Users\nC:\\windows=C:\\Users\n";
  std::string saved[2];
  for (std::string& content : saved) {
    machine = Machine::Open(folder.path().string(), problem);
    ASSERT_NE(machine, nullptr) << problem;
    ASSERT_TRUE(machine->Save(problem));
    machine.reset();
    std::ifstream file(folder.path() / "machine.ini");
    content.assign(std::istreambuf_iterator<char>(file), {});
  }
  EXPECT_NE(saved[0].find("TEMP=C:"), std::string::npos);
  EXPECT_EQ(saved[0], saved[1]);
}

}  // namespace
}  // namespace qb
