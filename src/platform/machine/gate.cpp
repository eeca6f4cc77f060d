#include "platform/machine/gate.h"

#include <utility>

namespace qb::machine {

CallText::CallText(std::string_view operation) : operation_(operation) {}

void CallText::Comma() {
  if (!arguments_.empty()) arguments_ += ", ";
}

CallText& CallText::Text(std::string_view text) {
  Comma();
  arguments_ += '"';
  arguments_ += text;
  arguments_ += '"';
  return *this;
}

CallText& CallText::Number(std::uint64_t number) {
  Comma();
  arguments_ += std::to_string(number);
  return *this;
}

CallText& CallText::Boolean(bool value) {
  Comma();
  arguments_ += value ? '1' : '0';
  return *this;
}

CallText& CallText::Handle(std::uint64_t handle) {
  if (handle == 0) return Null();
  Comma();
  arguments_ += '#' + std::to_string(handle);
  return *this;
}

CallText& CallText::Null() {
  Comma();
  arguments_ += "null";
  return *this;
}

CallText& CallText::Bytes(std::size_t count) {
  Comma();
  arguments_ += '<' + std::to_string(count) + " bytes>";
  return *this;
}

CallText& CallText::Structure() {
  Comma();
  arguments_ += "{\xe2\x80\xa6}";
  return *this;
}

std::string CallText::Line(std::string_view result) const {
  std::string line = operation_ + '(' + arguments_ + ") = ";
  line += result;
  return line;
}

Error Gate::Enter(std::string_view operation) {
  if (!powered_) return Error::AccessDenied;
  auto counted = counts_.find(operation);
  if (counted == counts_.end()) counted = counts_.emplace(std::string(operation), 0).first;
  ++counted->second;
  if (faults_.empty()) return Error::Success;
  auto found = faults_.find(operation);
  if (found == faults_.end()) return Error::Success;
  Fault& fault = found->second;
  if (fault.remaining > 1) {
    --fault.remaining;
    return Error::Success;
  }
  const auto code = static_cast<Error>(fault.code);
  if (fault.remaining == 1) faults_.erase(found);
  return code;
}

void Gate::Record(const CallText& call, std::string_view result) {
  if (recording_) calls_.push_back({call.operation(), call.Line(result)});
}

std::vector<Gate::Call> Gate::TakeCalls() {
  return std::exchange(calls_, {});
}

void Gate::SetFault(std::string operation, std::uint32_t nth, std::uint32_t code) {
  faults_[std::move(operation)] = {nth, code};
}

void Gate::ClearFaults() {
  faults_.clear();
}

}  // namespace qb::machine
