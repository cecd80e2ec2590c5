// Times tasks side by side.

#ifndef BENCH_MEASURE_H_
#define BENCH_MEASURE_H_

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

// The processor time of this thread: times of other programs do not count.
double ProcessorSeconds();

struct Work {
  std::function<bool()> run;              // returns whether the result was right
  std::function<void()> prepare = [] {};  // before each run, not timed
};

struct Task {
  std::string row;   // the row of the results that it belongs to
  std::string kind;  // what distinguishes it from others of that row and size
  long size;
  double units;  // how many a run processes
  Work work;
};

struct Cost {
  std::vector<double> nanoseconds;  // of a unit, one for each turn
  std::size_t peakBytes = 0;        // on the heap in the first turn, `prepare` included

  double median() const;
};

// The median of the ratios of each turn, since the machine may be faster in one turn than in the
// next.
double MedianRatio(const Cost& one, const Cost& other);

// Runs all tasks in turn, `turns` times after a first turn that is not timed, and returns a cost
// for each. Times are processor times of the thread. A wrong result ends the program.
std::vector<Cost> SideBySide(const std::vector<Task>& tasks, int turns);

// The largest resident size, in kilobytes, of a process of its own that runs the function. A
// failure ends the program. REQUIRES: this process is small and has one thread, since the other one
// begins with its pages.
long PeakKilobytes(const std::function<void()>& run);

#endif  // BENCH_MEASURE_H_
