#include "terminal/YcluiTerminal.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>

namespace {

// The signal handlers use these.
volatile std::sig_atomic_t isOurs = 0;  // between open and close
volatile std::sig_atomic_t isSet = 0;   // our modes are set
volatile std::sig_atomic_t resized = 0;
volatile std::sig_atomic_t stopped = 0;
volatile std::sig_atomic_t ending = 0;
void (*onEnding)() = nullptr;
int wakePipe[2] = {-1, -1};
termios theirModes;
termios ourModes;
std::string beginText;
std::string endText;

int hostsWake = -1;

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
  isSet = 1;
}

void GiveBackTerminal() {
  if (isOurs == 0) return;
  WriteAll(endText.data(), endText.size());
  tcsetattr(STDIN_FILENO, TCSANOW, &theirModes);
  isSet = 0;
}

// A write to a full pipe fails, but then poll() returns anyway.
void Wake() {
  const ssize_t written = write(wakePipe[1], "", 1);
  (void)written;
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

void Continue() {
  if (isOurs != 0) TakeTerminal();
  stopped = 1;
  Wake();
}

// Without a shell to continue it the process does not stop, and no SIGCONT follows.
void OnStop(int signal) {
  const int error = errno;
  GiveBackTerminal();
  struct sigaction before = {};
  RaiseAsDefault(signal, before);
  sigaction(signal, &before, nullptr);
  if (isSet == 0) Continue();
  errno = error;
}

// Follows every stop, also one by SIGSTOP, which cannot be caught.
void OnContinue(int) {
  const int before = errno;
  Continue();
  errno = before;
}

void OnEnding(int signal) {
  const int before = errno;
  if (ending != 0) YcluiTerminal::EndBy(signal);
  ending = signal;
  if (onEnding != nullptr) onEnding();
  Wake();
  errno = before;
}

void OnFatal(int signal) {
  GiveBackTerminal();
  struct sigaction before = {};
  RaiseAsDefault(signal, before);
}

struct Caught {
  int signal;
  void (*handler)(int);
  struct sigaction before = {};
  bool isCaught = false;
};

Caught caught[] = {
    {SIGWINCH, OnResize}, {SIGTSTP, OnStop},  {SIGCONT, OnContinue}, {SIGTERM, OnEnding},
    {SIGHUP, OnEnding},   {SIGABRT, OnFatal}, {SIGQUIT, OnFatal},    {SIGSEGV, OnFatal},
    {SIGBUS, OnFatal},    {SIGILL, OnFatal},  {SIGFPE, OnFatal},     {SIGINT, OnFatal},
    {SIGPIPE, OnFatal},   {SIGALRM, OnFatal}, {SIGUSR1, OnFatal},    {SIGUSR2, OnFatal},
    {SIGXCPU, OnFatal},   {SIGSYS, OnFatal},  {SIGTRAP, OnFatal}};

// Does not replace an ignored signal, nor, for what is fatal, another handler.
void Catch(Caught& entry) {
  if (entry.isCaught || sigaction(entry.signal, nullptr, &entry.before) != 0) return;
  if (entry.before.sa_handler == SIG_IGN) return;
  if (entry.handler == OnFatal && entry.before.sa_handler != SIG_DFL) return;
  struct sigaction action = {};
  action.sa_handler = entry.handler;
  action.sa_flags = SA_RESTART;
  entry.isCaught = sigaction(entry.signal, &action, nullptr) == 0;
}

// A handler that was set meanwhile stays.
void Release(Caught& entry) {
  struct sigaction now = {};
  const bool isStillOurs = entry.isCaught && sigaction(entry.signal, nullptr, &now) == 0 &&
                           now.sa_handler == entry.handler;
  if (isStillOurs) sigaction(entry.signal, &entry.before, nullptr);
  entry.isCaught = false;
}

// Input is unbuffered, without echo and without translation. Output keeps the usual translation of
// newlines, since commands write too.
void MakeModes() {
  ourModes = theirModes;
  ourModes.c_iflag &= ~static_cast<tcflag_t>(ICRNL | INLCR | IGNCR | IXON | ISTRIP);
  ourModes.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ECHONL | IEXTEN | ISIG);
  ourModes.c_lflag |= NOFLSH;
  ourModes.c_oflag |= OPOST | ONLCR;
  ourModes.c_cc[VMIN] = 1;
  ourModes.c_cc[VTIME] = 0;
}

