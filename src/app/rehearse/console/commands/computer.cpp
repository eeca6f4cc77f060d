// Windows itself as it is set up: version, account, folders, drives, what opens what.
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/replies.h"
#include "app/rehearse/console/values.h"

namespace qb::rehearse {
namespace {

constexpr std::uint32_t kInvalidFolder = 0x80070057;  // E_INVALIDARG, the shell's answer to an unknown number

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

Reply Outside(Console& console, const Arguments& words) {
  auto exit_code = ParseNumber(words[1], kMostNumber);
  auto pumps = ParseNumber(words.size() > 2 ? words[2] : "0", kMostNumber);
  if (!exit_code || !pumps) return Bad("no exit code or number of pumps", words.Raw());
  bool done = console.machine().OutsideProgram(words[0], static_cast<std::uint32_t>(*exit_code),
                                               static_cast<std::uint32_t>(*pumps));
  return DoneOr(done, "cannot put the program", words[0]);
}

constexpr std::array kCommands = std::to_array<Command>({
    {"windows", 1, 2, Windows},
    {"user", 1, 1, User},
    {"windir", 1, 1, WindowsFolder},
    {"program-folder", 1, 1, ProgramFolder},
    {"folder", 2, 2, Folder},
    {"drive", 2, 2, Drive},
    {"associate", 2, 2, Associate},
    {"outside", 2, 3, Outside},
});

}  // namespace

namespace commands {

std::span<const Command> Computer() {
  return kCommands;
}

}  // namespace commands

}  // namespace qb::rehearse
