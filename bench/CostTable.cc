#include "bench/CostTable.h"

#include <ctime>
#include <iomanip>
#include <iostream>
#include <sstream>

#include "bench/Heap.h"

namespace {

constexpr int Repetitions = 7;
constexpr double LeastSeconds = 0.03;

// The processor time of this thread: other programs of the machine do not count.
double Seconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void Measure(benchmark::State& state, const Row& row, long units) {
  const std::unique_ptr<Work> work = row.make(units);
  const HeapPeak peak;
  for ([[maybe_unused]] auto iteration : state) {
    work->prepare();
    const double start = Seconds();
    work->run();
    state.SetIterationTime(Seconds() - start);
    if (!work->isDone()) {
      state.SkipWithError("did not do what the row says");
      break;
    }
  }
  state.counters["peak"] = static_cast<double>(peak.bytes());
}

std::string Fixed(double number, int digits) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(digits) << number;
  return text.str();
}

std::string Bytes(double bytes) {
  if (bytes < 10e3) return Fixed(bytes, 0) + " B";
  if (bytes < 10e6) return Fixed(bytes / 1e3, 0) + " kB";
  return Fixed(bytes / 1e6, 0) + " MB";
}

void PrintLine(std::initializer_list<std::string> cells) {
  constexpr int Widths[] = {-41, -6, 8, 9, 10, 10, 7, 6, 9, 9};
  const int* width = Widths;
  for (const std::string& cell : cells) {
    std::cout << (*width < 0 ? std::left : std::right) << std::setw(std::abs(*width)) << cell
              << ' ';
    ++width;
  }
}

}  // namespace

CostTable::CostTable(const std::vector<Row>& rows) : rows_(rows) {
  for (const Row& row : rows) {
    measure(row, row.small);
    measure(row, row.large);
  }
}

std::string CostTable::NameOf(const Row& row, long units) {
  return row.what + '/' + std::to_string(units);
}

void CostTable::measure(const Row& row, long units) {
  const std::string name = NameOf(row, units);
  costs_[name].units = static_cast<double>(units);
  const auto run = [&row, units](benchmark::State& state) { Measure(state, row, units); };
  benchmark::RegisterBenchmark(name.c_str(), run)
      ->UseManualTime()
      ->MinTime(LeastSeconds)
      ->Repetitions(Repetitions)
      ->ReportAggregatesOnly();
}

void CostTable::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    Cost& cost = costs_.at(run.run_name.function_name);
    if (run.error_occurred) {
      cost.fault = run.error_message;
    } else if (run.aggregate_name == "median") {
      cost.nanoseconds = run.GetAdjustedRealTime() / cost.units;
      cost.peak = run.counters.at("peak").value;
    }
  }
}

void CostTable::Finalize() {
  PrintLine({"what", "unit", "small", "large", "ns small", "ns large", "ratio", "bound",
             "peak small", "peak large"});
  std::cout << '\n';
  for (const Row& row : rows_) printRow(row);
  std::cout
      << "Rows without a bound are for comparison: what the memory of this machine makes of it.\n";
}

void CostTable::printRow(const Row& row) const {
  const Cost& small = costs_.at(NameOf(row, row.small));
  const Cost& large = costs_.at(NameOf(row, row.large));
  if (!small.fault.empty() || !large.fault.empty()) {
    std::cout << row.what << ": " << (small.fault.empty() ? large.fault : small.fault) << '\n';
    return;
  }
  if (small.nanoseconds == 0 || large.nanoseconds == 0) return;
  const double ratio = large.nanoseconds / small.nanoseconds;
  PrintLine({row.what, row.unit, std::to_string(row.small), std::to_string(row.large),
             Fixed(small.nanoseconds, 1), Fixed(large.nanoseconds, 1), Fixed(ratio, 2),
             row.bound == 0 ? "-" : Fixed(row.bound, 1), Bytes(small.peak), Bytes(large.peak)});
  std::cout << (row.bound != 0 && ratio > row.bound ? " above" : "") << '\n';
}
