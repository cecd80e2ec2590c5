// A row of the table of costs: the same work on few units and on many.

#ifndef BENCH_ROW_H_
#define BENCH_ROW_H_

#include <functional>
#include <memory>
#include <string>
#include <vector>

// Work on a number of units. What its constructor makes is given: the time and the memory of it do
// not count.
class Work {
 public:
  Work() = default;
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;
  virtual ~Work() = default;

  // Before each run; its memory counts, its time does not.
  virtual void prepare() {}
  virtual void run() = 0;
  // Whether the last run did what the row says.
  virtual bool isDone() const = 0;
};

struct Row {
  std::string what;
  std::string unit;
  long small;
  long large;
  double bound;  // of the cost of a unit in the large, divided by that in the small; 0 for none
  std::function<std::unique_ptr<Work>(long)> make;
};

template <class W>
Row RowOf(const char* what, const char* unit, long small, long large, double bound) {
  return {what, unit, small, large, bound, [](long n) { return std::make_unique<W>(n); }};
}

std::vector<Row> TextRows();
std::vector<Row> DictionaryRows();
std::vector<Row> GraphRows();

#endif  // BENCH_ROW_H_
