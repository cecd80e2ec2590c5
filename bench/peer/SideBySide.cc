#include "bench/peer/SideBySide.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace {

double Seconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double Median(std::vector<double> numbers) {
  if (numbers.empty()) return 0;
  const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
  std::nth_element(numbers.begin(), middle, numbers.end());
  return *middle;
}

// Runs a work and notes what a unit of it has cost, unless the turn does not count.
void Run(const PeerWork& work, long units, bool counts, Measured& cell) {
  const double start = Seconds();
  const bool isGood = work();
  const double taken = Seconds() - start;
  cell.isGood = isGood && (cell.isGood || !cell.isThere);
  cell.isThere = true;
  if (counts) cell.nanoseconds.push_back(taken * 1e9 / static_cast<double>(units));
}

std::string Cell(const Measured& cell, const Measured& first) {
  char text[40];
  if (!cell.isThere) return "-";
  if (!cell.isGood) return "wrong";
  std::snprintf(text, sizeof text, "%.0f (%.3g)", cell.median(), MedianRatio(cell, first));
  return text;
}

void PrintCell(const std::string& text) {
  std::printf("%20s", text.c_str());
}

}  // namespace

double Measured::median() const {
  return Median(nanoseconds);
}

double MedianRatio(const Measured& one, const Measured& other) {
  std::vector<double> ratios;
  const std::size_t turns = std::min(one.nanoseconds.size(), other.nanoseconds.size());
  for (std::size_t i = 0; i < turns; ++i) {
    ratios.push_back(one.nanoseconds[i] / other.nanoseconds[i]);
  }
  return Median(ratios);
}

std::vector<std::vector<Measured>> SideBySide(const std::vector<WorkRow>& rows, int repetitions) {
  std::vector<std::vector<Measured>> results;
  results.reserve(rows.size());
  for (const WorkRow& row : rows) results.emplace_back(row.works.size());
  for (int repetition = -1; repetition < repetitions; ++repetition) {
    for (std::size_t r = 0; r < rows.size(); ++r) {
      for (std::size_t i = 0; i < rows[r].works.size(); ++i) {
        const PeerWork& work = rows[r].works[i];
        if (work) Run(work, rows[r].units, repetition >= 0, results[r][i]);
      }
    }
  }
  return results;
}

void SideTable::add(std::string what, std::vector<Measured> cells) {
  rows_.emplace_back(std::move(what), std::move(cells));
}

void SideTable::print() const {
  std::printf("\n%s\n%-26s", title_.c_str(), "");
  for (const std::string& column : columns_) PrintCell(column);
  std::printf("\n");
  for (const auto& [what, cells] : rows_) {
    std::printf("%-26s", what.c_str());
    for (const Measured& cell : cells) PrintCell(Cell(cell, cells.front()));
    std::printf("\n");
  }
  if (rows_.size() > 1) printGrowth();
}

void SideTable::printGrowth() const {
  std::printf("%-26s", "last row to first row");
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    char text[40] = "-";
    if (at(0, i).isThere) std::snprintf(text, sizeof text, "%.2f", growth(i, 0));
    PrintCell(text);
  }
  std::printf("\n");
}

std::vector<double> SideTable::column(std::size_t index) const {
  std::vector<double> costs;
  for (const auto& row : rows_) costs.push_back(row.second[index].median());
  return costs;
}

double SideTable::worstRatio(std::size_t column, std::size_t toColumn) const {
  double worst = 0;
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    worst = std::max(worst, MedianRatio(at(row, column), at(row, toColumn)));
  }
  return worst;
}

double SideTable::growth(std::size_t column, std::size_t fromRow) const {
  return MedianRatio(rows_.back().second[column], at(fromRow, column));
}
