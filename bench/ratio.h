// Two timings against one another: each is taken several times in turn, and the smallest counts, since
// what disturbs a timing only ever adds to it.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>

namespace qb::bench {

struct Timed {
  const char* what;
  double units;  // the time is divided by these
  std::function<void()> prepare, run;
};

// Prints both and their ratio; 0 if `b` costs at most `bound` times what `a` costs for each unit, else 1.
inline int CompareRatio(const Timed& a, const Timed& b, double bound, int rounds) {
  auto time = [](const Timed& timed) {
    timed.prepare();
    const auto start = std::chrono::steady_clock::now();
    timed.run();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    return took.count() / timed.units;
  };
  double best_a = time(a), best_b = time(b);
  for (int round = 1; round < rounds; ++round) {
    best_a = std::min(best_a, time(a));
    best_b = std::min(best_b, time(b));
  }
  const double ratio = best_b / best_a;
  std::printf("%-44s %10.3f us a unit\n%-44s %10.3f us a unit\nratio %.3f (at most %.2f)\n", a.what, best_a * 1e6,
              b.what, best_b * 1e6, ratio, bound);
  return ratio <= bound ? 0 : 1;
}

}  // namespace qb::bench
