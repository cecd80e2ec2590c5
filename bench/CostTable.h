// The table of costs: a reporter that keeps the medians and prints them side by side.

#ifndef BENCH_COSTTABLE_H_
#define BENCH_COSTTABLE_H_

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

#include "bench/Row.h"

// Registers both sizes of each row with the benchmark library and collects what comes of them. The
// rows have names of their own and outlive the table.
class CostTable : public benchmark::BenchmarkReporter {
 public:
  explicit CostTable(const std::vector<Row>& rows);

  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  struct Cost {
    double units = 1;
    double nanoseconds = 0;  // of one unit; 0 when it was not measured
    double peak = 0;         // bytes
    std::string fault;
  };

  const std::vector<Row>& rows_;
  std::map<std::string, Cost> costs_;

  static std::string NameOf(const Row& row, long units);
  void measure(const Row& row, long units);
  void printRow(const Row& row) const;
};

#endif  // BENCH_COSTTABLE_H_
