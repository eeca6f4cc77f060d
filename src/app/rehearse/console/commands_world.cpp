// What the user, Windows or another program does to the machine.
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/operations.h"
#include "app/rehearse/console/values.h"

namespace qb::rehearse {
namespace {

constexpr std::uint32_t kMostNumber = 0xFFFFFFFF;
// A file of a script is made in memory.
constexpr std::uint64_t kMostBytes = 1ULL << 28;
constexpr std::uint32_t kInvalidFolder = 0x80070057;  // E_INVALIDARG, the shell's answer to an unknown number

Reply Bad(std::string_view what, const std::string& word) {
  return Reply::Problem(std::string(what) + ": " + word);
}
Reply DoneOr(bool done, std::string_view what, const std::string& word) {
  return done ? Reply() : Bad(what, word);
}

Reply Windows(Console& console, const Arguments& words) {
  const std::string& version = words[0];
  std::size_t dot = version.find('.');
  auto major = ParseNumber(version.substr(0, dot), kMostNumber);
  auto minor = ParseNumber(dot == std::string::npos ? "0" : version.substr(dot + 1), kMostNumber);
  auto platform_id = ParseNumber(words.size() > 1 ? words[1] : "2", kMostNumber);
  if (!major || !minor || !platform_id) return Bad("no Windows version", words.Raw());
  console.machine().SetWindowsVersion(static_cast<std::uint32_t>(*major), static_cast<std::uint32_t>(*minor),
                                      static_cast<std::uint32_t>(*platform_id));
  return {};
}

Reply User(Console& console, const Arguments& words) {
  console.machine().SetUser(words[0]);
  return {};
}

Reply WindowsFolder(Console& console, const Arguments& words) {
  console.machine().SetWindowsFolder(words[0]);
  return {};
}

Reply ProgramFolder(Console& console, const Arguments& words) {
  console.machine().SetProgramFolder(words[0]);
  return {};
}

Reply Folder(Console& console, const Arguments& words) {
  auto number = ParseNumber(words[0], kMostNumber);
  if (!number) return Bad("no folder number", words[0]);
  auto folder = static_cast<std::uint32_t>(*number);
  if (words[1] == "missing") {
    console.machine().SetSpecialFolder(folder, 1, "");
  } else if (words[1] == "invalid") {
    console.machine().SetSpecialFolder(folder, kInvalidFolder, "");
  } else {
    console.machine().SetSpecialFolder(folder, 0, words[1]);
  }
  return {};
}

Reply Drive(Console& console, const Arguments& words) {
  std::string letter = words[0];
  if (letter.size() == 2 && letter[1] == ':') letter.pop_back();
  if (letter.size() != 1) return Bad("no drive letter", words[0]);
  return DoneOr(console.machine().SetDrive(letter[0], words[1]), "no such drive or type", words.Raw());
}

Reply Associate(Console& console, const Arguments& words) {
  console.machine().Associate(words[0], words[1] == "none" ? "" : std::string_view(words[1]));
  return {};
}

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
    if (auto size = ParseNumber(words[2], kMostBytes)) content.emplace(static_cast<std::size_t>(*size), 'A');
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

// Commands that name one path, and succeed or not.
template <bool (machine::Machine::*action)(std::string_view)>
Reply OnPath(Console& console, const Arguments& words) {
  return DoneOr((console.machine().*action)(words[0]), "no such path, or it cannot be done", words[0]);
}

Reply Link(Console& console, const Arguments& words) {
  return DoneOr(console.machine().MakeJunction(words[0], words[1]), "cannot make the junction", words[0]);
}

Reply RegistryAdd(Console& console, const Arguments& words) {
  if (words.size() == 1) return DoneOr(console.machine().RegistryAddKey(words[0]), "cannot make the key", words[0]);
  if (words.size() != 4) return Reply::Problem("wrong number of words for reg add");
  machine::RegistryValue value;
  value.name = words[1];
  if (words[2] == "sz" || words[2] == "expand_sz") {
    value.type = words[2] == "sz" ? kRegSz : kRegExpandSz;
    value.data = words[3];
  } else if (words[2] == "dword") {
    auto number = ParseNumber(words[3], kMostNumber);
    if (!number) return Bad("no dword", words[3]);
    value.type = kRegDword;
    for (int shift = 0; shift < 32; shift += 8) value.data += static_cast<char>((*number >> shift) & 0xFF);
  } else if (words[2] == "binary") {
    auto bytes = ParseBytes(words[3]);
    if (!bytes) return Bad("no bytes", words[3]);
    value.type = kRegBinary;
    value.data = *bytes;
  } else {
    return Bad("no registry type", words[2]);
  }
  return DoneOr(console.machine().RegistrySetValue(words[0], value), "cannot set the value", words[0]);
}

Reply RegistryDelete(Console& console, const Arguments& words) {
  bool done = words.size() == 1 ? console.machine().RegistryDeleteKey(words[0])
                                : console.machine().RegistryDeleteValue(words[0], words[1]);
  return DoneOr(done, "no such key or value", words.Raw());
}

Reply CacheAdd(Console& console, const Arguments& words) {
  auto type = ParseHex(words[1], kMostNumber);
  if (!type) return Bad("no hexadecimal bit set", words[1]);
  console.machine().CacheAdd({words[0], static_cast<std::uint32_t>(*type), words.size() > 2 ? words[2] : ""});
  return {};
}

Reply CacheClear(Console& console, const Arguments&) {
  console.machine().CacheClear();
  return {};
}

std::optional<std::uint64_t> ParseHandle(const std::string& word) {
  if (!word.starts_with('#')) return std::nullopt;
  return ParseNumber(std::string_view(word).substr(1));
}

Reply WindowOpen(Console& console, const Arguments& words) {
  std::size_t left = words.size();
  std::uint64_t parent = 0;
  if (left >= 3 && words[left - 2] == "in" && !words.word(left - 2).quoted) {
    auto handle = ParseHandle(words[left - 1]);
    bool there = false;
    for (const machine::OtherWindow& window : console.machine().Windows()) there = there || window.handle == handle;
    if (!there) return Bad("no such window", words[left - 1]);
    parent = *handle;
    left -= 2;
  }
  if (left > 2) return Reply::Problem("wrong number of words for window open");
  std::uint64_t handle = console.machine().WindowOpen(words[0], left > 1 ? words[1] : "", parent);
  if (handle == 0) return Bad("cannot open the window", words.Raw());
  return "window #" + std::to_string(handle);
}

Reply WindowClose(Console& console, const Arguments& words) {
  bool done = false;
  if (words[0].starts_with('#')) {
    auto handle = ParseHandle(words[0]);
    done = handle && console.machine().WindowClose(*handle);
  } else {
    done = console.machine().WindowCloseClass(words[0]);
  }
  return DoneOr(done, "no such window", words[0]);
}

Reply Outside(Console& console, const Arguments& words) {
  auto exit_code = ParseNumber(words[1], kMostNumber);
  auto pumps = ParseNumber(words.size() > 2 ? words[2] : "0", kMostNumber);
  if (!exit_code || !pumps) return Bad("no exit code or number of pumps", words.Raw());
  bool done = console.machine().OutsideProgram(words[0], static_cast<std::uint32_t>(*exit_code),
                                               static_cast<std::uint32_t>(*pumps));
  return DoneOr(done, "cannot put the program", words[0]);
}

Reply FailOperation(Console& console, const Arguments& words) {
  machine::Gate& gate = console.machine().gate();
  if (words[0] == "none" && words.size() == 1) {
    gate.ClearFaults();
    return {};
  }
  if (!KnownOperation(words[0])) return Bad("no such operation", words[0]);
  bool every = words.size() > 1 && words[1] == "every";
  auto nth = every ? 0 : ParseNumber(words.size() > 1 ? words[1] : "1", kMostNumber);
  auto code = ParseNumber(words.size() > 2 ? words[2] : "5", kMostNumber);
  if (!nth || !code || (*nth == 0 && !every)) return Bad("no count or code", words.Raw());
  gate.SetFault(words[0], static_cast<std::uint32_t>(*nth), static_cast<std::uint32_t>(*code));
  return {};
}

Reply Advance(Console& console, const Arguments& words) {
  auto duration = ParseDuration(words[0]);
  if (!duration) return Bad("no duration", words[0]);
  console.machine().Advance(*duration);
  return {};
}

Reply Answer(Console& console, const Arguments& words) {
  console.machine().AddAnswers(words.Texts());
  return {};
}

using machine::Machine;

constexpr std::array kCommands = std::to_array<Command>({
    {"windows", 1, 2, Windows},
    {"user", 1, 1, User},
    {"windir", 1, 1, WindowsFolder},
    {"program-folder", 1, 1, ProgramFolder},
    {"folder", 2, 2, Folder},
    {"drive", 2, 2, Drive},
    {"associate", 2, 2, Associate},
    {"mkdir", 1, 1, MakeFolder},
    {"file", 1, 3, File},
    {"attrib", 1, kAnyNumber, Attributes},
    {"delete", 1, 1, OnPath<&Machine::Delete>},
    {"discard", 1, 1, OnPath<&Machine::Discard>},
    {"lock", 1, 1, OnPath<&Machine::Lock>},
    {"unlock", 1, 1, OnPath<&Machine::Unlock>},
    {"link", 2, 2, Link},
    {"reg add", 1, 4, RegistryAdd},
    {"reg delete", 1, 2, RegistryDelete},
    {"reg deny", 1, 1, OnPath<&Machine::RegistryDeny>},
    {"reg allow", 1, 1, OnPath<&Machine::RegistryAllow>},
    {"cache add", 2, 3, CacheAdd},
    {"cache clear", 0, 0, CacheClear},
    {"window open", 1, 4, WindowOpen},
    {"window close", 1, 1, WindowClose},
    {"outside", 2, 3, Outside},
    {"fail", 1, 3, FailOperation},
    {"advance", 1, 1, Advance},
    {"answer", 1, kAnyNumber, Answer},
});

}  // namespace

std::span<const Command> WorldCommands() {
  return kCommands;
}

}  // namespace qb::rehearse
