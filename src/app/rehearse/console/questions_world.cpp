// What can be asked of the machine, whether or not the program runs.
#include <algorithm>
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/operations.h"
#include "app/rehearse/console/values.h"
#include "runtime/text.h"

namespace qb::rehearse {
namespace {

constexpr std::string_view kSettingsKey = "HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData";
constexpr std::string_view kAbsent = "(absent)";

Reply NoSuchPath(const std::string& path) {
  return Reply::Problem("no such path: " + path);
}

Reply Boxes(Console& console, const Arguments&) {
  Reply reply;
  for (const machine::ShownBox& box : console.machine().TakeBoxes()) {
    reply.lines.push_back(box.kind + " | " + box.title + " | " + OnOneLine(box.text) + " | " + box.answer);
  }
  return reply;
}

Reply Calls(Console& console, const Arguments& words) {
  std::vector<std::string> wanted = words.Texts();
  for (const std::string& name : wanted) {
    if (!KnownOperation(name)) return Reply::Problem("no such operation: " + name);
  }
  Reply reply;
  for (machine::Gate::Call& call : console.machine().gate().TakeCalls()) {
    if (!wanted.empty() && std::find(wanted.begin(), wanted.end(), call.operation) == wanted.end()) continue;
    reply.lines.push_back(std::move(call.line));
  }
  return reply;
}

Reply Opened(Console& console, const Arguments&) {
  return console.machine().TakeOpened();
}

Reply Setting(Console& console, const Arguments& words) {
  if (auto key = console.machine().ReadKey(kSettingsKey)) {
    for (const machine::RegistryValue& value : key->values) {
      if (SameText(value.name, words[0])) return value.data;
    }
  }
  return std::string(kAbsent);
}

Reply Exists(Console& console, const Arguments& words) {
  return console.machine().Exists(words[0]);
}

Reply Attributes(Console& console, const Arguments& words) {
  if (console.machine().Exists(words[0]) == "no") return NoSuchPath(words[0]);
  return console.machine().Attributes(words[0]);
}

Reply Files(Console& console, const Arguments& words) {
  auto files = console.machine().ListBelow(words[0]);
  return files ? Reply(*files) : NoSuchPath(words[0]);
}

Reply Text(Console& console, const Arguments& words) {
  auto content = console.machine().Content(words[0]);
  return content ? Reply(SplitLines(FromWindows1252(*content))) : NoSuchPath(words[0]);
}

Reply Hex(Console& console, const Arguments& words) {
  auto content = console.machine().Content(words[0]);
  return content ? Reply(HexText(*content)) : NoSuchPath(words[0]);
}

Reply Size(Console& console, const Arguments& words) {
  auto content = console.machine().Content(words[0]);
  return content ? Reply(std::to_string(content->size())) : NoSuchPath(words[0]);
}

std::string TypeAndData(const machine::RegistryValue& value) {
  switch (value.type) {
    case kRegSz:
      return "sz " + value.data;
    case kRegExpandSz:
      return "expand_sz " + value.data;
    case kRegDword:
      if (value.data.size() == 4) {
        std::uint32_t number = 0;
        for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(value.data[i]);
        return "dword " + std::to_string(number);
      }
      return "dword " + HexText(value.data);
    case kRegBinary:
      return "binary " + HexText(value.data);
    default:
      return std::to_string(value.type) + " " + HexText(value.data);
  }
}

bool LessBlindToCase(const std::string& a, const std::string& b) {
  return LowerCase(a) < LowerCase(b);
}

Reply RegistryShow(Console& console, const Arguments& words) {
  auto key = console.machine().ReadKey(words[0]);
  if (!key) return std::string(kAbsent);
  std::stable_sort(key->values.begin(), key->values.end(),
                   [](const auto& a, const auto& b) { return LessBlindToCase(a.name, b.name); });
  std::stable_sort(key->sub_keys.begin(), key->sub_keys.end(), LessBlindToCase);
  Reply reply;
  for (const machine::RegistryValue& value : key->values) {
    reply.lines.push_back((value.name.empty() ? "\"\"" : value.name) + " " + TypeAndData(value));
  }
  for (const std::string& sub_key : key->sub_keys) reply.lines.push_back(sub_key + "\\");
  return reply;
}

Reply Cache(Console& console, const Arguments&) {
  Reply reply;
  for (const machine::CacheEntry& entry : console.machine().Cache()) reply.lines.push_back(entry.url);
  return reply;
}

Reply OtherWindows(Console& console, const Arguments&) {
  Reply reply;
  for (const machine::OtherWindow& window : console.machine().Windows()) {
    reply.lines.push_back("#" + std::to_string(window.handle) + " " + window.class_name + " \"" + window.title + "\" " +
                          (window.shown ? "shown" : "hidden"));
  }
  return reply;
}

Reply Pending(Console& console, const Arguments&) {
  Reply reply;
  for (const machine::PendingRename& rename : console.machine().Pending()) {
    reply.lines.push_back(rename.from + " -> " + rename.to);
  }
  return reply;
}

Reply Recycle(Console& console, const Arguments&) {
  return std::to_string(console.machine().RecycleCount());
}

constexpr std::array kQuestions = std::to_array<Command>({
    {"boxes", 0, 0, Boxes},
    {"calls", 0, kAnyNumber, Calls},
    {"opened", 0, 0, Opened},
    {"setting", 1, 1, Setting},
    {"exists", 1, 1, Exists},
    {"attributes", 1, 1, Attributes},
    {"files", 1, 1, Files},
    {"text", 1, 1, Text},
    {"hex", 1, 1, Hex},
    {"size", 1, 1, Size},
    {"reg show", 1, 1, RegistryShow},
    {"cache", 0, 0, Cache},
    {"windows", 0, 0, OtherWindows},
    {"pending", 0, 0, Pending},
    {"recycle", 0, 0, Recycle},
});

}  // namespace

std::span<const Command> WorldQuestions() {
  return kQuestions;
}

}  // namespace qb::rehearse
