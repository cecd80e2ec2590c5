#include "syntax/YcluiChangeCount.h"

#include <new>

#include "foundation/YMemory.h"

constinit std::atomic<std::uint64_t> YcluiChangeCount::ChangesEverywhere = 0;

YcluiChangeCount& YcluiChangeCount::operator=(const YcluiChangeCount& other) {
  Counter* counter = Shared(other.counter_);
  release();
  counter_ = counter;
  return *this;
}

YcluiChangeCount YcluiChangeCount::New() {
  YcluiChangeCount made;
  made.counter_ = YChecked(new (std::nothrow) Counter);
  return made;
}
