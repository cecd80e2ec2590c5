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

std::string Cell(const Measured& cell) {
  char text[40];
  if (!cell.isThere) return "-";
  if (!cell.isGood) return "wrong";
  std::snprintf(text, sizeof text, "%.0f (%.3g)", cell.nanoseconds, cell.ratio);
  return text;
}

void PrintCell(const std::string& text) {
  std::printf("%20s", text.c_str());
}

}  // namespace

std::vector<Measured> SideBySide(const std::vector<PeerWork>& works, long units, int repetitions) {
  std::vector<Measured> results(works.size());
  std::vector<std::vector<double>> seconds(works.size());
  std::vector<std::vector<double>> ratios(works.size());
  for (int repetition = -1; repetition < repetitions; ++repetition) {
    double first = 0;
    for (std::size_t i = 0; i < works.size(); ++i) {
      if (!works[i]) continue;
      const double start = Seconds();
      const bool isGood = works[i]();
      const double taken = Seconds() - start;
      results[i].isGood = isGood && (results[i].isGood || !results[i].isThere);
      results[i].isThere = true;
      if (i == 0) first = taken;
      if (repetition < 0) continue;
      seconds[i].push_back(taken);
      ratios[i].push_back(taken / first);
    }
  }
  for (std::size_t i = 0; i < works.size(); ++i) {
    results[i].nanoseconds = Median(seconds[i]) * 1e9 / static_cast<double>(units);
    results[i].ratio = Median(ratios[i]);
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
    for (const Measured& cell : cells) PrintCell(Cell(cell));
    std::printf("\n");
  }
  if (rows_.size() > 1) printGrowth();
}

void SideTable::printGrowth() const {
  std::printf("%-26s", "last row to first row");
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const std::vector<double> costs = column(i);
    char text[40] = "-";
    if (costs.front() > 0) std::snprintf(text, sizeof text, "%.2f", costs.back() / costs.front());
    PrintCell(text);
  }
  std::printf("\n");
}

std::vector<double> SideTable::column(std::size_t index) const {
  std::vector<double> costs;
  for (const auto& row : rows_) costs.push_back(row.second[index].nanoseconds);
  return costs;
}

std::vector<double> SideTable::ratios(std::size_t index) const {
  std::vector<double> all;
  for (const auto& row : rows_) all.push_back(row.second[index].ratio);
  return all;
}
