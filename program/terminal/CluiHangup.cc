#include "program/terminal/CluiHangup.h"

#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "program/CluiInterrupt.h"

namespace {

volatile std::sig_atomic_t asked = 0;
struct sigaction Before = {};
bool isCaught = false;

void OnHangup(int signal) {
  const int error = errno;
  termios modes = {};
  if (tcgetattr(STDIN_FILENO, &modes) == 0) {
    asked = 1;
    CluiWake();
  } else if (Before.sa_handler != SIG_DFL) {
    Before.sa_handler(signal);
  }
  errno = error;
}

}  // namespace

CluiHangup::CluiHangup() {
  if (sigaction(SIGHUP, nullptr, &Before) != 0 || Before.sa_handler == SIG_IGN) return;
  struct sigaction action = {};
  action.sa_handler = OnHangup;
  action.sa_flags = SA_RESTART;
  isCaught = sigaction(SIGHUP, &action, nullptr) == 0;
}

CluiHangup::~CluiHangup() {
  if (isCaught) sigaction(SIGHUP, &Before, nullptr);
  isCaught = false;
}

bool CluiHangup::isAsked() {
  return asked != 0;
}

void CluiHangup::clear() {
  asked = 0;
}
