// The memory limit. It is checked after each collection; a higher limit in the collector stops a
// single allocation that is too large.

#include <gc/gc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "platform/engine/YseEngine.h"

namespace yse {

namespace {

// What C++ code may allocate beyond the limit before its text is stopped.
constexpr std::size_t Reserve = std::size_t{64} << 20;
// The least amount that is allocated between two collections. A collection scans everything that
// Guile has loaded, which takes milliseconds.
constexpr std::size_t BetweenCollections = std::size_t{16} << 20;

std::size_t Allowed = 0;
bool LimitRaised = false;

std::size_t HeldMemory() {
  const std::size_t heap = GC_get_heap_size();
  return heap - std::min(heap, GC_get_free_bytes());
}

// Memory that has not been swept counts as held, so the decision is made after a full collection.
bool MemoryIsShort() {
  if (HeldMemory() <= Allowed) return false;
  GC_gcollect();
  return HeldMemory() > Allowed;
}

// Called from Scheme after each collection, even while a text is being unwound. May raise.
SCM AfterCollection() {
  const bool ends = ScriptRuns() && TheEngine().text->ending == Text::Lost && MemoryIsShort();
  if (ends) StopText(Text::OutOfMemory);
  return SCM_UNSPECIFIED;
}

void RaiseLimit(std::size_t bytes) {
  GC_set_max_heap_size(GC_get_heap_size() + bytes + Reserve);
  LimitRaised = true;
}

// Called when the collector may not extend the heap. First collects; if that does not help, ends a
// running text, for which the limit is raised a little. C++ code cannot be ended, so the limit is
// raised by what it requested.
void* OnOutOfMemory(std::size_t bytes) {
  static bool inside = false;
  if (inside) return nullptr;
  inside = true;
  GC_gcollect();
  void* memory = HeldMemory() + bytes < Allowed ? GC_malloc(bytes) : nullptr;
  inside = false;
  if (memory != nullptr) return memory;
  RaiseLimit(ScriptRuns() ? 0 : bytes);
  if (ScriptRuns()) StopText(Text::OutOfMemory);
  inside = true;
  memory = GC_malloc(bytes);
  inside = false;
  if (memory != nullptr) return memory;
  std::fputs("out of memory\n", stderr);
  std::abort();
}

}  // namespace

void StartMemoryLimit() {
  scm_c_define_gsubr("%after-collection", 0, 0, 0, reinterpret_cast<void*>(&AfterCollection));
  GC_set_warn_proc(&GC_ignore_warn_proc);
  GC_set_min_bytes_allocd(BetweenCollections);
  GC_set_oom_fn(&OnOutOfMemory);
  Allowed = TheEngine().memoryLimit;
  LimitRaised = true;
  RestoreMemoryLimit();
}

void RestoreMemoryLimit() {
  if (!LimitRaised) return;
  GC_set_max_heap_size(Allowed + Allowed / 4);
  LimitRaised = false;
}

// The collector sometimes retains what a text has released. So that the next texts do not fail for
// it, they may hold half of the limit more than that, but at most twice the limit.
bool MemoryStaysShort() {
  const std::size_t limit = TheEngine().memoryLimit;
  Allowed = limit;
  const bool isShort = MemoryIsShort();
  if (TheEngine().depth == 0) Allowed = std::clamp(HeldMemory() + limit / 2, limit, limit * 2);
  LimitRaised = true;
  return isShort;
}

}  // namespace yse
