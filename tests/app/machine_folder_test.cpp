// What a folder may do to the rehearsal that is given it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <iterator>
#include <map>

#include "platform/machine/machine.h"
#include "tests/app/temp_folder.h"

namespace qb {
namespace {

using machine::Machine;

// Fails the test if it does not open.
std::unique_ptr<Machine> Opened(const std::filesystem::path& folder) {
  std::string problem;
  auto machine = Machine::Open(folder.string(), problem);
  EXPECT_NE(machine, nullptr) << problem;
  return machine;
}

std::string ContentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

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
  auto machine = Opened(folder.path());
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

// What a save leaves behind when the rehearsal ends in its middle, at each of its steps in turn.
TEST(MachineFolder, AnEndInTheMiddleOfASaveLeavesTheOldStateOrTheNewOne) {
  const std::string names[] = {"machine.ini", "registry.reg", "urlcache.ini"};
  test::TempFolder folder;
  std::string problem;
  std::map<std::string, std::string> old_text, new_text;
  auto read = [&](std::map<std::string, std::string>& texts) {
    for (const std::string& name : names) texts[name] = ContentOf(folder.path() / name);
  };
  auto machine = Opened(folder.path());
  ASSERT_TRUE(machine->Save(problem)) << problem;
  read(old_text);
  machine->SetUser("somebody else");
  machine->RegistryAddKey("HKCU\\Software\\New");
  machine->CacheAdd({"http://new.example/", 1, ""});
  ASSERT_TRUE(machine->Save(problem)) << problem;
  read(new_text);
  machine.reset();

  // How many are written beside the old ones, of the last one a half; whether they hold already; how many have their
  // names.
  const struct {
    int beside;
    bool written;
    int taken;
  } kEnds[] = {{1, false, 0}, {2, false, 0}, {3, false, 0}, {3, true, 0}, {3, true, 1}, {3, true, 2}};
  for (const auto& end : kEnds) {
    SCOPED_TRACE(testing::Message() << end.beside << end.written << end.taken);
    for (int i = 0; i < 3; ++i) {
      const bool taken = i > 0 && i <= end.taken;
      std::ofstream(folder.path() / names[i], std::ios::binary) << (taken ? new_text : old_text)[names[i]];
      if (i >= end.beside || taken) continue;
      const std::string text = new_text[names[i]];
      std::ofstream(folder.path() / (i == 0 && end.written ? "written" : names[i] + ".new"), std::ios::binary)
          << text.substr(0, end.written || i + 1 < end.beside ? text.size() : text.size() / 2);
    }
    machine = Opened(folder.path());
    std::map<std::string, std::string> found;
    read(found);
    EXPECT_EQ(found, end.written ? new_text : old_text);
    EXPECT_EQ(machine->ReadKey("HKCU\\Software\\New").has_value(), end.written);
    machine.reset();
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
      EXPECT_TRUE(entry.is_directory() || found.count(entry.path().filename().string()) == 1) << entry.path();
    }
  }
}

TEST(MachineFolder, JunctionInsideAJunctionIsThereTheNextTime) {
  test::TempFolder folder;
  std::string problem;
  auto machine = Opened(folder.path());
  ASSERT_TRUE(machine->Save(problem));
  machine.reset();
  // In this order the inner one is made first; it is saved behind the outer one.
  std::ofstream(folder.path() / "machine.ini", std::ios::app)
      << "\n[junctions]\nC:\\WINDOWS\\TEMP=C:\\Users\nC:\\windows=C:\\Users\n";
  std::string saved[2];
  for (std::string& content : saved) {
    machine = Opened(folder.path());
    ASSERT_TRUE(machine->Save(problem));
    machine.reset();
    content = ContentOf(folder.path() / "machine.ini");
  }
  EXPECT_NE(saved[0].find("TEMP=C:"), std::string::npos);
  EXPECT_EQ(saved[0], saved[1]);
}

}  // namespace
}  // namespace qb
