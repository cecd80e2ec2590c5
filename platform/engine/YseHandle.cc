// Handles: two C++ pointers as a Scheme value, with a finaliser that is called after the handle was
// collected.

#include <gc/gc.h>

#include <cstdio>
#include <deque>
#include <mutex>

#include "platform/engine/YseEngine.h"

namespace yse {

namespace {

struct PendingFinaliser {
  void (*finaliser)(void*);
  void* first;
};

scm_t_bits HandleTag = 0;
// The collector finds unreachable handles in a thread of its own; finalisers run in the engine's
// thread.
std::mutex PendingMutex;
std::deque<PendingFinaliser> PendingFinalisers;
std::atomic<bool> AnyPending{false};

int PrintHandle(SCM handle, SCM port, scm_print_state*) {
  char text[40] = "#<handle null>";
  if (HandleFirst(handle) != nullptr) {
    std::snprintf(text, sizeof text, "#<handle %p>", HandleFirst(handle));
  }
  scm_puts(text, port);
  return 1;
}

SCM SameHandle(SCM one, SCM other) {
  return scm_from_bool(HandleFirst(one) == HandleFirst(other));
}

void Collected(void* cell, void* finaliser) {
  const SCM handle = SCM_PACK_POINTER(cell);
  const std::lock_guard<std::mutex> lock(PendingMutex);
  PendingFinalisers.push_back({reinterpret_cast<void (*)(void*)>(finaliser), HandleFirst(handle)});
  AnyPending = true;
}

bool TakePending(PendingFinaliser& pending) {
  const std::lock_guard<std::mutex> lock(PendingMutex);
  AnyPending = PendingFinalisers.size() > 1;
  if (PendingFinalisers.empty()) return false;
  pending = PendingFinalisers.front();
  PendingFinalisers.pop_front();
  return true;
}

}  // namespace

void DefineHandles() {
  HandleTag = scm_make_smob_type("handle", 0);
  scm_set_smob_print(HandleTag, &PrintHandle);
  scm_set_smob_equalp(HandleTag, &SameHandle);
}

bool IsHandle(SCM value) {
  return SCM_SMOB_PREDICATE(HandleTag, value);
}

SCM MakeHandle(void* first, void* second, void (*finaliser)(void*)) {
  const SCM handle = scm_new_double_smob(HandleTag, reinterpret_cast<scm_t_bits>(first),
                                         reinterpret_cast<scm_t_bits>(second),
                                         reinterpret_cast<scm_t_bits>(finaliser));
  if (finaliser != nullptr) {
    GC_register_finalizer_no_order(SCM_UNPACK_POINTER(handle), &Collected,
                                   reinterpret_cast<void*>(finaliser), nullptr, nullptr);
  }
  return handle;
}

void* HandleFirst(SCM handle) {
  return reinterpret_cast<void*>(SCM_SMOB_DATA(handle));
}

void RunFinalisers() {
  PendingFinaliser pending{};
  while (AnyPending && TakePending(pending)) pending.finaliser(pending.first);
}

}  // namespace yse
