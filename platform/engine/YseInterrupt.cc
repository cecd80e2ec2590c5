// Stopping the running text from a signal handler. A handler may call few functions: it writes a
// byte into a pipe, and a thread that reads the pipe makes Guile run a function in the engine's
// thread.

// Declares the collector's signals without its replacements of the thread functions.
#define GC_THREADS
#define GC_NO_THREAD_REDIRECTS

#include <fcntl.h>
#include <gc/gc.h>
#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <thread>

#include "platform/engine/YseEngine.h"

namespace yse {

namespace {

// Interrupts a system call of the engine's thread. It is ignored by default, so it does not affect
// a process without a handler.
constexpr int WakeSignal = SIGURG;
constexpr unsigned WakeMicroseconds = 20000;
constexpr unsigned OverflowMicroseconds = 100;

// The requests to the thread.
constexpr char Interrupted = 'i';
constexpr char Overflowed = 'o';

int Pipe[2] = {-1, -1};
SCM InterruptAsync = SCM_BOOL_F;
SCM OverflowAsync = SCM_BOOL_F;
SCM EngineThread = SCM_BOOL_F;

void SendRequest(char request) {
  const ssize_t length = write(Pipe[1], &request, 1);
  (void)length;
}

// Runs in the engine's thread, at some point of the running text. May raise.
SCM InterruptAsked() {
  if (TheEngine().stopping && ScriptRuns()) StopText(Text::Interrupted);
  return SCM_UNSPECIFIED;
}

void* MarkAsync(void* async) {
  scm_system_async_mark_for_thread(*static_cast<SCM*>(async), EngineThread);
  return nullptr;
}

// A text that waits in a system call is interrupted when the call returns. Both the async and the
// signal can arrive when they have no effect, so they are repeated until the texts have ended.
void WakeUntilStopped() {
  const Engine& engine = TheEngine();
  while (engine.stopping && engine.depth > 0) {
    scm_with_guile(&MarkAsync, &InterruptAsync);
    if (!engine.native) pthread_kill(engine.thread, WakeSignal);
    usleep(WakeMicroseconds);
  }
}

void WatchPipe() {
  for (;;) {
    char byte = 0;
    const ssize_t length = read(Pipe[0], &byte, 1);
    if (length == 0 || (length < 0 && errno != EINTR)) return;
    if (length < 0) continue;
    if (byte == Overflowed) {
      usleep(OverflowMicroseconds);
      scm_with_guile(&MarkAsync, &OverflowAsync);
    } else {
      WakeUntilStopped();
    }
  }
}

void IgnoreSignal(int) {}

void CatchWakeSignal() {
  struct sigaction action {};
  sigaction(WakeSignal, nullptr, &action);
  if (action.sa_handler != SIG_DFL) return;
  action.sa_handler = &IgnoreSignal;
  action.sa_flags = 0;
  sigaction(WakeSignal, &action, nullptr);
}

// The thread blocks all signals except those by which the collector stops it.
void StartWatcher() {
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  sigdelset(&all, GC_get_suspend_signal());
  sigdelset(&all, GC_get_thr_restart_signal());
  pthread_sigmask(SIG_SETMASK, &all, &before);
  std::thread(&WatchPipe).detach();
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

SCM MakeAsync(const char* name, SCM (*procedure)()) {
  return scm_permanent_object(scm_c_make_gsubr(name, 0, 0, 0, reinterpret_cast<void*>(procedure)));
}

}  // namespace

bool StartInterrupts() {
  if (pipe2(Pipe, O_CLOEXEC | O_NONBLOCK) != 0) return false;
  fcntl(Pipe[0], F_SETFL, 0);
  InterruptAsync = MakeAsync("interrupted", &InterruptAsked);
  OverflowAsync = MakeAsync("overflowed", &OverflowAsked);
  EngineThread = scm_permanent_object(scm_current_thread());
  CatchWakeSignal();
  StartWatcher();
  return true;
}

void AskForOverflow() {
  SendRequest(Overflowed);
}

}  // namespace yse

void ScmVM::interrupt() {
  yse::Engine& engine = yse::TheEngine();
  if (engine.depth == 0) return;
  engine.stopping = true;
  const int saved = errno;
  yse::SendRequest(yse::Interrupted);
  errno = saved;
}
