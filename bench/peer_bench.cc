// Compares yqrtClui with libcli, Tcl and a hand-written loop, and checks the bounds that yqrtClui
// is to keep.
//
//   peer_bench >peer.csv       some minutes; the bounds are printed on the standard error as well
//   peer_bench --quick         small languages and few lines, without bounds, to see that it runs
//   bench/report.py peer.csv   tables of the results
//
// Each implementation reads the same lines in languages of 10 to 10,000 commands: the command's
// word, a choice of two words, an integer and a string. The action of each command adds the integer
// or subtracts it, and the sums are checked. Implementations that are not installed are left out.
//
// All tasks run in turn, seven times. A value is the median of the times of a unit, a ratio the
// median of the ratios of each turn. The exit status is 1 when a bound is not kept or a result is
// wrong.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <tuple>

#include "bench/Heap.h"
#include "bench/Results.h"
#include "bench/WarmParser.h"
#include "bench/peer/Peers.h"
#include "bench/peer/ScriptTasks.h"
#include "tests/support/WorkingFolder.h"

namespace {

constexpr int Smallest = 10;  // commands
constexpr int Turns = 7;

constexpr const char* Memory = "peak memory beyond that of the loop, kB";
constexpr const char* Reading = "a line, ns";
constexpr const char* Previewing = "a line previewed, ns";
constexpr const char* Unknown = "a line refused for an unknown word, ns";
constexpr const char* Misplaced = "a line refused for a word not allowed there, ns";
constexpr const char* Building = "building and destroying, ns a command";
constexpr const char* AtEmptyPrompt = "completion at an empty prompt, ns";
constexpr const char* AfterLetters = "completion after two letters, ns";
constexpr const char* Alternating = "the same, alternating with one after a word, ns";
constexpr const char* Script = "a call in a script, ns";

constexpr const char* Loop = "loop";
constexpr const char* Clui = "yqrtClui";
constexpr const char* ShortForms = "yqrtClui, short forms";
constexpr const char* Declared = "yqrtClui, in C++";
constexpr const char* Libcli = "libcli";
constexpr const char* Tcl = "Tcl";

class PeerBench {
 public:
  // The languages have 10, 100, ... commands, up to `largest`.
  explicit PeerBench(int largest)
      : largest_(largest), lines_(10 * largest), fewLines_(2 * largest) {
    for (int size = Smallest; size <= largest; size *= 10) sizes_.push_back(size);
  }

  void measureAll();
  // Returns whether all of them are kept.
  bool checkBounds();

 private:
  int largest_;
  int lines_;
  int fewLines_;  // of the rows that matter less
  std::vector<int> sizes_;
  Results results_;
  std::map<std::tuple<std::string, std::string, long>, Cost> costs_;  // by row, kind and size
  double megabytes_ = 0;  // of yqrtClui with the largest language
  long allocations_ = 0;  // of parsers that have read the same before

  void measureMemory();
  void measureBuilding();
  void measureReading(const std::vector<Peers>& peers);
  void measureCompletion(const std::vector<Peers>& peers);
  void measure(const char* table, const std::vector<Task>& tasks);
  void countAllocations(const std::vector<Task>& tasks);

  bool has(const char* kind) const { return costs_.count({Building, kind, largest_}) != 0; }
  const Cost& cost(const char* row, const char* kind, long size) const {
    return costs_.at({row, kind, size});
  }
  double growth(const char* kind) const {
    return MedianRatio(cost(Reading, kind, largest_), cost(Reading, kind, Smallest));
  }
  // The greatest ratio of two kinds in a row, at any size from `least` to `most`.
  double greatestRatio(const char* row, const char* kind, const char* toKind, int least = 0,
                       int most = 10000) const;
  // The greatest ratio of a line that is previewed to one that is read, at any size.
  double previewInLines() const;
  void checkCompletion();
};

void PeerBench::measureAll() {
  measureMemory();
  measureBuilding();
  const std::vector<Peers> peers(sizes_.begin(), sizes_.end());
  measureReading(peers);
  measureCompletion(peers);
#ifdef PEER_HAS_ENGINE
  measure("script", ScriptTasks(Script, fewLines_));
#endif
  allocations_ += AddWarmAllocations(results_);
}

// Called first, while this process is small.
void PeerBench::measureMemory() {
  for (const int size : sizes_) {
    const Language language(size);
    const long least = PeakKilobytes(language, Kinds().front(), fewLines_);
    for (const Kind& kind : Kinds()) {
      if (kind.name == std::string(Loop)) continue;
      const auto peak = static_cast<double>(PeakKilobytes(language, kind, fewLines_) - least);
      results_.add("peers", Memory, kind.name, std::to_string(size), peak);
      if (kind.name == std::string(Clui)) megabytes_ = peak / 1024;
    }
  }
}

// The sizes are measured one after the other, because the memory of a large language would be new
// to the process each time after a smaller one. Each language is built so many times that the
// number of commands is the same.
void PeerBench::measureBuilding() {
  for (const int size : sizes_) {
    const Language language(size);
    measure("peers", BuildingTasks(language, Building, largest_ / size));
  }
}

void PeerBench::measureReading(const std::vector<Peers>& peers) {
  std::vector<Task> tasks;
  for (const Peers& p : peers) {
    p.addReading(tasks, Reading, Spelling::Whole, lines_);
    p.addReading(tasks, Reading, Spelling::Short, lines_);
    p.addLogging(tasks, Reading, fewLines_);
    p.addDeclared(tasks, Reading, lines_);
  }
  for (const Peers& p : peers) p.addPreviewing(tasks, Previewing, lines_);
  for (const Peers& p : peers) p.addReading(tasks, Unknown, Spelling::Unknown, fewLines_);
  for (const Peers& p : peers) p.addReading(tasks, Misplaced, Spelling::Misplaced, fewLines_);
  measure("peers", tasks);
  countAllocations(tasks);
}

void PeerBench::measureCompletion(const std::vector<Peers>& peers) {
  std::vector<Task> tasks;
  for (const Peers& p : peers) p.addCompleting(tasks, AtEmptyPrompt, 0, false);
  for (const Peers& p : peers) p.addCompleting(tasks, AfterLetters, 2, false);
  for (const Peers& p : peers) p.addCompleting(tasks, Alternating, 2, true);
  measure("peers", tasks);
}

// Adds the cost of each task and its ratio to the first kind of that row and size.
void PeerBench::measure(const char* table, const std::vector<Task>& tasks) {
  const std::vector<Cost> costs = SideBySide(tasks, Turns);
  std::map<std::pair<std::string, long>, const Cost*> first;
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    const auto& [row, kind, size, units, work] = tasks[i];
    const Cost* reference = first.emplace(std::pair(row, size), &costs[i]).first->second;
    results_.add(table, row, kind, std::to_string(size), costs[i].median(),
                 MedianRatio(costs[i], *reference));
    costs_[{row, kind, size}] = costs[i];
    if (size != largest_) continue;
    results_.add(table, row, kind, "growth", MedianRatio(costs[i], costs_[{row, kind, Smallest}]));
  }
}

