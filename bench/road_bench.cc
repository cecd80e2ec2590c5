// What the road of a line costs, shown as ratios: each row does the same work on few units and on
// many, in one run, and compares the cost of a unit. A cost that grows with the size of the input
// shows as a ratio far above 1 on any machine. Nothing here fails; a row above its bound is marked.
//
//   one text                 a drawing of 10 MB and one of 10 kB, each given at once: nothing looks
//                            again at what was read or is to come
//   one text, with a log     the same with a log open: what is logged is not kept
//   a log played back        lines of a file: a line costs nothing of those before it
//   aliases in one line      texts that suspend a long line must not copy it
//   a frame that never ends  the texts and tokens of a command grow by what comes, while an echo
//                            procedure looks at them each time
//   that frame taken back    token by token, and they shrink in the same way
//   marks in a frame above marks
//                            words that may stand anywhere, in a frame that interrupts such words:
//                            the priority check looks for the first word of both commands
//   words added, deleted, found by name, found by a short form, unknown words
//                            the dictionary: a word costs its length at any number of words
//   the same, 100 in each    as many words in dictionaries of 100: what the caches of the machine
//                            make of 8 MB, whatever the size of a dictionary
//   a chain built, walked, destroyed
//                            a syntax of a million words in a row, on a stack of 1 MB
//   a plain list built, walked, destroyed
//                            the least that so many nodes in so much memory can cost
//   allocations of a warm parser
//                            a parser that has read such a text before asks for no memory
//
// Times are processor times of the thread, the medians of seven repetitions that come in random
// order. The peaks are the most bytes on the heap at a time beyond what the row is given, which is
// its text, or the words that it looks up.
//
// Takes the options of the benchmark library, --benchmark_filter=REGEX for instance.

#include <benchmark/benchmark.h>
#include <pthread.h>

#include <iostream>
#include <vector>

#include "bench/CostTable.h"
#include "bench/Row.h"
#include "bench/WarmParser.h"

namespace {

constexpr std::size_t StackBytes = 1 << 20;

std::vector<Row> AllRows() {
  std::vector<Row> all;
  for (const auto& rows : {TextRows(), DictionaryRows(), GraphRows()}) {
    all.insert(all.end(), rows.begin(), rows.end());
  }
  return all;
}

void* RunAll(void*) {
  const std::vector<Row> rows = AllRows();
  CostTable table(rows);
  benchmark::RunSpecifiedBenchmarks(&table);
  PrintWarmAllocations();
  return nullptr;
}

// Runs everything on a stack much smaller than that of an ordinary program.
bool RunOnSmallStack() {
  pthread_attr_t attributes;
  pthread_t thread{};
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, StackBytes);
  const bool isRunning = pthread_create(&thread, &attributes, RunAll, nullptr) == 0;
  if (isRunning) pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  return isRunning;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<char*> arguments(argv, argv + argc);
  char interleave[] = "--benchmark_enable_random_interleaving=true";
  arguments.insert(arguments.begin() + 1, interleave);
  int count = static_cast<int>(arguments.size());
  arguments.push_back(nullptr);
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;
  if (RunOnSmallStack()) return 0;
  std::cerr << "road_bench: no thread with a stack of " << StackBytes << " bytes\n";
  return 1;
}
