#include "program/CluiInterrupt.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "platform/engine/ScmVM.h"

namespace {

volatile std::sig_atomic_t interrupted = 0;
volatile std::sig_atomic_t lineFinishes = 0;
int pipeEnds[2] = {-1, -1};

void OnInterrupt(int) {
  const int before = errno;
  interrupted = 1;
  if (lineFinishes == 0) ScmVM::interrupt();
  CluiWake();
  errno = before;
}

void CatchWith(int flags) {
  struct sigaction action = {};
  action.sa_handler = OnInterrupt;
  action.sa_flags = flags;
  sigaction(SIGINT, &action, nullptr);
}

}  // namespace

void CluiCatchInterrupt() {
  struct sigaction old = {};
  if (sigaction(SIGINT, nullptr, &old) != 0 || old.sa_handler == SIG_IGN) return;
  if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) return;
  CatchWith(static_cast<int>(SA_RESETHAND));
}

void CluiKeepCatchingInterrupts() {
  if (pipeEnds[0] >= 0) CatchWith(SA_RESTART);
}

void CluiClearInterrupt() {
  interrupted = 0;
}

void CluiFinishLineOnInterrupt(bool finish) {
  lineFinishes = finish ? 1 : 0;
}

bool CluiInterrupted() {
  return interrupted != 0;
}

void CluiWake() {
  // A write to a full pipe fails, but then the descriptor is readable already.
  [[maybe_unused]] const ssize_t written = write(pipeEnds[1], "", 1);
}

int CluiInterruptDescriptor() {
  return pipeEnds[0];
}
