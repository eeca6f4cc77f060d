#include "kill/traces/index_dat.h"

#include <algorithm>

#include "runtime/folders.h"

namespace qb {

namespace {

// Below the user's profile folder. Deliberate: rows that stand twice, and rows in which index.dat stands
// in the middle of a path.
constexpr std::string_view kIndexFiles[] = {
    "\\Cookies\\index.dat",
    "\\Local Settings\\History\\History.IE5\\index.dat",
    "\\Local Settings\\History\\History.IE5\\MSHIST~1\\index.dat",
    "\\Local Settings\\Temporary Internet Files\\index.dat",
    "\\UserData\\index.dat",
    "\\Roaming\\Microsoft\\Windows\\Cookies\\index.dat",
    "\\Roaming\\Microsoft\\Windows\\Cookies\\Low\\index.dat",
    "\\Local\\Microsoft\\Windows\\History\\History.IE5\\index.dat",
    "\\Local\\Microsoft\\Windows\\History\\History.IE5\\Low\\index.dat",
    "\\Local\\Microsoft\\Windows\\History\\History.IE5\\index.dat",
    "\\Local\\Microsoft\\Windows\\History\\History.IE5\\index.dat\\MSHIST~1\\index.dat",
    "\\Local\\Microsoft\\Windows\\History\\History.IE5\\Low\\index.dat\\MSHIST~1\\index.dat",
    "\\Local\\Microsoft\\Windows\\Temporary Internet Files\\Content.IE5\\index.dat",
    "\\Local\\Microsoft\\Windows\\Temporary Internet Files\\Low\\Content.IE5\\index.dat",
    "\\Roaming\\Microsoft\\Internet Explorer\\UserData\\index.dat",
    "\\Roaming\\Microsoft\\Internet Explorer\\UserData\\Low\\index.dat",
};

constexpr std::string_view kSection = "[RENAME]";
constexpr std::string_view kDelete = "NUL=";  // the line asks for what follows to be deleted

// Below the Windows folder, which a line names as the system spells it.
constexpr std::string_view kWindowsIndexes[] = {"\\COOKIES\\INDEX.DAT", "\\TEMPOR~1\\INDEX.DAT",
                                                "\\TEMPOR~1\\CONTENT.IE5\\INDEX.DAT"};

// Below a moved folder: which, and what.
struct MovedRow {
  bool cookies;
  std::string_view below;
};
constexpr MovedRow kMovedIndexes[] = {{true, "INDEX.DAT"}, {false, "INDEX.DAT"}, {false, "CONTENT.IE5\\INDEX.DAT"}};

constexpr std::int16_t kTakeBackCookies = 0;
constexpr std::int16_t kTakeBackCache = 1;

// A line that the program writes, and the kind of taking back that leaves it.
struct OwnLine {
  std::string line;
  std::int16_t stays_with;
};

// The Windows 95 family reads WININIT.INI at its start.
bool FileWay(std::int16_t version_code) {
  return version_code == 0 || version_code == 1 || version_code == 4;
}

// A line's start, up to the name of a file in a moved folder.
std::string MovedStart(const ShortFolders& folders, const MovedRow& row) {
  return std::string(kDelete) + UpperCase(row.cookies ? folders.cookies : folders.cache);
}

bool Holds(const std::vector<std::string>& lines, const std::string& line) {
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

}  // namespace

void IndexDat::TakeBackUnlessTicked(std::string_view other_box, std::int16_t kind) {
  if (!display_.Ticked(other_box)) Clear_Auto_Exec2(kind);
}

void IndexDat::Schedule() {
  if (FileWay(needs_.folders.Get_Version_Code()))
    Schedule_Index_Dat_WinInit();
  else
    Schedule_Index_Dat_NT(1);
}

void IndexDat::Schedule_Index_Dat_NT(std::int16_t /*flag*/) {
  if (scheduled_) return;
  const std::string profile = needs_.folders.Get_Special_Folder(kUserProfile);
  for (std::string_view below : kIndexFiles) {
    // Deliberate: the new name is this one-character text and no null pointer.
    StepOver(needs_.platform.files.MoveFileExA(profile + std::string(below), "1", kMoveDelayUntilReboot));
  }
  scheduled_ = true;
  needs_.history_removed.Add(1);
}

std::vector<std::string> IndexDat::ReadLines(const std::string& path) const {
  std::vector<std::string> lines;
  const int number = needs_.channels.FreeNumber();
  if (!Ok(needs_.channels.Open(number, path, ChannelMode::Input))) return lines;
  std::string line;
  while (!needs_.channels.AtEnd(number) && Ok(needs_.channels.ReadLine(number, line))) lines.push_back(line);
  StepOver(needs_.channels.Close(number));
  return lines;
}

bool IndexDat::LacksClosingLineEnd(const std::string& path) const {
  const int number = needs_.channels.FreeNumber();
  if (!Ok(needs_.channels.Open(number, path, ChannelMode::BinaryInput))) return false;
  const std::uint64_t length = needs_.channels.Length(number).value_or(0);
  std::string last;
  if (length > 0) StepOver(needs_.channels.Get(number, length, 1, last));
  StepOver(needs_.channels.Close(number));
  return !last.empty() && last != "\r" && last != "\n";
}

void IndexDat::Schedule_Index_Dat_WinInit() {
  const std::string windows = needs_.folders.Get_Windows_Dir();
  if (windows.empty()) return needs_.history_removed.Add(1);  // the file would be one in the root of the current drive
  const std::string path = windows + "\\WININIT.INI";
  std::vector<std::string> seen;
  if (needs_.channels.CanOpen(path)) seen = ReadLines(path);
  for (std::string& line : seen) line = UpperCase(line);

  std::vector<std::string> missing;
  if (!Holds(seen, std::string(kSection))) missing.emplace_back(kSection);
  for (std::string_view below : kWindowsIndexes) {
    // Deliberate: the folder goes into the comparison as the system spells it.
    const std::string line = std::string(kDelete) + windows + std::string(below);
    if (!Holds(seen, line)) missing.push_back(line);
  }
  if (needs_.short_folders.ie_folders_moved) {
    for (const MovedRow& row : kMovedIndexes) {
      const std::string start = MovedStart(needs_.short_folders, row);
      // Deliberate: what is looked for has a doubled backslash and what is written has none, so these
      // lines are added at each run.
      if (!Holds(seen, start + "\\" + std::string(row.below))) missing.push_back(start + std::string(row.below));
    }
  }
  // Somebody's last line must not run together with the first of these.
  const bool line_open = LacksClosingLineEnd(path);
  const int number = needs_.channels.FreeNumber();
  if (Ok(needs_.channels.Open(number, path, ChannelMode::Append))) {
    if (line_open) StepOver(needs_.channels.PrintLine(number, ""));
    for (const std::string& line : missing) StepOver(needs_.channels.PrintLine(number, line));
    StepOver(needs_.channels.Close(number));
  }
  needs_.history_removed.Add(1);
}

void IndexDat::Clear_Auto_Exec2(std::int16_t kind) {
  const std::string windows = needs_.folders.Get_Windows_Dir();
  const std::string path = windows + "\\WININIT.INI";
  const std::string work = windows + "\\WININIT.QB";
  if (!windows.empty() && needs_.channels.CanOpen(path)) {
    std::vector<OwnLine> own;
    for (std::string_view below : kWindowsIndexes) {
      const std::int16_t stays = below == kWindowsIndexes[0] ? kTakeBackCache : kTakeBackCookies;
      own.push_back({std::string(kDelete) + windows + std::string(below), stays});
    }
    for (const MovedRow& row : kMovedIndexes) {
      own.push_back({MovedStart(needs_.short_folders, row) + std::string(row.below),
                     row.cookies ? kTakeBackCache : kTakeBackCookies});
    }
    auto stays = [&](const std::string& line) {
      const std::string upper = UpperCase(line);
      // The first that hits decides: with folders that are equal, or empty, more than one does.
      auto hit = std::find_if(own.begin(), own.end(), [&](const OwnLine& test) { return test.line == upper; });
      return hit == own.end() || hit->stays_with == kind;
    };
    const std::vector<std::string> lines = ReadLines(path);
    const int number = needs_.channels.FreeNumber();
    bool written = Ok(needs_.channels.Open(number, work, ChannelMode::Output));
    if (written) {
      for (const std::string& line : lines) {
        if (stays(line)) written = Ok(needs_.channels.PrintLine(number, line)) && written;
      }
      StepOver(needs_.channels.Close(number));
      if (!written) StepOver(DeleteFiles(needs_.platform.files, work));
    }
    // The old file only goes once the new one is whole.
    if (written) {
      StepOver(needs_.platform.files.SetFileAttributesA(path, 0));
      StepOver(DeleteFiles(needs_.platform.files, path));
      StepOver(needs_.platform.files.MoveFileExA(work, path, 0));
    }
  }
  needs_.history_removed.Add(1);
}

std::span<const NamedRoutine<IndexDat>> IndexDat::Routines() {
  static constexpr NamedRoutine<IndexDat> kRoutines[] = {
      {"Schedule_Index_Dat_WinInit", &IndexDat::Schedule_Index_Dat_WinInit},
  };
  return kRoutines;
}

}  // namespace qb
