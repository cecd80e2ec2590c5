// Endless recursion, on the Scheme stack and on the C++ stack.

#include <gc/gc.h>
#include <pthread.h>

#include <algorithm>
#include <cstdlib>

#include "platform/engine/YseEngine.h"

namespace yse {

namespace {

// The part of the C++ stack above Guile's limit that must be free before a text is run.
constexpr std::uintptr_t StackForText = std::uintptr_t{512} << 10;
// At most this much of the C++ stack is used, even if it is unlimited.
constexpr std::size_t MostStack = std::size_t{32} << 20;
// The limit for the Scheme stack of scripts, in words (32 MiB), and the amount by which it is
// extended each time until the error is raised. Several extensions can be necessary, because
// another thread triggers the error and may have to wait for a processor.
constexpr long MaxStackWords = 4L << 20;
constexpr long MoreStackWords = 1L << 20;
constexpr int MostOverflows = 64;
// Frames of C++ functions that Guile calls from the same frame are closer together than this; with
// another call into Guile between them they are farther apart.
constexpr std::intptr_t OneCallOfGuile = 256;

std::uintptr_t StackMark = 0;
SCM OverflowHandler = SCM_BOOL_F;
int Overflows = 0;  // in the outermost text
bool OverflowPending = false;
std::uintptr_t OverflowFrame = 0;  // of the latest OnStackOverflow

// Called when the Scheme stack is used up. Returns by how much to extend it, or raises. If the
// error were raised here, every dynamic-wind procedure of the recursion would reach the limit
// again; so the stack is extended, and the error is raised by OverflowAsked a moment later.
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

// Called from Scheme soon after OnStackOverflow. May raise. When this thread had to wait for a
// processor, that can be before Guile has left the call of OnStackOverflow, which is too early.
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

// Guile raises an error when its C functions recurse beyond StackMark. Half of the stack is kept
// below it for C++ code and for the dynamic-wind procedures of such a recursion, which run nested
// in one another.
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
