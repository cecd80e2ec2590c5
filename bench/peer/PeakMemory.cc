#include "bench/peer/PeakMemory.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

#include "bench/peer/Contender.h"

namespace {

void ReadOnce(const ContenderKind& kind, const Language& language, int count) {
  const std::unique_ptr<Contender> contender = kind.make(language);
  TypedLines typed;
  for (const Line& line : LinesOf(language, Spelling::Whole, count)) {
    typed.add(contender->typed(line));
  }
  contender->read(typed);
}

// In kilobytes; -1 for a contender that is not installed, and when there is no process for it.
long PeakMemoryOf(const ContenderKind& kind, const Language& language, int lines) {
  if (kind.make == nullptr) return -1;
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    ReadOnce(kind, language, lines);
    _exit(0);
  }
  int status = 0;
  rusage usage{};
  if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0) return -1;
  return usage.ru_maxrss;
}

}  // namespace

void PrintPeakMemory(const std::vector<int>& sizes, int lines) {
  std::printf("peak memory beyond that of the loop, kB\n%-26s", "");
  for (const ContenderKind& kind : ContenderKinds()) std::printf("%20s", kind.name);
  for (const int size : sizes) {
    const Language language(size);
    std::printf("\n%-26d", size);
    long least = -1;
    for (const ContenderKind& kind : ContenderKinds()) {
      const long peak = PeakMemoryOf(kind, language, lines);
      if (least < 0) least = peak;
      std::printf("%20s", peak < 0 ? "-" : std::to_string(peak - least).c_str());
    }
  }
  std::printf("\n");
}
