// The keep list: the sites whose Internet Explorer cookies survive a kill. The one in memory is the one that
// its editors change and the kill passes ask.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cookies/keep_matcher.h"
#include "runtime/channels.h"
#include "settings/settings.h"

namespace qb {

// The text before the first "["; a text without one cannot be cut, which is an error that callers step over.
std::optional<std::string> Strip_Cookie_Suffix(const std::string& text);

class KeepList {
 public:
  // `data_folder` is looked up at each use of the file.
  KeepList(Files& files, Channels& channels, Settings& settings, const std::string& data_folder)
      : files_(files), channels_(channels), settings_(settings), data_folder_(data_folder) {}

  // In the order of the list; duplicates are kept. Reads the file if that has not been done.
  const std::vector<std::string>& Rows();
  // Any edit, also one that is never saved, holds for the passes from here on.
  void SetRows(std::vector<std::string> rows);
  // Empties the list and reads the file into it, if there is one.
  void Load();
  // What the file holds now, without a change of the list; nothing without a file.
  std::vector<std::string> FileRows() const;
  // Writes the file, and stores SaveCookieCount. A file that cannot be written stays as it was; the count, which is of
  // all rows, also of those that are too short for the file, is stored all the same.
  void Save();
  // Edits that were not saved go: who asks next reads the file.
  void Forget() { loaded_ = false; }

  // Whether a cookie's entry in the URL cache is kept. `url` is in small letters. A row counts up to its "[", and
  // deliberately one without a "[" keeps every entry.
  bool KeepsCacheEntry(std::string_view url);
  // The same for a cookie's file; here a row counts in full. `path` is in small letters.
  bool KeepsFile(std::string_view path);

  // The rows are others now.
  std::function<void()> Changed;
  // The rows are asked for, and not in memory: whoever shows them may load itself, and them with it.
  std::function<void()> Needed;

 private:
  // Whether any row, in this form, stands in the text; `matcher` is the one of that form.
  bool AnyRowIn(std::string_view text, std::optional<KeepMatcher>& matcher,
                std::string (*form)(const std::string& row));

  Files& files_;
  Channels& channels_;
  Settings& settings_;
  const std::string& data_folder_;
  bool loaded_ = false;
  std::vector<std::string> rows_;
  // Made of the rows when first asked, gone when they change.
  std::optional<KeepMatcher> cut_rows_, whole_rows_;
};

}  // namespace qb
