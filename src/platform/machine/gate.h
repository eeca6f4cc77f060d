// The one place that every operation of a machine passes: it records the call, fails it if a fault is
// due, and knows when the power is off.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/machine/operation_names.h"
#include "platform/types.h"

namespace qb::machine {

// An operation by its place in kOperationNames.
enum class OperationNumber : std::uint16_t {};

bool KnownOperation(std::string_view name);

// The name of an operation as a template argument.
template <std::size_t kSize>
struct OperationName {
  consteval OperationName(const char (&name)[kSize]) {  // NOLINT(google-explicit-constructor)
    for (std::size_t i = 0; i < kSize; ++i) text[i] = name[i];
  }
  char text[kSize]{};
};
// A name that the build did not find does not compile.
consteval OperationNumber NumberOfOperation(std::string_view name) {
  std::uint16_t number = 0;
  while (kOperationNames.at(number) != name) ++number;
  return OperationNumber{number};
}
template <OperationName kName>
inline constexpr OperationNumber kOperationNumber = NumberOfOperation(kName.text);

// One call in the record: its arguments in the order of the Windows function, then the result. A few bytes, of which
// the text is made only when someone asks.
class PackedCall {
 public:
  PackedCall(std::string& record, OperationNumber number);
  void Text(std::string_view text);
  void Number(std::uint64_t number);
  void Handle(std::uint64_t handle);  // 0 is null
  void Null();
  void Bytes(std::size_t count);
  void Structure();
  void Result();  // what follows is the result
  void End();

 private:
  void Tagged(char tag, std::uint64_t number);
  std::string& record_;
};

template <typename... Arguments>
class Operation;

class Gate {
 public:
  struct RecordedCall {
    std::string operation;
    std::string line;  // "NAME(argument, …) = result"
  };

  // Starts an operation; who calls it includes operation.h.
  template <OperationName kName, typename... Arguments>
  Operation<Arguments...> Call(const Arguments&... arguments);

  // To be asked once at the start of each operation. Success: go on. Anything else: the operation must
  // do nothing, give its failure value, and this as its error.
  Error Enter(OperationNumber number);
  // Adds a call to the record, for the caller to fill.
  PackedCall NewCall(OperationNumber number) { return {record_, number}; }
  // Where a call that begins now belongs in the record: before those that are made while it lasts.
  struct Place {
    std::uint64_t takings;
    std::size_t at;
  };
  Place Here() const { return {takings_, record_.size()}; }
  // Puts the last call of the record, which was added at `added`, where it began.
  void PutInPlace(const Place& begun, const Place& added);
  bool recording() const { return recording_; }
  void SetRecording(bool on) { recording_ = on; }
  // The record since the last time, in order, emptied by the asking. Texts stand in double quotes as they are, numbers
  // in unsigned decimal, booleans are 0 or 1, handles #N, nothing is null, buffers <N bytes>, structures {…}.
  std::vector<RecordedCall> TakeCalls();

  // Fails the nth next call (from 1) of the operation with `code`; nth 0 fails every one. One fault
  // stands for each operation, a new one replaces it. False if there is no such operation.
  bool SetFault(std::string_view operation, std::uint32_t nth, std::uint32_t code);
  void ClearFaults() { faults_.clear(); }
  // Calls of each operation so far: what a test counts to know where faults can go.
  std::map<std::string, std::uint64_t, std::less<>> Counts() const;

  // From now on every operation fails and nothing changes any more: as if the power went.
  void PowerOff() { powered_ = false; }
  // Once no program of before runs any more.
  void PowerOn() { powered_ = true; }
  bool Powered() const { return powered_; }

 private:
  struct Fault {
    std::uint32_t remaining = 0;  // 0: every call
    std::uint32_t code = 0;
  };
  std::map<OperationNumber, Fault> faults_;
  std::array<std::uint64_t, kOperationNames.size()> counts_{};
  std::string record_;
  std::uint64_t takings_ = 0;  // how often the record was asked for
  bool recording_ = true;
  bool powered_ = true;
};

}  // namespace qb::machine
