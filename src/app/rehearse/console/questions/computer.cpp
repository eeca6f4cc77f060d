// What can be asked of the machine, whether or not the program runs.
#include <array>

#include "app/rehearse/console/console.h"
#include "app/rehearse/console/values.h"

namespace qb::rehearse {
namespace {

Reply Boxes(Console& console, const Arguments&) {
  Reply reply;
  for (const machine::ShownBox& box : console.machine().TakeBoxes()) {
    reply.lines.push_back(box.kind + " | " + box.title + " | " + OnOneLine(box.text) + " | " + box.answer);
  }
  return reply;
}

Reply Opened(Console& console, const Arguments&) {
  return console.machine().TakeOpened();
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
    {"opened", 0, 0, Opened},
    {"cache", 0, 0, Cache},
    {"windows", 0, 0, OtherWindows},
    {"pending", 0, 0, Pending},
    {"recycle", 0, 0, Recycle},
});

}  // namespace

namespace questions {

std::span<const Command> Computer() {
  return kQuestions;
}

}  // namespace questions

}  // namespace qb::rehearse
