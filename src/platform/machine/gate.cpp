#include "platform/machine/gate.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace qb::machine {

namespace {

static_assert(std::is_sorted(kOperationNames.begin(), kOperationNames.end()));

std::optional<OperationNumber> FindOperation(std::string_view name) {
  const auto* found = std::lower_bound(kOperationNames.begin(), kOperationNames.end(), name);
  if (found == kOperationNames.end() || *found != name) return std::nullopt;
  return static_cast<OperationNumber>(found - kOperationNames.begin());
}

// What stands in front of each item of a packed call.
enum Tag : char {
  kText = 'T',
  kNumber = 'N',
  kHandle = 'H',
  kNull = '0',
  kBytes = 'B',
  kStructure = 'S',
  kResult = '=',
  kEnd = '.'
};

class PackedReader {
 public:
  explicit PackedReader(std::string_view record) : rest_(record) {}

  bool AtEnd() const { return rest_.empty(); }
  Gate::RecordedCall Next() {
    Gate::RecordedCall call;
    call.operation = kOperationNames[Number()];
    call.line = call.operation + '(';
    bool first = true;
    for (char tag = Take(); tag != kEnd; tag = Take()) {
      if (tag == kResult) {
        call.line += ") = ";
        first = true;
        continue;
      }
      if (!first) call.line += ", ";
      first = false;
      AddItem(call.line, tag);
    }
    return call;
  }

 private:
  char Take() {
    const char tag = rest_.front();
    rest_.remove_prefix(1);
    return tag;
  }
  // Seven bits a byte, the lowest first; the eighth says that more follow.
  std::uint64_t Number() {
    std::uint64_t number = 0;
    for (unsigned shift = 0;; shift += 7) {
      const auto byte = static_cast<unsigned char>(Take());
      number |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
      if (byte < 0x80) return number;
    }
  }
  void AddItem(std::string& line, char tag) {
    if (tag == kNull) {
      line += "null";
    } else if (tag == kStructure) {
      line += "{\xe2\x80\xa6}";
    } else if (tag == kText) {
      const std::size_t length = Number();
      line += '"';
      line += rest_.substr(0, length);
      line += '"';
      rest_.remove_prefix(length);
    } else {
      const std::string number = std::to_string(Number());
      line += tag == kHandle ? '#' + number : tag == kBytes ? '<' + number + " bytes>" : number;
    }
  }

  std::string_view rest_;
};

void AddNumber(std::string& record, std::uint64_t number) {
  for (; number >= 0x80; number >>= 7) record += static_cast<char>(number | 0x80);
  record += static_cast<char>(number);
}

}  // namespace

bool KnownOperation(std::string_view name) {
  return FindOperation(name).has_value();
}

PackedCall::PackedCall(std::string& record, OperationNumber number) : record_(record) {
  AddNumber(record_, static_cast<std::uint64_t>(number));
}
void PackedCall::Tagged(char tag, std::uint64_t number) {
  record_ += tag;
  AddNumber(record_, number);
}
void PackedCall::Text(std::string_view text) {
  Tagged(kText, text.size());
  record_ += text;
}
void PackedCall::Number(std::uint64_t number) {
  Tagged(kNumber, number);
}
void PackedCall::Handle(std::uint64_t handle) {
  handle == 0 ? Null() : Tagged(kHandle, handle);
}
void PackedCall::Null() {
  record_.push_back(kNull);
}
void PackedCall::Bytes(std::size_t count) {
  Tagged(kBytes, count);
}
void PackedCall::Structure() {
  record_.push_back(kStructure);
}
void PackedCall::Result() {
  record_.push_back(kResult);
}
void PackedCall::End() {
  record_.push_back(kEnd);
}

Error Gate::Enter(OperationNumber number) {
  if (!powered_) return Error::AccessDenied;
  ++counts_[static_cast<std::size_t>(number)];
  if (faults_.empty()) return Error::Success;
  auto found = faults_.find(number);
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

void Gate::PutInPlace(const Place& begun, const Place& added) {
  // A record that was asked for meanwhile begins with what came after.
  const std::size_t at = begun.takings == takings_ ? begun.at : 0;
  const auto place = [this](std::size_t byte) { return record_.begin() + static_cast<std::ptrdiff_t>(byte); };
  std::rotate(place(at), place(added.at), record_.end());
}

std::vector<Gate::RecordedCall> Gate::TakeCalls() {
  ++takings_;
  const std::string record = std::exchange(record_, {});
  std::vector<RecordedCall> calls;
  for (PackedReader reader(record); !reader.AtEnd();) calls.push_back(reader.Next());
  return calls;
}

bool Gate::SetFault(std::string_view operation, std::uint32_t nth, std::uint32_t code) {
  const auto number = FindOperation(operation);
  if (number) faults_[*number] = {nth, code};
  return number.has_value();
}

std::map<std::string, std::uint64_t, std::less<>> Gate::Counts() const {
  std::map<std::string, std::uint64_t, std::less<>> counts;
  for (std::size_t i = 0; i < counts_.size(); ++i) {
    if (counts_[i] != 0) counts.emplace(kOperationNames[i], counts_[i]);
  }
  return counts;
}

}  // namespace qb::machine
