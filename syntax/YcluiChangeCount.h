// A count of changes, shared by nodes and the caches that depend on them.

#ifndef SYNTAX_YCLUICHANGECOUNT_H_
#define SYNTAX_YCLUICHANGECOUNT_H_

#include <atomic>
#include <cstdint>

#include "foundation/YTypes.h"

// A handle of a shared counter, or of none. A cache makes a counter, and every node that it reads
// counts its changes there. The cache is valid as long as the count is the same. The counter is
// freed with its last handle, so a node may outlive the cache and the cache a node. The handles of
// one counter belong to one thread at a time.
class YQRT_API YcluiChangeCount {
 public:
  YcluiChangeCount() = default;  // of no counter
  YcluiChangeCount(const YcluiChangeCount& other) : counter_(Shared(other.counter_)) {}
  YcluiChangeCount& operator=(const YcluiChangeCount& other);
  ~YcluiChangeCount() { release(); }

  // A handle of a new counter.
  static YcluiChangeCount New();

  // Counts a change, if there is a counter.
  void note() const {
    if (counter_ != nullptr) ++counter_->changes;
  }
  // Counts a change in every counter of the process.
  static void NoteEverywhere() { ChangesEverywhere.fetch_add(1, std::memory_order_relaxed); }

  // The number of changes so far. It never falls. REQUIRES: there is a
  // counter.
  std::uint64_t changes() const {
    return counter_->changes + ChangesEverywhere.load(std::memory_order_relaxed);
  }

  bool operator==(const YcluiChangeCount& other) const { return counter_ == other.counter_; }
  bool operator!=(const YcluiChangeCount& other) const { return counter_ != other.counter_; }

 private:
  struct Counter {
    std::uint64_t changes = 0;
    std::uint64_t handles = 1;
  };
  static std::atomic<std::uint64_t> ChangesEverywhere;

  Counter* counter_ = nullptr;

  static Counter* Shared(Counter* counter) {
    if (counter != nullptr) ++counter->handles;
    return counter;
  }
  void release() {
    if (counter_ != nullptr && --counter_->handles == 0) delete counter_;
  }
};

#endif  // SYNTAX_YCLUICHANGECOUNT_H_
