// What others do to files and folders.
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/replies.h"
#include "app/rehearse/console/values.h"

namespace qb::rehearse {
namespace {

constexpr std::uint64_t kMostBytes = 1ULL << 28;  // of a file of the host, which is copied in memory
constexpr std::uint64_t kMostSize = 1ULL << 33;   // a number that is mistyped shall not fill the host's disk

Reply MakeFolder(Console& console, const Arguments& words) {
  return DoneOr(console.machine().MakeFolder(words[0]), "cannot make the folder", words[0]);
}

std::optional<std::string> HostFile(const std::string& path) {
  std::error_code error;
  // A device or a pipe may have no end.
  if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
  auto size = std::filesystem::file_size(path, error);
  if (error || size > kMostBytes) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

Reply File(Console& console, const Arguments& words) {
  std::optional<std::string> content;
  if (words.size() < 3) {
    content = words.size() == 2 ? ToWindows1252(words[1]) : "";
  } else if (words[1] == "size") {
    auto size = ParseNumber(words[2], kMostSize);
    if (size) return DoneOr(console.machine().MakeFileOfSize(words[0], *size), "cannot make the file", words[0]);
  } else if (words[1] == "hex") {
    content = ParseBytes(words[2]);
  } else if (words[1] == "from") {
    content = HostFile(words[2]);
  }
  if (!content) return Bad("no content for a file", words.From(1).Raw());
  return DoneOr(console.machine().MakeFile(words[0], *content), "cannot make the file", words[0]);
}

Reply Attributes(Console& console, const Arguments& words) {
  return DoneOr(console.machine().ChangeAttributes(words[0], words.From(1).Texts()), "no such path or attribute",
                words.Raw());
}

Reply Link(Console& console, const Arguments& words) {
  return DoneOr(console.machine().MakeLink(words[0], words[1]), "cannot make the link", words[0]);
}

using machine::Machine;

constexpr std::array kCommands = std::to_array<Command>({
    {"mkdir", 1, 1, MakeFolder},
    {"file", 1, 3, File},
    {"attrib", 1, kAnyNumber, Attributes},
    {"delete", 1, 1, OnPath<&Machine::Delete>},
    {"discard", 1, 1, OnPath<&Machine::Discard>},
    {"lock", 1, 1, OnPath<&Machine::Lock>},
    {"unlock", 1, 1, OnPath<&Machine::Unlock>},
    {"link", 2, 2, Link},
});

}  // namespace

namespace commands {

std::span<const Command> Files() {
  return kCommands;
}

}  // namespace commands

}  // namespace qb::rehearse
