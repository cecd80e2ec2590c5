// yqrtClui beside what could be picked in its place: libcli, Tcl, and a loop written by hand.
//
//   peer_bench               everything, which takes some minutes
//   peer_bench --quick       small languages and few lines, to see that it runs
//   peer_bench --svg FILE    also draws the cost of a line against the size of the language
//
// Each contender reads the same lines in languages of 10 to 10,000 commands: the command's word, a
// choice of two words, an integer and a string. The action of each command adds the integer up or
// takes it away, and the sums are checked. A peer that is not installed is told and left out.
//
// What it is to keep to stands behind the tables, beside the worst of the run.
//
// The contenders run in turn, seven times over. A cell is the median of the times of a unit, and in
// parentheses the median of the ratios to the first column. Memory is that of a process of its own.

#include <cstdio>
#include <cstring>

#include "bench/peer/Contender.h"
#include "bench/peer/PeakMemory.h"
#ifdef PEER_HAS_ENGINE
#include "bench/peer/ScriptRow.h"
#endif
#include "bench/peer/Tables.h"

namespace {

const Scale Full = {{10, 100, 1000, 10000}, 100000, 20000, 7};
const Scale Quick = {{10, 100}, 2000, 1000, 3};

void TellMissingPeers() {
  for (const ContenderKind& kind : ContenderKinds()) {
    if (kind.make == nullptr) std::printf("%s is not installed and left out\n", kind.name);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const char* picture = nullptr;
  Scale scale = Full;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--quick") == 0) {
      scale = Quick;
    } else if (std::strcmp(argv[i], "--svg") == 0 && i + 1 < argc) {
      picture = argv[++i];
    } else {
      std::fprintf(stderr, "usage: peer_bench [--quick] [--svg FILE]\n");
      return 2;
    }
  }
  TellMissingPeers();
  PrintPeakMemory(scale.sizes, scale.sideLines);
  const Tables tables(scale);
  tables.print();
#ifdef PEER_HAS_ENGINE
  const double call = PrintScriptTable(scale.sideLines, scale.repetitions);
#else
  std::printf("\nbuilt without the script engine: no row for commands that it runs\n");
#endif
  tables.printBounds();
#ifdef PEER_HAS_ENGINE
  PrintBound("a plain call of a script, in evaluations by Guile", call, 0.5);
#endif
  if (picture == nullptr || tables.draw(picture)) return 0;
  std::fprintf(stderr, "peer_bench: cannot write %s\n", picture);
  return 1;
}
