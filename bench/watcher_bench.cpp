// A watcher tick with 2,000 windows on the desktop must cost less than a millisecond, and for each window no
// more than one with 200 does.
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
  }
  void Tick() {
    for (int i = 0; i < kTicks; ++i) resident_->program().resident().auto_kill.Timer1_Timer();
  }
  static constexpr int kTicks = 200;

 private:
  const int windows_;
  std::unique_ptr<qb::test::ResidentProgram> resident_;
};

qb::bench::Timed Ticks(Desktop& desktop, const char* what, double units) {
  return {what, units, [&desktop] { desktop.Make(); }, [&desktop] { desktop.Tick(); }};
}

}  // namespace

int main() {
  constexpr int kFew = 200, kMany = 2000, kRounds = 5;
  constexpr double kUnits = Desktop::kTicks;
  Desktop few(kFew), many(kMany);
  const int linear =
      qb::bench::CompareRatio(Ticks(few, "a tick with 200 windows, for each window", kUnits * kFew),
                              Ticks(many, "a tick with 2,000 windows, for each window", kUnits * kMany), 1.5, kRounds);
  // The millisecond is taken by the same clock.
  const auto millisecond = [] {
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(1);
    while (std::chrono::steady_clock::now() < until) {
    }
  };
  const int short_enough = qb::bench::CompareRatio({"a millisecond", 1, [] {}, millisecond},
                                                   Ticks(many, "a tick with 2,000 windows", kUnits), 1.0, kRounds);
  return linear + short_enough;
}
