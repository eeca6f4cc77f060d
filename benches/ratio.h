// Two timings of the same run against one another, in lines of one form:
//   NAME: ours X, OTHER Y, ratio R (goal G)          with ", missed" where R is above G
// Both are taken in turn, five times or more, and the medians count. Ratios below 1 have three significant digits, so
// that a small one is not told by its rounding.
#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace qb::bench {

inline constexpr int kRounds = 5;
inline constexpr int kMoreRounds = 11;  // of what takes a moment

struct Timed {
  const char* what;
  std::function<void()> prepare, run;
  double units = 1;  // that it works on; its time is shown for one of them
};

// The same, which keeps `owner` as long as itself: what goes with it, as a folder, goes when the work is done.
inline Timed Owned(const std::shared_ptr<void>& owner, Timed timed) {
  timed.run = [owner, run = std::move(timed.run)] { run(); };
  return timed;
}

inline double Seconds(const Timed& timed) {
  timed.prepare();
  const auto start = std::chrono::steady_clock::now();
  timed.run();
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  return took.count();
}

inline double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// In the unit that leaves the fewest zeros.
inline std::string TimeText(double seconds) {
  char text[32];
  if (seconds >= 1)
    std::snprintf(text, sizeof text, "%.2f s", seconds);
  else if (seconds >= 1e-3)
    std::snprintf(text, sizeof text, "%.2f ms", seconds * 1e3);
  else
    std::snprintf(text, sizeof text, "%.2f us", seconds * 1e6);
  return text;
}

inline std::string MemoryText(double bytes) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f MiB", bytes / (1 << 20));
  return text;
}

// One line; 0 if the goal is met, else 1. A goal of 0 is none.
inline int Line(const std::string& name, const std::string& ours, const std::string& other, double ratio, double goal) {
  const bool missed = goal != 0 && ratio > goal;
  std::printf(ratio < 1 ? "%s: ours %s, %s, ratio %.3g" : "%s: ours %s, %s, ratio %.2f", name.c_str(), ours.c_str(),
              other.c_str(), ratio);
  if (goal != 0) std::printf(" (goal %.2f%s)", goal, missed ? ", missed" : "");
  std::printf("\n");
  std::fflush(stdout);
  return missed ? 1 : 0;
}

inline void Progress(const std::string& name, int step, int of) {
  std::fprintf(stderr, "  %s: %d of %d\n", name.c_str(), step, of);
}

// What ours is held against, and the goal of that ratio; 0 is none.
struct Rival {
  Timed timed;
  double goal;
};

// A line for each of the others.
inline int Compare(const std::string& name, const Timed& ours, const std::vector<Rival>& others, int rounds = kRounds) {
  std::vector<double> our_times;
  std::vector<std::vector<double>> other_times(others.size());
  for (int round = 1; round <= rounds; ++round) {
    Progress(name, round, rounds);
    for (std::size_t i = 0; i < others.size(); ++i) {
      other_times[i].push_back(Seconds(others[i].timed) / others[i].timed.units);
    }
    our_times.push_back(Seconds(ours) / ours.units);
  }
  const double x = Median(our_times);
  int missed = 0;
  for (std::size_t i = 0; i < others.size(); ++i) {
    const double y = Median(other_times[i]);
    missed += Line(name, TimeText(x), others[i].timed.what + (" " + TimeText(y)), x / y, others[i].goal);
  }
  return missed;
}

// What a piece of work took in a process of its own.
struct Cost {
  double seconds = 0;
  double peak_bytes = 0;
};

// `work` is made there and must own what has to be cleared away. Memory that this process uses already is in the peak
// too.
inline Cost InOwnProcess(const std::function<Timed()>& work) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    double seconds = -1;
    try {
      seconds = Seconds(work());
    } catch (const std::exception& problem) {
      std::fprintf(stderr, "%s\n", problem.what());
    }
    const bool told = write(ends[1], &seconds, sizeof seconds) == sizeof seconds;
    _exit(told && seconds >= 0 ? 0 : 1);
  }
  close(ends[1]);
  Cost cost;
  const bool heard = read(ends[0], &cost.seconds, sizeof cost.seconds) == sizeof cost.seconds;
  close(ends[0]);
  int status = 0;
  rusage used{};
  if (child < 0 || wait4(child, &status, 0, &used) != child || status != 0 || !heard) {
    throw std::runtime_error("a bench process failed");
  }
  cost.peak_bytes = static_cast<double>(used.ru_maxrss) * 1024;
  return cost;
}

// The same work at 1, 4 and 16 times `items`: the cost of an item must stay within a fifth. One line.
inline int Growth(const std::string& name, int items, const std::function<Timed(int items)>& work,
                  int rounds = kRounds) {
  constexpr int kFactors[] = {1, 4, 16};
  std::vector<double> times[3];
  double peak[3] = {};
  for (int round = 1; round <= rounds; ++round) {
    Progress(name + ", growth", round, rounds);
    for (int i = 0; i < 3; ++i) {
      const int count = items * kFactors[i];
      const Cost cost = InOwnProcess([&] { return work(count); });
      times[i].push_back(cost.seconds / count);
      peak[i] = std::max(peak[i], cost.peak_bytes);
    }
  }
  std::string steps;
  for (int i = 0; i < 3; ++i) {
    steps += (i == 0 ? "" : ", ") + std::to_string(items * kFactors[i]) + " items " + TimeText(Median(times[i])) +
             " each, peak " + MemoryText(peak[i]);
  }
  constexpr double kFifth = 1.2;
  return Line(name + ", growth", TimeText(Median(times[2])) + " an item", steps, Median(times[2]) / Median(times[0]),
              kFifth);
}

// Runs a command of the shell; throws if it fails.
inline void Command(const std::string& line) {
  if (std::system(line.c_str()) != 0) throw std::runtime_error("failed: " + line);
}

}  // namespace qb::bench
