#include "program/CluiInterrupt.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "platform/engine/ScmVM.h"

namespace {

volatile std::sig_atomic_t asked = 0;
volatile std::sig_atomic_t lineFinishes = 0;
int pipeEnds[2] = {-1, -1};

void OnInterrupt(int) {
  const int before = errno;
  asked = 1;
  if (lineFinishes == 0) ScmVM::interrupt();
  // A full pipe has told already.
  if (write(pipeEnds[1], "", 1) < 0) errno = before;
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

void CluiForgetInterrupt() {
  asked = 0;
}

void CluiLetLineFinish(bool finish) {
  lineFinishes = finish ? 1 : 0;
}

bool CluiInterrupted() {
  return asked != 0;
}

int CluiInterruptDescriptor() {
  return pipeEnds[0];
}
