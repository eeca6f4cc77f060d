// A watcher tick with 2,000 windows on the desktop must cost less than a millisecond, and about what one with 200
// does: the machine keeps its windows by class, and the tick itself must not walk them.
#include <memory>

#include "bench/ratio.h"
#include "tests/support/resident_program.h"

namespace {

class Desktop {
 public:
  explicit Desktop(int windows) : windows_(windows) {}

  void Make() {
    resident_ = std::make_unique<qb::test::ResidentProgram>();
    for (int i = 0; i < windows_; ++i) {
      resident_->machine().WindowOpen("SomeApplicationWindow" + std::to_string(i % 50), "A window of a program", 0);
    }
    resident_->machine().WindowOpen("_AOL_CBROWSER", "The last class that is looked for", 0);
  }
  void Tick() {
    for (int i = 0; i < kTicks; ++i) resident_->program().resident().auto_kill.Timer1_Timer();
    looked_ = looked_ && resident_->program().resident().auto_kill.Open(qb::Family::AOLPane);
  }
  // Every round of ticks has seen the window.
  bool Looked() const { return looked_; }
  static constexpr int kTicks = 200;

 private:
  const int windows_;
  std::unique_ptr<qb::test::ResidentProgram> resident_;
  bool looked_ = true;
};

qb::bench::Timed Ticks(Desktop& desktop, const char* what, double units) {
  return {what, units, [&desktop] { desktop.Make(); }, [&desktop] { desktop.Tick(); }};
}

}  // namespace

int main() {
  constexpr int kFew = 200, kMany = 2000, kRounds = 5;
  constexpr double kUnits = Desktop::kTicks;
  Desktop few(kFew), many(kMany);
  const int flat = qb::bench::CompareRatio(Ticks(few, "a tick with 200 windows", kUnits),
                                           Ticks(many, "a tick with 2,000 windows", kUnits), 1.5, kRounds);
  // The millisecond is taken by the same clock.
  const auto millisecond = [] {
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(1);
    while (std::chrono::steady_clock::now() < until) {
    }
  };
  const int short_enough = qb::bench::CompareRatio({"a millisecond", 1, [] {}, millisecond},
                                                   Ticks(many, "a tick with 2,000 windows", kUnits), 1.0, kRounds);
  if (!few.Looked() || !many.Looked()) std::puts("a tick did not see the window that is open");
  return flat + short_enough + (few.Looked() && many.Looked() ? 0 : 1);
}
