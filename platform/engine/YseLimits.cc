// What ends a text from outside: the memory limit, an interrupt, and the end of the C++ stack.

#include <fcntl.h>
#include <gc/gc.h>
#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "platform/engine/YseEngine.h"

namespace yse {

namespace {

// Wakes the engine's thread from a system call. Its default is to be ignored, so a process that
// has no use for it does not notice.
constexpr int WakeSignal = SIGURG;
constexpr unsigned WakeMicroseconds = 20000;
constexpr std::size_t Reserve = std::size_t{64} << 20;

int InterruptPipe[2] = {-1, -1};
SCM InterruptAsync = SCM_BOOL_F;
SCM EngineThread = SCM_BOOL_F;
bool LimitRaised = false;

bool ScriptRuns() {
  const Engine& engine = TheEngine();
  return MayRun() && engine.text != nullptr && engine.text->running && !engine.native;
}

// Runs in the engine's thread, at some point of the running text. May raise.
SCM OnInterrupt() {
  if (TheEngine().stopping && ScriptRuns()) StopText(Text::Interrupted);
  return SCM_UNSPECIFIED;
}

std::size_t HeldMemory() {
  const std::size_t heap = GC_get_heap_size();
  return heap - std::min(heap, GC_get_free_bytes());
}

// Runs after each collection, from Scheme. May raise. A second collection tells what is really held
// from what only has not been swept yet.
SCM AfterCollection() {
  const std::size_t limit = TheEngine().memoryLimit;
  if (!ScriptRuns() || HeldMemory() <= limit) return SCM_UNSPECIFIED;
  GC_gcollect();
  if (HeldMemory() > limit) StopText(Text::OutOfMemory);
  return SCM_UNSPECIFIED;
}

// A text can be told by an error. C++ code cannot: it gets what it asked for, and the text that
// called it ends after the next collection.
void* OnOutOfMemory(std::size_t bytes) {
  if (ScriptRuns()) scm_report_out_of_memory();
  GC_set_max_heap_size(GC_get_heap_size() + bytes + Reserve);
  LimitRaised = true;
  static bool again = false;
  void* memory = nullptr;
  if (!again) {
    again = true;
    memory = GC_malloc(bytes);
    again = false;
  }
  if (memory == nullptr) {
    std::fputs("out of memory\n", stderr);
    std::abort();
  }
  return memory;
}

void* MarkAsync(void*) {
  scm_system_async_mark_for_thread(InterruptAsync, EngineThread);
  return nullptr;
}

// A text that waits in a system call sees the interrupt when the call returns; the first wake-up
// can come just before the call, so it is repeated until the text has ended.
void WakeUntilStopped() {
  const Engine& engine = TheEngine();
  while (engine.stopping && engine.depth > 0) {
    if (!engine.native) pthread_kill(engine.thread, WakeSignal);
    usleep(WakeMicroseconds);
  }
}

void WatchPipe() {
  for (;;) {
    char byte = 0;
    const ssize_t length = read(InterruptPipe[0], &byte, 1);
    if (length == 0 || (length < 0 && errno != EINTR)) return;
    if (length < 0) continue;
    scm_with_guile(&MarkAsync, nullptr);
    WakeUntilStopped();
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

void StartWatcher() {
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  std::thread(&WatchPipe).detach();
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void FindStack() {
  Engine& engine = TheEngine();
  pthread_attr_t attributes;
  void* lowest = nullptr;
  std::size_t size = 0;
  if (pthread_getattr_np(engine.thread, &attributes) != 0) return;
  pthread_attr_getstack(&attributes, &lowest, &size);
  pthread_attr_destroy(&attributes);
  engine.stackLimit = static_cast<char*>(lowest) + LeastStack;
}

}  // namespace

YWord StartLimits(std::string& error) {
  Engine& engine = TheEngine();
  FindStack();
  if (pipe2(InterruptPipe, O_CLOEXEC | O_NONBLOCK) != 0) {
    error = "no pipe for interrupts";
    return 0;
  }
  fcntl(InterruptPipe[0], F_SETFL, 0);
  InterruptAsync = scm_permanent_object(
      scm_c_make_gsubr("interrupted", 0, 0, 0, reinterpret_cast<void*>(&OnInterrupt)));
  EngineThread = scm_permanent_object(scm_current_thread());
  scm_c_define_gsubr("%after-collection", 0, 0, 0, reinterpret_cast<void*>(&AfterCollection));
  GC_set_oom_fn(&OnOutOfMemory);
  LimitRaised = true;
  RestoreMemoryLimit();
  CatchWakeSignal();
  StartWatcher();
  (void)engine;
  return 1;
}

// The hard limit lies above the one that is looked at after collections, so that a growing heap
// meets that one first; what meets the hard one is a single large value.
void RestoreMemoryLimit() {
  if (!LimitRaised) return;
  const std::size_t limit = TheEngine().memoryLimit;
  GC_set_max_heap_size(limit + limit / 4);
  LimitRaised = false;
}

bool StackIsShort() {
  return static_cast<char*>(__builtin_frame_address(0)) < TheEngine().stackLimit;
}

}  // namespace yse

void ScmVM::interrupt() {
  yse::Engine& engine = yse::TheEngine();
  if (engine.depth == 0) return;
  engine.stopping = true;
  const int saved = errno;
  const char byte = 0;
  const ssize_t length = write(yse::InterruptPipe[1], &byte, 1);
  (void)length;
  errno = saved;
}
