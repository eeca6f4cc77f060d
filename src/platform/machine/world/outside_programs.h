// Outside programs that run on a machine, and the handles to them.
#pragma once

#include <cstdint>
#include <map>

namespace qb::machine {

struct OutsideProgramEnd {
  std::uint32_t exit_code = 0, pumps = 1;  // rounds of the message pump until it ends
};

struct RunningOutside {
  OutsideProgramEnd end;
  std::uint64_t pumps_passed = 0;
};

class OutsidePrograms {
 public:
  // Gives the id of the new process.
  std::uint32_t Start(OutsideProgramEnd end) {
    running_[next_id_ += 4] = {end};
    return next_id_;
  }
  bool Has(std::uint32_t id) const { return running_.count(id) != 0; }
  std::uint64_t Open(std::uint32_t id, std::uint64_t handle) {
    handles_[handle] = id;
    return handle;
  }
  // Null for a handle that is not open.
  const RunningOutside* Find(std::uint64_t handle) const {
    auto found = handles_.find(handle);
    return found == handles_.end() ? nullptr : &running_.at(found->second);
  }
  bool Close(std::uint64_t handle) { return handles_.erase(handle) != 0; }
  // One round of the pump has passed.
  void Pumped() {
    for (auto& [id, process] : running_) ++process.pumps_passed;
  }
  void EndAll() {
    running_.clear();
    handles_.clear();
  }

 private:
  std::map<std::uint32_t, RunningOutside> running_;
  std::map<std::uint64_t, std::uint32_t> handles_;
  std::uint32_t next_id_ = 4;
};

}  // namespace qb::machine
