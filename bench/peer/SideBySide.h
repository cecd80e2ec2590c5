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
  std::vector<double> nanoseconds;  // of a unit, in each turn

  double median() const;
};

// What the one costs in units of the other: the median of the ratios of each turn, since the
// machine may be faster in one turn than in the next.
double MedianRatio(const Measured& one, const Measured& other);

// Works that do so many units each.
struct WorkRow {
  std::vector<PeerWork> works;
  long units;
};

// Runs all works of all rows in turn, and that as often as told, after a first turn that does not
// count. Answers a row of cells for each row. Times are processor times of the thread: other
// programs of the machine do not count.
std::vector<std::vector<Measured>> SideBySide(const std::vector<WorkRow>& rows, int repetitions);

// A table with one column for each work, and a row for each size.
class SideTable {
 public:
  SideTable(std::string title, std::vector<std::string> columns)
      : title_(std::move(title)), columns_(std::move(columns)) {}

  void add(std::string what, std::vector<Measured> cells);
  // With the ratios to the first column in parentheses, and what a unit of the last row costs in
  // those of the first row.
  void print() const;
  const Measured& at(std::size_t row, std::size_t column) const {
    return rows_[row].second[column];
  }
  std::size_t count() const { return rows_.size(); }
  // The medians of a column, 0 where it has none.
  std::vector<double> column(std::size_t index) const;
  // The greatest of the ratios to another column.
  double worstRatio(std::size_t column, std::size_t toColumn) const;
  // What the last row costs in units of another row.
  double growth(std::size_t column, std::size_t fromRow) const;

 private:
  std::string title_;
  std::vector<std::string> columns_;
  std::vector<std::pair<std::string, std::vector<Measured>>> rows_;

  void printGrowth() const;
};

#endif  // BENCH_PEER_SIDEBYSIDE_H_
