// The memory limit. What scripts hold is looked at after each collection; a single value that is
// too large meets a harder limit, above the first one, in the collector.

#include <gc/gc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "platform/engine/YseEngine.h"

namespace yse {

namespace {

// What C++ code may take beyond the limit before its text is stopped.
constexpr std::size_t Reserve = std::size_t{64} << 20;
// How much is allocated between two collections at least. A collection looks at all that Guile has
// loaded, and takes milliseconds.
constexpr std::size_t BetweenCollections = std::size_t{16} << 20;

std::size_t Allowed = 0;
bool LimitRaised = false;

std::size_t HeldMemory() {
  const std::size_t heap = GC_get_heap_size();
  return heap - std::min(heap, GC_get_free_bytes());
}

// What has not been swept yet counts as held before a full collection, and not behind it.
bool MemoryIsShort() {
  if (HeldMemory() <= Allowed) return false;
  GC_gcollect();
  return HeldMemory() > Allowed;
}

// Runs after each collection, from Scheme, also while a text is on its way out. May raise.
SCM AfterCollection() {
  const bool ends = ScriptRuns() && TheEngine().text->ending == Text::Lost && MemoryIsShort();
  if (ends) StopText(Text::OutOfMemory);
  return SCM_UNSPECIFIED;
}

void RaiseLimit(std::size_t bytes) {
  GC_set_max_heap_size(GC_get_heap_size() + bytes + Reserve);
  LimitRaised = true;
}

// Runs when the collector may not let the heap grow; it has not collected before. If that does not
// help, a running text is ended, which takes some memory too. C++ code cannot be ended: it gets
// what it asked for.
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

// The collector sometimes goes on holding what a text has dropped. The next texts shall not suffer
// for it: they may hold half of the limit beyond that, up to twice the limit in all.
bool MemoryStaysShort() {
  const std::size_t limit = TheEngine().memoryLimit;
  Allowed = limit;
  const bool isShort = MemoryIsShort();
  if (TheEngine().depth == 0) Allowed = std::clamp(HeldMemory() + limit / 2, limit, limit * 2);
  LimitRaised = true;
  return isShort;
}

}  // namespace yse
