// Endless recursion, on the Scheme stack and on the C++ stack.

#include <gc/gc.h>
#include <pthread.h>

#include <algorithm>
#include <cstdlib>

#include "platform/engine/YseEngine.h"

namespace yse {

namespace {

// How much of the C++ stack a text finds at least, before Guile's own mark.
constexpr std::uintptr_t StackForText = std::uintptr_t{512} << 10;
// A stack without a limit is used up to here.
constexpr std::size_t MostStack = std::size_t{32} << 20;
// How deep a script may recurse, in words of the Scheme stack (32 MiB), and how much deeper at a
// time until the error is raised. That can be many times, since another thread sees to it, which
// may have to wait for a processor.
constexpr long MaxStackWords = 4L << 20;
constexpr long MoreStackWords = 1L << 20;
constexpr int MostOverflows = 64;
// Frames of C++ functions that Guile calls from one place lie closer together than this, and those
// with a call into Guile between them farther apart.
constexpr std::intptr_t OneCallOfGuile = 256;

std::uintptr_t StackMark = 0;
SCM OverflowHandler = SCM_BOOL_F;
int Overflows = 0;  // in the outermost text
bool OverflowPending = false;
std::uintptr_t OverflowFrame = 0;  // that of the latest OnStackOverflow

// Runs when the Scheme stack is used up. Answers how much more there may be, or raises. An error
// that is raised here makes every winder of the recursion run into the limit again; so the
// recursion is given more, and the error is raised from outside a moment later.
SCM OnStackOverflow() {
  if (++Overflows > MostOverflows) RaiseStackOverflow();
  OverflowPending = true;
  OverflowFrame = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  AskForOverflow();
  return scm_from_long(MoreStackWords);
}

}  // namespace

void RaiseStackOverflow() {
  scm_call_0(TheEngine().stackOverflow);
}

// Runs soon after OnStackOverflow, from Scheme. May raise. When this thread had to wait for a
// processor, soon can be before Guile has left the call of OnStackOverflow, where it is too early.
SCM OverflowAsked() {
  if (!OverflowPending || !ScriptRuns()) return SCM_UNSPECIFIED;
  const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  if (std::abs(static_cast<std::intptr_t>(here - OverflowFrame)) < OneCallOfGuile) {
    AskForOverflow();
    return SCM_UNSPECIFIED;
  }
  OverflowPending = false;
  RaiseStackOverflow();
  return SCM_UNSPECIFIED;
}

// Guile raises an error when its C functions recurse beyond a mark. Half of the stack is left below
// the mark: for what C++ code needs on its own, and for the winders of such a recursion, which run
// one inside the other.
void StartStackLimits() {
  OverflowHandler = scm_permanent_object(
      scm_c_make_gsubr("overflow", 0, 0, 0, reinterpret_cast<void*>(&OnStackOverflow)));
  pthread_attr_t attributes;
  if (pthread_getattr_np(TheEngine().thread, &attributes) != 0) return;
  void* lowest = nullptr;
  std::size_t size = 0;
  pthread_attr_getstack(&attributes, &lowest, &size);
  pthread_attr_destroy(&attributes);
  GC_stack_base base{};
  GC_get_stack_base(&base);
  const std::size_t room = std::min(size, MostStack) / 2;
  StackMark = reinterpret_cast<std::uintptr_t>(base.mem_base) - room;
  scm_c_define("%stack-words", scm_from_size_t(room / sizeof(SCM_STACKITEM)));
}

bool StackIsShort() {
  const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  return here < StackMark + StackForText;
}

void CallWithStackLimit(SCM procedure) {
  Overflows = 0;
  OverflowPending = false;
  scm_call_with_stack_overflow_handler(scm_from_long(MaxStackWords), procedure, OverflowHandler);
}

}  // namespace yse
