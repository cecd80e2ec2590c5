// Writes results to the standard output as CSV, and bounds to the standard error as well.

#ifndef BENCH_RESULTS_H_
#define BENCH_RESULTS_H_

#include <string>

// One value on each line, in the cell `column` of the row `row` and `kind` of a table. `ratio` is
// empty or the ratio to the first kind of that row and column. report.py makes tables of them.
class Results {
 public:
  Results();

  void add(const char* table, const std::string& row, const std::string& kind,
           const std::string& column, double value, double ratio = 0);
  // Prints the figure, its bound and whether it is kept.
  void atMost(const std::string& what, double figure, double bound);
  void atLeast(const std::string& what, double figure, double bound);

  bool areBoundsKept() const { return areKept_; }

 private:
  bool areKept_ = true;

  void addBound(const std::string& what, double figure, const std::string& bound, bool isKept);
};

#endif  // BENCH_RESULTS_H_
