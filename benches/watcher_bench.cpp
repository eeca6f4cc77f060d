// A tick of the watcher among many windows: it must cost less than a millisecond, and about what one among few does, as
// the machine keeps its windows by class and the tick itself must not walk them.
#include <memory>

#include "benches/ratio.h"
#include "tests/support/resident_program.h"

namespace {

class Desktop {
 public:
  explicit Desktop(int windows) : windows_(windows) {}

  qb::bench::Timed Ticks(const char* what, int ticks) {
    return {what, [this] { Make(); }, [this, ticks] { Tick(ticks); }, static_cast<double>(ticks)};
  }
  // Every round of ticks has seen the window.
  bool Looked() const { return looked_; }

 private:
  void Make() {
    resident_ = std::make_unique<qb::test::ResidentProgram>();
    for (int i = 0; i < windows_; ++i) {
      resident_->machine().WindowOpen("SomeApplicationWindow" + std::to_string(i % 50), "A window of a program", 0);
    }
    resident_->machine().WindowOpen("_AOL_CBROWSER", "The last class that is looked for", 0);
  }
  void Tick(int ticks) {
    for (int i = 0; i < ticks; ++i) resident_->program().resident().auto_kill.Timer1_Timer();
    looked_ = looked_ && resident_->program().resident().auto_kill.Open(qb::Family::AOLPane);
  }

  const int windows_;
  std::unique_ptr<qb::test::ResidentProgram> resident_;
  bool looked_ = true;
};

}  // namespace

int main() {
  constexpr int kFew = 200, kMany = 2000;
  static constexpr int kTicks = 1000;  // its address is taken
  const std::string name = "watcher tick with 2,000 windows";
  Desktop few(kFew), many(kMany);
  // The millisecond is taken by the same clock, once for each tick.
  const qb::bench::Timed milliseconds{"a millisecond", [] {},
                                      [] {
                                        const auto until =
                                            std::chrono::steady_clock::now() + std::chrono::milliseconds(kTicks);
                                        while (std::chrono::steady_clock::now() < until) {
                                        }
                                      },
                                      kTicks};
  int missed =
      qb::bench::Compare(name, many.Ticks("", kTicks),
                         {{few.Ticks("with 200 windows", kTicks), 1.5}, {milliseconds, 1.0}}, qb::bench::kMoreRounds);
  if (!few.Looked() || !many.Looked()) {
    std::puts("watcher tick: one did not see the window that is open");
    missed = 1;
  }
  return missed == 0 ? 0 : 1;
}
