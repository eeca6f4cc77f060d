// Any bytes as the files that the program reads: the keep list by fields, WININIT.INI by lines, and
// profiles.ini. What is read is never more than the bytes were, and what a save writes reads back the same.
#include <cstdint>

#include "cookies/keep_file.h"
#include "cookies/keep_matcher.h"
#include "environment/windows_folders.h"
#include "platform/utf16.h"
#include "tests/fuzz/opened_machine.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static qb::test::OpenMachine stage;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::string path = "C:\\list.dat";
  qb::test::Require(stage.machine->MakeFile(path, bytes));
  qb::Platform& platform = stage.machine->platform();
  qb::Channels channels(platform.files, platform.system);

  std::vector<std::string> rows;
  qb::test::Require(qb::LoadKeepFile(channels, path, rows));
  std::size_t total = 0;
  for (const std::string& row : rows) {
    total += qb::Utf16Length(row);  // a byte of the code page is one character, of up to three bytes
    qb::test::Require(row.find_first_of("\r\n,") == std::string::npos);
  }
  qb::test::Require(total <= size);
  const qb::KeepMatcher matcher(rows);
  bool plain_hit = false;
  for (const std::string& row : rows) plain_hit = plain_hit || bytes.find(row) != std::string::npos;
  qb::test::Require(matcher.HitIn(bytes) == plain_hit);

  qb::test::Require(Ok(channels.Open(1, path, qb::ChannelMode::Input)));
  std::string line;
  for (std::size_t rounds = 0; !channels.AtEnd(1); ++rounds) {
    qb::test::Require(Ok(channels.ReadLine(1, line)) && rounds <= size);
  }
  qb::StepOver(channels.Close(1));

  const qb::WindowsFolders folders(platform, channels);
  qb::test::Require(folders.Read_Ini_Value("Profile0", "Path", path).size() < 255);
  return 0;
}
