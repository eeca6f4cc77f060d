#include "tests/conformance/player.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace qb::conformance {

namespace {

constexpr std::uint64_t kNoHandle = 0xBAD0;

struct Word {
  const char* word;
  std::uint64_t number;
};
constexpr Word kWords[] = {{"read", kGenericRead},
                           {"write", kGenericWrite},
                           {"both", kGenericRead | kGenericWrite},
                           {"new", kCreateNew},
                           {"always", kCreateAlways},
                           {"existing", kOpenExisting},
                           {"either", kOpenAlways},
                           {"folders", 0x02000000},  // FILE_FLAG_BACKUP_SEMANTICS
                           {"begin", 0},
                           {"current", 1},
                           {"end", 2},
                           {"all", kKeyAllAccess}};

// "{41*300}" and "{0}" as the bytes that they stand for.
std::string Expanded(std::string_view word) {
  std::string text;
  for (std::size_t i = 0; i < word.size(); ++i) {
    const std::size_t close = word[i] == '{' ? word.find('}', i) : std::string_view::npos;
    if (close == std::string_view::npos) {
      text += word[i];
      continue;
    }
    const std::string inside(word.substr(i + 1, close - i - 1));
    i = close;
    if (inside.empty()) continue;
    const std::size_t star = inside.find('*');
    const auto byte = static_cast<char>(std::strtoul(inside.c_str(), nullptr, 16));
    text.append(star == std::string::npos ? 1 : std::strtoul(inside.c_str() + star + 1, nullptr, 10), byte);
  }
  return text;
}

}  // namespace

std::string Visible(std::string_view text) {
  std::string shown;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    std::size_t run = 1;
    while (i + run < text.size() && text[i + run] == text[i]) ++run;
    char form[32];
    if (run > 8)
      std::snprintf(form, sizeof form, "{%02x*%zu}", byte, run);
    else if (byte <= 0x20 || byte >= 0x7F || byte == '{' || byte == '}')
      std::snprintf(form, sizeof form, "{%02x}", byte);
    else
      std::snprintf(form, sizeof form, "%c", byte);
    if (run > 8) i += run - 1;
    shown += form;
  }
  return text.empty() ? "{}" : shown;
}

std::string Show(Error error) {
  return Ok(error) ? "ok" : "error " + std::to_string(static_cast<std::uint32_t>(error));
}

std::vector<Sequence> ReadSequences(const std::string& text) {
  std::vector<Sequence> sequences;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line.front() == ';') continue;
    if (line.front() == '#')
      sequences.push_back({line.substr(2), {}});
    else
      sequences.back().lines.push_back(line);
  }
  return sequences;
}

std::string Player::Text(std::size_t i) const {
  const std::string& word = words_.at(i);
  if (word.front() == '$') {
    auto kept = texts_.find(word.substr(1));
    return kept == texts_.end() ? std::string() : kept->second;
  }
  return word.front() == '@' ? folder_ + Expanded(word.substr(1)) : Expanded(word);
}

std::optional<std::string> Player::MaybeText(std::size_t i) const {
  return Given(i) ? std::optional(Text(i)) : std::nullopt;
}

std::uint64_t Player::Number(std::size_t i) const {
  const std::string& word = words_.at(i);
  for (const Word& row : kWords) {
    if (word == row.word) return row.number;
  }
  const std::uint64_t magnitude = std::strtoull(word.c_str() + (word.front() == '-' ? 1 : 0), nullptr, 0);
  return word.front() == '-' ? ~magnitude + 1 : magnitude;
}

void Player::Keep(std::size_t i, std::uint64_t handle) {
  const std::string& slot = words_.at(i);
  slots_[slot] = handle;
  const std::pair opened(slot.front(), handle);
  if (std::find(open_.begin(), open_.end(), opened) == open_.end()) {
    open_.push_back(opened);
  }
}

std::string Player::Closed(std::size_t i, Error error) {
  const std::string& slot = words_.at(i);
  auto found = slots_.find(slot);
  if (Ok(error) && found != slots_.end()) {
    const std::uint64_t handle = found->second;
    std::erase(open_, std::pair(slot.front(), handle));
    // Windows may give the number to the next that is opened. A search and a context are pointers, which nobody checks.
    for (auto& [name, held] : slots_) {
      if (name.front() != slot.front() || held != handle) continue;
      held = slot.front() == 's' ? ~std::uint64_t{0} : slot.front() == 'c' || slot.front() == 'u' ? 0 : kNoHandle;
    }
  }
  return Show(error);
}

std::string Player::SlotOf(std::uint64_t handle) const {
  for (const auto& [name, held] : slots_) {
    if (held == handle) return name;
  }
  return handle == 0 ? "none" : "other";
}

std::string Player::PlayLine(const std::string& line) {
  std::istringstream in(line);
  std::string name;
  in >> name;
  words_.clear();
  for (std::string word; in >> word;) words_.push_back(word);
  const Row* row = FindRow(name);
  if (row == nullptr || std::string_view(row->kinds).size() != words_.size()) return "no such call";
  return row->play(*this);
}

std::vector<std::string> Player::Play(const Sequence& sequence) {
  folder_ = "C:\\seq\\" + sequence.name + "\\in";  // what is done to its ".." touches no other
  Files& files = on().files;
  StepOver(files.CreateDirectoryA("C:\\seq"));
  StepOver(files.CreateDirectoryA(folder_.substr(0, folder_.rfind('\\'))));
  StepOver(files.CreateDirectoryA(folder_));
  StepOver(files.SetCurrentDirectoryA(folder_));
  auto key = on().registry.RegCreateKeyA(KeyHandle::CurrentUser, "Software\\Conformance\\" + sequence.name);
  slots_ = {{"user", static_cast<std::uint64_t>(KeyHandle::CurrentUser)},
            {"machine", static_cast<std::uint64_t>(KeyHandle::LocalMachine)},
            {"k0", static_cast<std::uint64_t>(key.value)}};
  if (key.ok()) open_.emplace_back('k', slots_["k0"]);
  std::vector<std::string> outcomes;
  for (const std::string& line : sequence.lines) outcomes.push_back(PlayLine(line));
  CloseAll();
  return outcomes;
}

void Player::CloseAll() {
  for (const auto& [window, id] : timers_) StepOver(on().pump.KillTimer(window, id));
  while (!open_.empty()) {
    const auto [kind, handle] = open_.back();
    open_.pop_back();
    const std::string slot = std::string(1, kind) + '!';
    slots_[slot] = handle;
    for (const char* closer : {"fCloseHandle", "sFindClose", "kRegCloseKey", "hCloseProcess", "mCloseMutex",
                               "cCryptReleaseContext", "uFindCloseUrlCache", "iCoTaskMemFree", "wCloseWindow"}) {
      if (*closer == kind) PlayLine(std::string(closer + 1) + ' ' + slot + (kind == 'c' ? " 0" : ""));
    }
  }
  StepOver(on().files.SetCurrentDirectoryA("C:\\"));
  slots_.clear();
  open_.clear();
  texts_.clear();
  events_.clear();
  timers_.clear();
}

}  // namespace qb::conformance
