// The calls of the platform that the program made.
#include <algorithm>
#include <array>

#include "app/rehearse/console/console.h"

namespace qb::rehearse {
namespace {

Reply Calls(Console& console, const Arguments& words) {
  std::vector<std::string> wanted = words.Texts();
  for (const std::string& name : wanted) {
    if (!machine::KnownOperation(name)) return Reply::Problem("no such operation: " + name);
  }
  Reply reply;
  for (machine::Gate::RecordedCall& call : console.machine().gate().TakeCalls()) {
    if (!wanted.empty() && std::find(wanted.begin(), wanted.end(), call.operation) == wanted.end()) continue;
    reply.lines.push_back(std::move(call.line));
  }
  return reply;
}

constexpr std::array kQuestions = std::to_array<Command>({
    {"calls", 0, kAnyNumber, Calls},
});

}  // namespace

namespace questions {

std::span<const Command> Calls() {
  return kQuestions;
}

}  // namespace questions

}  // namespace qb::rehearse