bool MakePipe() {
  static const bool isMade = pipe2(wakePipe, O_CLOEXEC | O_NONBLOCK) == 0;
  return isMade;
}

// False when nothing will come any more.
bool ReadAway(int descriptor) {
  char bytes[64];
  const ssize_t length = ::read(descriptor, bytes, sizeof bytes);
  return length > 0 || (length < 0 && (errno == EAGAIN || errno == EINTR));
}

}  // namespace

bool YcluiTerminal::open(const std::string& begin, const std::string& end, void (*endingHook)(),
                         int wake) {
  if (isOurs != 0 || tcgetattr(STDIN_FILENO, &theirModes) != 0 || !MakePipe()) return false;
  static const bool isRegistered = std::atexit(GiveBackTerminal) == 0;
  if (!isRegistered) return false;
  beginText = begin;
  endText = end;
  onEnding = endingHook;
  hostsWake = wake;
  MakeModes();
  for (Caught& entry : caught) Catch(entry);
  isOurs = 1;
  TakeTerminal();
  isOpen_ = true;
  return true;
}

void YcluiTerminal::close() {
  if (!isOpen_) return;
  isOpen_ = false;
  GiveBackTerminal();
  isOurs = 0;
  for (Caught& entry : caught) Release(entry);
}

char YcluiTerminal::eraseKey() const {
  return static_cast<char>(theirModes.c_cc[VERASE]);
}

bool YcluiTerminal::size(int& width, int& height) const {
  winsize size = {};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0) {
    return false;
  }
  width = size.ws_col;
  height = size.ws_row;
  return true;
}

YcluiTerminal::Event YcluiTerminal::read(std::string& bytes, int milliseconds) {
  pollfd waits[] = {{STDIN_FILENO, POLLIN, 0}, {wakePipe[0], POLLIN, 0}, {hostsWake, POLLIN, 0}};
  if (poll(waits, 3, milliseconds) <= 0) return Event::Nothing;
  if (waits[1].revents != 0) ReadAway(wakePipe[0]);
  if (waits[2].revents != 0 && !ReadAway(hostsWake)) hostsWake = -1;
  if (waits[0].revents == 0) return Event::Nothing;
  char piece[16384];
  const ssize_t length = ::read(STDIN_FILENO, piece, sizeof piece);
  if (length < 0 && (errno == EINTR || errno == EAGAIN)) return Event::Nothing;
  if (length <= 0) return Event::Gone;
  bytes.assign(piece, static_cast<std::size_t>(length));
  return Event::Bytes;
}

void YcluiTerminal::write(const std::string& bytes) {
  WriteAll(bytes.data(), bytes.size());
}

void YcluiTerminal::enableSignalKeys(bool enable) {
  if (enable) {
    ourModes.c_lflag |= ISIG;
  } else {
    ourModes.c_lflag &= ~static_cast<tcflag_t>(ISIG);
  }
  if (isOurs != 0) tcsetattr(STDIN_FILENO, TCSANOW, &ourModes);
}

// Waits until OnContinue has run, since another thread may receive the signals.
void YcluiTerminal::stop() {
  stopped = 0;
  kill(0, SIGTSTP);
  for (int i = 0; i < 100 && stopped == 0; ++i) usleep(1000);
}

bool YcluiTerminal::wasResized() {
  const bool was = resized != 0;
  resized = 0;
  return was;
}

bool YcluiTerminal::wasStopped() {
  const bool was = stopped != 0;
  stopped = 0;
  return was;
}

int YcluiTerminal::endingSignal() const {
  return ending;
}

void YcluiTerminal::EndBy(int signal) {
  GiveBackTerminal();
  struct sigaction before = {};
  RaiseAsDefault(signal, before);
  _exit(128 + signal);
}
