// Shows that the cost of a unit of work does not grow with the size of the input.
//
//   scale_bench >scale.csv
//   bench/report.py scale.csv
//
// Each row processes the same number of units in one large piece and in many small ones, in turn,
// and compares the cost of a unit: a text of 10 MB and a text of 10 kB read a thousand times. A
// cost that grows with the size of a piece shows as a growth far above 1 on any machine. The peak
// is the largest number of bytes on the heap beyond those of the input, of the large piece.
//
// The bounds are printed on the standard error; the exit status is 1 when one is not kept or a
// result is wrong.

#include "bench/Measure.h"
#include "bench/Results.h"
#include "bench/scale/Rows.h"
#include "tests/support/WorkingFolder.h"

namespace {

constexpr int Turns = 7;
constexpr double MostGrowth = 2;

Task TaskOf(const Row& row, long size) {
  return {row.what, row.unit, size, static_cast<double>(row.large),
          row.make(size, row.large / size)};
}

void Measure(const Row& row, Results& results) {
  const auto costs = SideBySide({TaskOf(row, row.small), TaskOf(row, row.large)}, Turns);
  const double growth = MedianRatio(costs[1], costs[0]);
  const auto add = [&](const char* column, double value) {
    results.add("scale", row.what, row.unit, column, value);
  };
  add("small", static_cast<double>(row.small));
  add("large", static_cast<double>(row.large));
  add("ns small", costs[0].median());
  add("ns large", costs[1].median());
  add("growth", growth);
  add("peak kB", static_cast<double>(costs[1].peakBytes) / 1e3);
  results.atMost(row.what + ", growth", growth, MostGrowth);
}

}  // namespace

int main() {
  const WorkingFolder folder;
  Results results;
  for (const auto& rows : {TextRows(), WordRows(), GraphRows()}) {
    for (const Row& row : rows) Measure(row, results);
  }
  return results.areBoundsKept() ? 0 : 1;
}
