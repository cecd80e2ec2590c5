// A count of changes that the nodes of a graph share with what was computed from them.

#ifndef SYNTAX_YCLUICHANGECOUNT_H_
#define SYNTAX_YCLUICHANGECOUNT_H_

#include <cstdint>

#include "foundation/YTypes.h"

// A handle of a shared counter, or of none. Whoever keeps a result that depends on nodes makes a
// counter and has each node that it read count its changes there; the result holds as long as the
// count stays the same. The counter is freed with its last handle, so neither side needs to know
// when the other one is destroyed. For one thread.
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
  static void NoteEverywhere() { ++ChangesEverywhere; }

  // The number of changes so far. It never falls. There must be a counter.
  std::uint64_t changes() const { return counter_->changes + ChangesEverywhere; }

  bool operator==(const YcluiChangeCount& other) const { return counter_ == other.counter_; }
  bool operator!=(const YcluiChangeCount& other) const { return counter_ != other.counter_; }

 private:
  struct Counter {
    std::uint64_t changes = 0;
    std::uint64_t handles = 1;
  };
  static std::uint64_t ChangesEverywhere;

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
