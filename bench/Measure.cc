#include "bench/Measure.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "bench/Heap.h"

namespace {

double Median(std::vector<double> numbers) {
  const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
  std::nth_element(numbers.begin(), middle, numbers.end());
  return *middle;
}

// Returns the nanoseconds of a unit.
double TimeOf(const Task& task) {
  const double start = ProcessorSeconds();
  const bool isRight = task.work.run();
  const double seconds = ProcessorSeconds() - start;
  if (!isRight) {
    std::fprintf(stderr, "%s, %s, %ld: wrong result\n", task.row.c_str(), task.kind.c_str(),
                 task.size);
    std::exit(1);
  }
  return seconds * 1e9 / task.units;
}

}  // namespace

double ProcessorSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double Cost::median() const {
  return Median(nanoseconds);
}

double MedianRatio(const Cost& one, const Cost& other) {
  std::vector<double> ratios;
  for (std::size_t i = 0; i < one.nanoseconds.size(); ++i) {
    ratios.push_back(one.nanoseconds[i] / other.nanoseconds[i]);
  }
  return Median(ratios);
}

std::vector<Cost> SideBySide(const std::vector<Task>& tasks, int turns) {
  std::vector<Cost> costs(tasks.size());
  for (int turn = 0; turn <= turns; ++turn) {
    for (std::size_t i = 0; i < tasks.size(); ++i) {
      const HeapPeak peak;
      tasks[i].work.prepare();
      const double nanoseconds = TimeOf(tasks[i]);
      if (turn == 0) costs[i].peakBytes = peak.bytes();
      if (turn > 0) costs[i].nanoseconds.push_back(nanoseconds);
    }
  }
  return costs;
}

long PeakKilobytes(const std::function<void()>& run) {
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    run();
    _exit(0);
  }
  int status = 0;
  rusage usage{};
  if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0) {
    std::fprintf(stderr, "memory cannot be measured in a process of its own\n");
    std::exit(1);
  }
  return usage.ru_maxrss;
}
