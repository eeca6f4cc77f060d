// Plays sequences of platform operations: one call a line, and for each a line that tells what came out.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/platform.h"

namespace qb::conformance {

// What the user and other programs do, which no operation of the platform can.
class World {
 public:
  using Heard = std::function<void(std::uint32_t message, std::uint64_t wparam, std::int64_t lparam)>;

  virtual ~World() = default;
  virtual Platform& platform() = 0;
  // A window that is shown; one of the program itself tells which of its messages, from WM_USER on, it was sent.
  virtual WindowHandle OpenWindow(const std::string& class_name, const std::string& title, bool own, Heard heard) = 0;
  virtual void CloseWindow(WindowHandle window) = 0;
  virtual void AddToCache(const std::string& url, std::uint32_t type) = 0;
  // A link of the sequence's folder to a folder or file in it. On Windows whoever compares has made it before.
  virtual void MakeLink(const std::string& /*path*/, const std::string& /*target*/) {}
};

struct Sequence {
  std::string name;
  std::vector<std::string> lines;
};

// A sequence begins with a line "# name"; lines that begin with ; tell something to the reader.
std::vector<Sequence> ReadSequences(const std::string& text);

class Player {
 public:
  explicit Player(World& world) : world_(world) {}

  // Plays a whole sequence; gives as many lines. What is open at its end is closed.
  std::vector<std::string> Play(const Sequence& sequence);

  // For the operation that is played. Its arguments are counted from 0, without its name.
  Platform& on() { return world_.platform(); }
  World& world() { return world_; }
  std::vector<std::string>& events() { return events_; }
  // "{41*300}" in a word stands for that byte so many times, "@" at its front for the sequence's folder, "$t" alone
  // for what was kept under t.
  std::string Text(std::size_t i) const;
  std::optional<std::string> MaybeText(std::size_t i) const;  // none for "-"
  const std::string& Name(std::size_t i) const { return words_.at(i); }
  bool Given(std::size_t i) const { return words_.at(i) != "-"; }
  // A number, or one of the words that stand for some, as "read".
  std::uint64_t Number(std::size_t i) const;
  std::uint32_t Count(std::size_t i) const { return static_cast<std::uint32_t>(Number(i)); }
  template <typename Handle>
  Handle In(std::size_t i) const {
    auto slot = slots_.find(words_.at(i));
    return static_cast<Handle>(slot == slots_.end() ? 0 : slot->second);
  }
  // Puts a new handle into the slot that an argument names.
  void Keep(std::size_t i, std::uint64_t handle);
  template <typename Handle>
  std::string Opened(std::size_t i, const Result<Handle>& opened);
  void KeepText(std::size_t i, const std::string& text) { texts_[words_.at(i)] = text; }
  // The slot's handle was closed: it holds one that is none.
  std::string Closed(std::size_t i, Error error);
  // A timer to be killed at the end.
  void KeepTimer(WindowHandle window, std::uint32_t id) { timers_.emplace_back(window, id); }
  // Which slot holds a handle.
  std::string SlotOf(std::uint64_t handle) const;

 private:
  std::string PlayLine(const std::string& line);
  void CloseAll();

  World& world_;
  std::string folder_;
  std::vector<std::string> words_;                    // of the operation that is played
  std::map<std::string, std::uint64_t> slots_;        // handles by name: f1 is a file, k2 a key
  std::vector<std::pair<char, std::uint64_t>> open_;  // kind and handle, in order of opening
  std::map<std::string, std::string> texts_;          // what calls gave, for later ones
  std::vector<std::string> events_;                   // what the pump handed out
  std::vector<std::pair<WindowHandle, std::uint32_t>> timers_;
};

// A text with every byte visible, as the language writes it.
std::string Visible(std::string_view text);
std::string Show(Error error);
template <typename T>
std::string Show(const Result<T>& result) {
  return result.ok() ? "ok " + std::to_string(static_cast<std::uint64_t>(result.value)) : Show(result.error);
}

template <typename Handle>
std::string Player::Opened(std::size_t i, const Result<Handle>& opened) {
  if (opened.ok()) Keep(i, static_cast<std::uint64_t>(opened.value));
  return Show(opened.error);
}

// One row for each operation: its name, a letter for each argument (the key of kKinds in generate.cpp), and the call.
struct Row {
  const char* name;
  const char* kinds;
  std::string (*play)(Player& call);
};
const Row* FindRow(const std::string& name);

}  // namespace qb::conformance
