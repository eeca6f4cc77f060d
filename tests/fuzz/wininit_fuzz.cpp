// Any bytes as WININIT.INI: what others wrote stays as it was, in its order, while lines of our own are added
// and taken back; and a boot carries the file out without harm.
#include <algorithm>
#include <cstdint>
#include <sstream>
#include <vector>

#include "app/rehearse/console/console.h"
#include "runtime/text.h"
#include "tests/fuzz/opened_machine.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

const std::string kFile = "C:\\WINDOWS\\WININIT.INI";

struct Stage : qb::test::OpenMachine {
  Stage() {
    // The Windows 95 family, with the folders where it has them.
    Play(
        "windows 4.9 1\n"
        "reg add \"HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders\" Cookies sz "
        "C:\\WINDOWS\\Cookies\n"
        "mkdir C:\\WINDOWS\\Cookies\nmkdir \"C:\\WINDOWS\\Temporary Internet Files\"\n"
        "reg add \"HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders\" Cache sz "
        "\"C:\\WINDOWS\\Temporary Internet Files\"\n");
  }
  void Play(const std::string& script) {
    std::istringstream in(script);
    std::ostringstream out, err;
    qb::test::Require(qb::rehearse::RunScript(*machine, in, out, err) == qb::rehearse::Status::Held);
  }
};

// A line ends in CR LF, LF or CR.
std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
    lines.push_back(text.substr(start, end - start));
    start = end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
  }
  return lines;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Stage stage;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::string own[] = {"NUL=C:\\WINDOWS\\COOKIES\\INDEX.DAT", "NUL=C:\\WINDOWS\\TEMPOR~1\\INDEX.DAT",
                             "NUL=C:\\WINDOWS\\TEMPOR~1\\CONTENT.IE5\\INDEX.DAT"};
  qb::test::Require(stage.machine->MakeFile(kFile, bytes));
  stage.Play("start\ndo Schedule_Index_Dat_WinInit\n");
  const std::string scheduled = stage.machine->Content(kFile).value_or("");
  qb::test::Require(scheduled.compare(0, size, bytes) == 0);
  const std::vector<std::string> with_ours = Lines(scheduled);
  for (const std::string& line : own) {
    qb::test::Require(std::any_of(with_ours.begin(), with_ours.end(),
                                  [&](const std::string& there) { return qb::UpperCase(there) == line; }));
  }

  stage.Play("start\ndo Clear_Auto_Exec2 0\ndo Clear_Auto_Exec2 1\n");
  std::vector<std::string> expected = Lines(bytes);
  auto equals_any = [&own](const std::string& line) {
    return std::find(std::begin(own), std::end(own), qb::UpperCase(line)) != std::end(own);
  };
  expected.erase(std::remove_if(expected.begin(), expected.end(), equals_any), expected.end());
  auto is_section = [](const std::string& line) { return qb::UpperCase(line) == "[RENAME]"; };
  if (std::none_of(expected.begin(), expected.end(), is_section)) expected.push_back("[RENAME]");
  qb::test::Require(Lines(stage.machine->Content(kFile).value_or("")) == expected);

  stage.Play("reboot\nexpect exists C:\\WINDOWS\\WININIT.INI is no\n");
  return 0;
}
