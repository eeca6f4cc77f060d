// The one place that every operation of a machine passes: it records the call, fails it if a fault is
// due, and knows when the power is off.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/types.h"

namespace qb::machine {

// Writes the arguments of one call in the order of the Windows function: texts in double quotes as
// they stand, numbers in unsigned decimal, booleans 0 or 1, handles as #N, nothing as null, buffers
// as <N bytes>, structures as {…}.
class CallText {
 public:
  explicit CallText(std::string_view operation);
  CallText& Text(std::string_view text);
  CallText& Number(std::uint64_t number);
  CallText& Boolean(bool value);
  CallText& Handle(std::uint64_t handle);  // 0 is null
  CallText& Null();
  CallText& Bytes(std::size_t count);
  CallText& Structure();
  const std::string& operation() const { return operation_; }
  // The line "NAME(argument, …) = result".
  std::string Line(std::string_view result) const;

 private:
  void Comma();
  std::string operation_;
  std::string arguments_;
};

class Gate {
 public:
  struct Call {
    std::string operation;
    std::string line;
  };

  // To be asked once at the start of each operation. Success: go on. Anything else: the operation must
  // do nothing, give its failure value, and this as its error.
  Error Enter(std::string_view operation);
  // Records the call once its result is known. Only while recording is on.
  void Record(const CallText& call, std::string_view result);
  bool recording() const { return recording_; }
  void SetRecording(bool on) { recording_ = on; }
  // The record since the last time, in order, emptied by the asking.
  std::vector<Call> TakeCalls();

  // Fails the nth next call (from 1) of the operation with `code`; nth 0 fails every one. One fault
  // stands for each operation, a new one replaces it.
  void SetFault(std::string operation, std::uint32_t nth, std::uint32_t code);
  void ClearFaults();
  // Calls of each operation so far: what a test counts to know where faults can go.
  const std::map<std::string, std::uint64_t, std::less<>>& Counts() const { return counts_; }

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
  std::map<std::string, Fault, std::less<>> faults_;
  std::map<std::string, std::uint64_t, std::less<>> counts_;
  std::vector<Call> calls_;
  bool recording_ = true;
  bool powered_ = true;
};

}  // namespace qb::machine
