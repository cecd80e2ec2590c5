#include "program/terminal/CluiTerminal.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>

#include "platform/engine/ScmVM.h"
#include "program/CluiInterrupt.h"

namespace {

constexpr int EndingSignals[] = {SIGTERM, SIGHUP};
constexpr int FatalSignals[] = {SIGABRT, SIGQUIT, SIGSEGV, SIGBUS, SIGILL, SIGFPE};

// The signal handlers use these.
volatile std::sig_atomic_t isOurs = 0;  // our modes are set
volatile std::sig_atomic_t resized = 0;
volatile std::sig_atomic_t stopped = 0;
volatile std::sig_atomic_t ending = 0;
int wakePipe[2] = {-1, -1};
termios theirModes;
termios ourModes;
std::string beginText;
std::string endText;

void WriteAll(const char* bytes, std::size_t length) {
  while (length > 0) {
    const ssize_t written = write(STDOUT_FILENO, bytes, length);
    if (written < 0 && errno == EAGAIN) {
      pollfd wait = {STDOUT_FILENO, POLLOUT, 0};
      poll(&wait, 1, -1);
    } else if (written < 0 && errno != EINTR) {
      return;
    } else if (written > 0) {
      bytes += written;
      length -= static_cast<std::size_t>(written);
    }
  }
}

void TakeTerminal() {
  tcsetattr(STDIN_FILENO, TCSANOW, &ourModes);
  WriteAll(beginText.data(), beginText.size());
}

void GiveBackTerminal() {
  if (isOurs == 0) return;
  WriteAll(endText.data(), endText.size());
  tcsetattr(STDIN_FILENO, TCSANOW, &theirModes);
}

void Wake() {
  // A write to a full pipe fails, but then poll() returns anyway.
  [[maybe_unused]] const ssize_t written = write(wakePipe[1], "", 1);
}

void Unblock(int signal) {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, signal);
  sigprocmask(SIG_UNBLOCK, &set, nullptr);
}

// Runs the default action of a signal from a handler for the same signal.
void RaiseAsDefault(int signal, struct sigaction& before) {
  struct sigaction action = {};
  action.sa_handler = SIG_DFL;
  sigaction(signal, &action, &before);
  raise(signal);
  Unblock(signal);
}

void OnResize(int) {
  const int before = errno;
  resized = 1;
  Wake();
  errno = before;
}

void OnStop(int signal) {
  const int error = errno;
  GiveBackTerminal();
  struct sigaction before = {};
  RaiseAsDefault(signal, before);
  sigaction(signal, &before, nullptr);
  errno = error;
}

// Follows every stop, also one by SIGSTOP, which cannot be caught.
void OnContinue(int) {
  const int before = errno;
  if (isOurs != 0) TakeTerminal();
  stopped = 1;
  Wake();
  errno = before;
}

void OnEnding(int signal) {
  const int before = errno;
  if (ending != 0) CluiTerminal::EndBy(signal);
  ending = signal;
  ScmVM::interrupt();
  Wake();
  errno = before;
}

void OnFatal(int signal) {
  GiveBackTerminal();
  struct sigaction before = {};
  RaiseAsDefault(signal, before);
}

// Does not replace an ignored signal, nor, with `onlyDefault`, another handler.
void Catch(int signal, void (*handler)(int), bool onlyDefault) {
  struct sigaction action = {};
  if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) return;
  if (onlyDefault && action.sa_handler != SIG_DFL) return;
  action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigaction(signal, &action, nullptr);
}

void CatchAll() {
  Catch(SIGWINCH, OnResize, false);
  Catch(SIGTSTP, OnStop, false);
  Catch(SIGCONT, OnContinue, false);
  for (const int signal : EndingSignals) Catch(signal, OnEnding, false);
  for (const int signal : FatalSignals) Catch(signal, OnFatal, true);
}

// Input is unbuffered, without echo and without translation. Output keeps the usual translation of
// newlines, since scripts write too.
void MakeModes() {
  ourModes = theirModes;
  ourModes.c_iflag &= ~static_cast<tcflag_t>(ICRNL | INLCR | IGNCR | IXON | ISTRIP);
  ourModes.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ECHONL | IEXTEN | ISIG);
  ourModes.c_lflag |= NOFLSH;
  ourModes.c_oflag |= OPOST | ONLCR;
  ourModes.c_cc[VMIN] = 1;
  ourModes.c_cc[VTIME] = 0;
}

void EmptyPipe(int end) {
  char bytes[64];
  while (end >= 0 && ::read(end, bytes, sizeof bytes) > 0) {
  }
}

}  // namespace

bool CluiTerminal::open(const std::string& begin, const std::string& end) {
  if (tcgetattr(STDIN_FILENO, &theirModes) != 0) return false;
  if (pipe2(wakePipe, O_CLOEXEC | O_NONBLOCK) != 0) return false;
  beginText = begin;
  endText = end;
  MakeModes();
  CatchAll();
  std::atexit(GiveBackTerminal);
  isOurs = 1;
  TakeTerminal();
  return true;
}

void CluiTerminal::close() {
  GiveBackTerminal();
  isOurs = 0;
}

char CluiTerminal::eraseKey() const {
  return static_cast<char>(theirModes.c_cc[VERASE]);
}

bool CluiTerminal::size(int& width, int& height) const {
  winsize size = {};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0) {
    return false;
  }
  width = size.ws_col;
  height = size.ws_row;
  return true;
}

CluiTerminal::Event CluiTerminal::read(std::string& bytes, int milliseconds) {
  pollfd waits[] = {
      {STDIN_FILENO, POLLIN, 0}, {wakePipe[0], POLLIN, 0}, {CluiInterruptDescriptor(), POLLIN, 0}};
  if (poll(waits, 3, milliseconds) <= 0) return Event::Nothing;
  EmptyPipe(wakePipe[0]);
  EmptyPipe(CluiInterruptDescriptor());
  if (waits[0].revents == 0) return Event::Nothing;
  char piece[16384];
  const ssize_t length = ::read(STDIN_FILENO, piece, sizeof piece);
  if (length < 0 && (errno == EINTR || errno == EAGAIN)) return Event::Nothing;
  if (length <= 0) return Event::Gone;
  bytes.assign(piece, static_cast<std::size_t>(length));
  return Event::Bytes;
}

void CluiTerminal::write(const std::string& bytes) {
  WriteAll(bytes.data(), bytes.size());
}

void CluiTerminal::enableSignalKeys(bool enable) {
  if (enable) {
    ourModes.c_lflag |= ISIG;
  } else {
    ourModes.c_lflag &= ~static_cast<tcflag_t>(ISIG);
  }
  tcsetattr(STDIN_FILENO, TCSANOW, &ourModes);
}

// Waits until OnContinue has run, since another thread may receive the signals.
void CluiTerminal::stop() {
  stopped = 0;
  kill(0, SIGTSTP);
  for (int i = 0; i < 100 && stopped == 0; ++i) usleep(1000);
}

bool CluiTerminal::wasResized() {
  const bool was = resized != 0;
  resized = 0;
  return was;
}

bool CluiTerminal::wasStopped() {
  const bool was = stopped != 0;
  stopped = 0;
  return was;
}

int CluiTerminal::endingSignal() const {
  return ending;
}

void CluiTerminal::EndBy(int signal) {
  GiveBackTerminal();
  struct sigaction before = {};
  RaiseAsDefault(signal, before);
  _exit(128 + signal);
}
