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

// The Windows 95 family reads WININIT.INI at its start.
bool FileWay(std::int16_t version_code) {
  return version_code == 0 || version_code == 1 || version_code == 4;
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

IndexDat::Moved IndexDat::MovedFolders() const {
  return {UpperCase(needs_.folders.Get_Short_Path(needs_.products.Cookies())),
          UpperCase(needs_.folders.Get_Short_Path(needs_.products.Cache()))};
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
  if (needs_.ie_folders_moved) {
    const Moved moved = MovedFolders();
    for (const MovedRow& row : kMovedIndexes) {
      const std::string start = std::string(kDelete) + (row.cookies ? moved.cookies : moved.cache);
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
    const Moved moved = MovedFolders();
    std::vector<std::string> cookie_lines, cache_lines;
    for (std::string_view below : kWindowsIndexes) {
      (below == kWindowsIndexes[0] ? cookie_lines : cache_lines)
          .push_back(std::string(kDelete) + windows + std::string(below));
    }
    for (const MovedRow& row : kMovedIndexes) {
      (row.cookies ? cookie_lines : cache_lines)
          .push_back(std::string(kDelete) + (row.cookies ? moved.cookies : moved.cache) + std::string(row.below));
    }
    const std::vector<std::string>& dropped = kind == kTakeBackCookies ? cookie_lines : cache_lines;
    const std::vector<std::string> lines = ReadLines(path);
    const int number = needs_.channels.FreeNumber();
    bool written = Ok(needs_.channels.Open(number, work, ChannelMode::Output));
    if (written) {
      for (const std::string& line : lines) {
        if (!Holds(dropped, UpperCase(line))) written = Ok(needs_.channels.PrintLine(number, line)) && written;
      }
      StepOver(needs_.channels.Close(number));
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
