// What a folder may do to the rehearsal that is given it.
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <map>

#include "tests/platform/machine/machine_test.h"

namespace qb {
namespace {

using MachineFolder = test::MachineTest;

TEST_F(MachineFolder, ServesOneRehearsalAtATime) {
  std::string problem;
  EXPECT_EQ(machine::Machine::Open(HostFolder().string(), problem), nullptr);
  EXPECT_EQ(problem, HostFolder().string() + ": another rehearsal uses this machine");
  EXPECT_NE(TryOpenFolder(problem), nullptr);
}

TEST_F(MachineFolder, WhatIsNoPlainFileIsRefused) {
  for (const char* name : {"machine.ini", "registry.reg", "urlcache.ini"}) {
    SaveAndReopen();
    std::filesystem::rename(HostFolder() / name, Beside() / name);
    ASSERT_EQ(mkfifo((HostFolder() / name).c_str(), 0600), 0);
    std::string problem;
    EXPECT_EQ(TryOpenFolder(problem), nullptr) << name;
    EXPECT_EQ(problem, std::string(name) + ": no plain file");
    std::filesystem::rename(Beside() / name, HostFolder() / name);
    Reopen();
  }
}

TEST_F(MachineFolder, FullDiskKeepsTheOldFileAndNoHalfOne) {
  SaveAndReopen();
  world().SetUser("somebody else");
  // To the writer a file that may not grow is a disk that is full.
  rlimit before = {};
  getrlimit(RLIMIT_FSIZE, &before);
  auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small = {16, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  std::string problem;
  const bool saved = world().Save(problem);
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_FALSE(saved);
  EXPECT_TRUE(problem.starts_with("machine.ini: ")) << problem;
  EXPECT_FALSE(std::filesystem::exists(HostFolder() / "machine.ini.new"));
  EXPECT_NE(TryOpenFolder(problem), nullptr) << problem;
}

// What a save leaves behind when the rehearsal ends in its middle, at each of its steps in turn.
TEST_F(MachineFolder, AnEndInTheMiddleOfASaveLeavesTheOldStateOrTheNewOne) {
  const std::string names[] = {"machine.ini", "registry.reg", "urlcache.ini"};
  std::map<std::string, std::string> old_text, new_text;
  auto read = [&](std::map<std::string, std::string>& texts) {
    for (const std::string& name : names) texts[name] = HostRead(HostFolder() / name);
  };
  SaveAndReopen();
  read(old_text);
  world().SetUser("somebody else");
  world().RegistryAddKey("HKCU\\Software\\New");
  world().CacheAdd({"http://new.example/", 1, ""});
  SaveAndReopen();
  read(new_text);

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
      HostWrite(HostFolder() / names[i], (taken ? new_text : old_text)[names[i]]);
      if (i >= end.beside || taken) continue;
      const std::string text = new_text[names[i]];
      HostWrite(HostFolder() / (i == 0 && end.written ? "written" : names[i] + ".new"),
                text.substr(0, end.written || i + 1 < end.beside ? text.size() : text.size() / 2));
    }
    Reopen();
    std::map<std::string, std::string> found;
    read(found);
    EXPECT_EQ(found, end.written ? new_text : old_text);
    EXPECT_EQ(world().ReadKey("HKCU\\Software\\New").has_value(), end.written);
    for (const auto& entry : std::filesystem::directory_iterator(HostFolder())) {
      EXPECT_TRUE(entry.is_directory() || found.count(entry.path().filename().string()) == 1) << entry.path();
    }
  }
}

TEST_F(MachineFolder, JunctionInsideAJunctionIsThereTheNextTime) {
  SaveAndReopen();
  // In this order the inner one is made first; it is saved behind the outer one.
  std::ofstream(HostFolder() / "machine.ini", std::ios::app)
      << "\n[junctions]\nC:\\WINDOWS\\TEMP=C:\\Users\nC:\\windows=C:\\Users\n";
  std::string saved[2];
  for (std::string& content : saved) {
    Reopen();
    SaveAndReopen();
    content = HostRead(HostFolder() / "machine.ini");
  }
  EXPECT_NE(saved[0].find("TEMP=C:"), std::string::npos);
  EXPECT_EQ(saved[0], saved[1]);
}

}  // namespace
}  // namespace qb
