#include "cookies/keep_list.h"

#include "cookies/keep_file.h"
#include "runtime/text.h"

namespace qb {

std::optional<std::string> Strip_Cookie_Suffix(const std::string& text) {
  const std::size_t bracket = text.find('[');
  if (bracket == std::string::npos) return std::nullopt;
  return text.substr(0, bracket);
}

const std::vector<std::string>& KeepList::Rows() {
  if (!loaded_ && Needed) Needed();
  if (!loaded_) Load();
  return rows_;
}

void KeepList::SetRows(std::vector<std::string> rows) {
  loaded_ = true;
  rows_ = std::move(rows);
  cut_rows_.reset();
  whole_rows_.reset();
  if (Changed) Changed();
}

void KeepList::Load() {
  SetRows(FileRows());
}

std::vector<std::string> KeepList::FileRows() const {
  std::vector<std::string> rows;
  StepOver(LoadKeepFile(channels_, KeepFilePath(data_folder_), rows));
  return rows;
}

void KeepList::Save() {
  const std::vector<std::string>& rows = Rows();
  StepOver(SaveKeepFile(files_, channels_, KeepFilePath(data_folder_), rows));
  settings_.SaveNumber(Setting::SaveCookieCount, static_cast<std::int32_t>(rows.size()));
}

bool KeepList::AnyRowIn(std::string_view text, std::optional<KeepMatcher>& matcher,
                        std::string (*form)(const std::string& row)) {
  const std::vector<std::string>& rows = Rows();
  if (!matcher) {
    std::vector<std::string> forms;
    forms.reserve(rows.size());
    for (const std::string& row : rows) forms.push_back(form(row));
    matcher.emplace(forms);
  }
  return matcher->HitIn(text);
}

bool KeepList::KeepsCacheEntry(std::string_view url) {
  // Deliberate: of a row that cannot be cut nothing is left, which then stands in every text.
  return AnyRowIn(url, cut_rows_,
                  [](const std::string& row) { return Strip_Cookie_Suffix(LowerCase(row)).value_or(std::string()); });
}

bool KeepList::KeepsFile(std::string_view path) {
  return AnyRowIn(path, whole_rows_, [](const std::string& row) { return LowerCase(row); });
}

}  // namespace qb
