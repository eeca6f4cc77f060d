#include "cookies/keep_file.h"

#include "platform/utf16.h"

namespace qb {

namespace {

constexpr std::size_t kShortestEntry = 3;

}  // namespace

std::string KeepFilePath(const std::string& data_folder) {
  return data_folder + "\\qb.dat";
}

bool LoadKeepFile(Channels& channels, const std::string& path, std::vector<std::string>& entries) {
  entries.clear();
  const int number = channels.FreeNumber();
  if (!Ok(channels.Open(number, path, ChannelMode::Input))) return false;
  std::string entry;
  while (!channels.AtEnd(number) && Ok(channels.ReadField(number, entry))) entries.push_back(entry);
  StepOver(channels.Close(number));
  return true;
}

RuntimeError SaveKeepFile(Files& files, Channels& channels, const std::string& path,
                          const std::vector<std::string>& entries) {
  const std::string beside = path + ".new";
  const int number = channels.FreeNumber();
  if (auto error = channels.Open(number, beside, ChannelMode::Output); !Ok(error)) return error;
  RuntimeError outcome = RuntimeError::None;
  for (const std::string& entry : entries) {
    if (Utf16Length(entry) < kShortestEntry) continue;
    if (auto error = channels.PrintLine(number, entry); !Ok(error)) outcome = error;
  }
  StepOver(channels.Close(number));
  // A disk that is full, or an end in the middle, must not cost the list: what it kept would go in the next pass.
  if (Ok(outcome)) outcome = FromWindows(files.MoveFileExA(beside, path, kMoveReplaceExisting));
  if (!Ok(outcome)) StepOver(files.DeleteFileA(beside));
  return outcome;
}

}  // namespace qb
