// Times of works that are measured side by side.

#ifndef BENCH_PEER_SIDEBYSIDE_H_
#define BENCH_PEER_SIDEBYSIDE_H_

#include <functional>
#include <string>
#include <utility>
#include <vector>

// Answers whether it did what it is there for. An empty one is left out.
using PeerWork = std::function<bool()>;

struct Measured {
  bool isThere = false;
  bool isGood = false;
  double nanoseconds = 0;  // of a unit, the median
  double ratio = 0;        // to the first work, the median of those of each repetition
};

// Runs the works in turn, and that as often as told, after a first turn that does not count. Times
// are processor times of the thread: other programs of the machine do not count.
std::vector<Measured> SideBySide(const std::vector<PeerWork>& works, long units, int repetitions);

// A table with one column for each work, and a row for each size.
class SideTable {
 public:
  SideTable(std::string title, std::vector<std::string> columns)
      : title_(std::move(title)), columns_(std::move(columns)) {}

  void add(std::string what, std::vector<Measured> cells);
  // With the ratios in parentheses, and what a unit of the last row costs, divided by that of the
  // first row.
  void print() const;
  // The nanoseconds of a column, and its ratios, 0 where it has none.
  std::vector<double> column(std::size_t index) const;
  std::vector<double> ratios(std::size_t index) const;

 private:
  std::string title_;
  std::vector<std::string> columns_;
  std::vector<std::pair<std::string, std::vector<Measured>>> rows_;

  void printGrowth() const;
};

#endif  // BENCH_PEER_SIDEBYSIDE_H_