// Runs the tasks of yqrtClui once more. Opening a log allocates, so that one is not counted.
void PeerBench::countAllocations(const std::vector<Task>& tasks) {
  for (const Task& task : tasks) {
    if (task.kind != Clui && task.kind != ShortForms && task.kind != Declared) continue;
    const long before = HeapRequests();
    task.work.run();
    const long requests = HeapRequests() - before;
    results_.add("allocations", task.row, task.kind, std::to_string(task.size),
                 static_cast<double>(requests));
    allocations_ += requests;
  }
}

double PeerBench::greatestRatio(const char* row, const char* kind, const char* toKind, int least,
                                int most) const {
  double greatest = 0;
  for (const int size : sizes_) {
    if (size < least || size > most) continue;
    greatest = std::max(greatest, MedianRatio(cost(row, kind, size), cost(row, toKind, size)));
  }
  return greatest;
}

double PeerBench::previewInLines() const {
  double greatest = 0;
  for (const int size : sizes_) {
    const double ratio = MedianRatio(cost(Previewing, Clui, size), cost(Reading, Clui, size));
    greatest = std::max(greatest, ratio);
  }
  return greatest;
}

bool PeerBench::checkBounds() {
  results_.atMost("a line, in lines of the loop", greatestRatio(Reading, Clui, Loop), 6);
  results_.atMost("a line with 10,000 commands, in lines with 10", growth(Clui), 2);
  results_.atMost("the same in short forms", growth(ShortForms), 2);
  results_.atMost("a preview of a line, in lines", previewInLines(), 3);
  // Beyond that the functions do not fit into the caches: the other kind has one for all commands.
  results_.atMost("a line that calls a function of a language in C++, up to 1,000 words, in lines",
                  greatestRatio(Reading, Declared, Clui, 0, 1000), 1.2);
  if (has(Tcl)) {
    results_.atLeast("a line of Tcl, in lines", 1 / greatestRatio(Reading, Clui, Tcl), 2);
  }
  results_.atMost("building and destroying 10,000 commands, ms",
                  cost(Building, Clui, largest_).median() * largest_ * 1e-6, 15);
  results_.atMost("peak memory with 10,000 commands, MB", megabytes_, 6);
  results_.atMost("allocations of a warm parser", static_cast<double>(allocations_), 0);
  checkCompletion();
#ifdef PEER_HAS_ENGINE
  results_.atMost("a call in a script, in evaluations by Guile",
                  MedianRatio(cost(Script, "run by the engine", 1), cost(Script, "Guile", 1)), 0.5);
#endif
  return results_.areBoundsKept();
}

void PeerBench::checkCompletion() {
  results_.atMost("completion after two letters with 10,000 commands, µs",
                  cost(AfterLetters, Clui, largest_).median() * 1e-3, 20);
  if (!has(Libcli)) return;
  results_.atLeast("completion at an empty prompt by libcli, in ours",
                   1 / greatestRatio(AtEmptyPrompt, Clui, Libcli), 1);
  results_.atLeast("completion after two letters by libcli, from 1,000 commands on, in ours",
                   1 / greatestRatio(AfterLetters, Clui, Libcli, 1000), 3);
  results_.atLeast("the same, alternating with one after a word",
                   1 / greatestRatio(Alternating, Clui, Libcli, 1000), 3);
}

}  // namespace

int main(int argc, char** argv) {
  const bool isQuick = argc == 2 && std::strcmp(argv[1], "--quick") == 0;
  if (argc > 1 && !isQuick) {
    std::fprintf(stderr, "usage: peer_bench [--quick]\n");
    return 2;
  }
  const WorkingFolder folder;
  PeerBench bench(isQuick ? 100 : 10000);
  bench.measureAll();
  return isQuick || bench.checkBounds() ? 0 : 1;
}
