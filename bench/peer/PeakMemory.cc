#include "bench/peer/PeakMemory.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

long PeakMemoryOf(const std::function<void()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    work();
    _exit(0);
  }
  int status = 0;
  rusage usage{};
  if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0) return -1;
  return usage.ru_maxrss;
}
